#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "client/engine/instance.h"
#include "testkit/loopbackengine.h"

namespace Zant::Testkit {
namespace {

const char* const engineFolder = ZANT_LOOPBACK_DIRECTORY;

Result compareTexts(const std::string& expected, const std::string& sent) {
    return compare(Transcript::fromText(expected), Transcript::fromText(sent, "sent"));
}

std::string fileText(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Transcript, TakesCommandsFromIndentedText) {
    const Transcript transcript =
        Transcript::fromText("\n    fg render;\n\n      about;\n    string a,\"x \n    y\";\n  ");
    EXPECT_EQ(transcript.text(), "fg render;\n  about;\nstring a,\"x \ny\";\n");
    EXPECT_EQ(transcript.lines()[1].number, 4u);
    EXPECT_EQ(Transcript::fromText("\tabout;\n\t\n  about;\n    about;").text(), "about;\n about;\n   about;\n");
    EXPECT_EQ(Transcript::fromText("").lines().size(), 0u);
}

TEST(Transcript, FilesKeepEveryByteAndSaveWhatTheyRead) {
    const TemporaryFolder folder;
    const std::string file = folder.name() + "/commands.zant";
    Transcript::fromText("about;\nfg render;").save(file);
    EXPECT_EQ(fileText(file), "about;\nfg render;\n");
    EXPECT_EQ(Transcript::fromFile(file, 7).text(), "fg render;\n");
    EXPECT_EQ(Transcript::fromFile(file, 18).lines().size(), 0u);
    EXPECT_THROW(Transcript::fromFile(folder.name() + "/none"), std::runtime_error);
    EXPECT_THROW(Transcript().save(folder.name() + "/none/none"), std::runtime_error);
}

const struct {
    const char* expected;
    const char* sent;
    const char* message;
} comparisons[] = {
    {"", "", ""},
    {"about;", "about;", ""},
    {"a;\nb;\nc;\nfg gradients,0.5,2;\nd;", "a;\nb;\nc;\nfg gradients,0.5,3;",
     "the commands differ (5 lines expected, 4 sent):\n"
     "  expected, line 4: fg gradients,0.5,2;\n"
     "  sent, line 4:     fg gradients,0.5,3;\n"
     "                                     ^ byte 18\n"
     "  before that, the same on both sides:\n    a;\n    b;\n    c;"},
    {"about;\nfg render;", "about;",
     "the commands differ (2 lines expected, 1 sent):\n"
     "  expected, line 2: fg render;\n"
     "  sent: nothing more\n"
     "  before that, the same on both sides:\n    about;"},
    {"", "about;",
     "the commands differ (0 lines expected, 1 sent):\n"
     "  expected: nothing more\n"
     "  sent, line 1: about;"},
    {"\n\nabout;", "aboutx;",  // the end of a line, and lines counted with the blank ones
     "the commands differ (1 lines expected, 1 sent):\n"
     "  expected, line 3: about;\n"
     "  sent, line 1:     aboutx;\n"
     "                         ^ byte 6"},
    {"echo \"\xC3\xA4\xC3\xB6\";",
     "echo \"\xC3\xA4\xC3\xBC\";",  // two letters of two bytes: the caret counts letters
     "the commands differ (1 lines expected, 1 sent):\n"
     "  expected, line 1: echo \"\xC3\xA4\xC3\xB6\";\n"
     "  sent, line 1:     echo \"\xC3\xA4\xC3\xBC\";\n"
     "                           ^ byte 10"},
};

TEST(Compare, ShowsTheFirstDifferenceWithItsSource) {
    for (const auto& row : comparisons) {
        const Result result = compareTexts(row.expected, row.sent);
        EXPECT_EQ(result.message(), row.message);
        EXPECT_EQ(static_cast<bool>(result), *row.message == 0) << row.expected;
    }
}

TEST(Compare, CutsLongLinesAroundTheDifference) {
    const std::string numbers(5000, '7');
    for (size_t place : {0u, 59u, 60u, 61u, 2500u, 4999u}) {
        std::string other = numbers;
        other[place] = '8';
        const std::string message = compareTexts(numbers, other).message();
        EXPECT_LT(message.size(), 500u) << place;
        const size_t caret = message.rfind('^') - message.rfind('\n', message.rfind('^'));
        const size_t sent = message.find("  sent, line 1");
        EXPECT_EQ(message[sent + caret - 1], '8') << message;
        EXPECT_NE(message.find("^ byte " + std::to_string(place + 1)), std::string::npos) << message;
    }
}

TEST(Environment, VariablesAreSetBack) {
    ScopedVariable outer("ZANT_TESTKIT_TEST", "outer");
    {
        const ScopedVariable inner("ZANT_TESTKIT_TEST", "inner");
        EXPECT_STREQ(std::getenv("ZANT_TESTKIT_TEST"), "inner");
        const LoopbackFault fault("lookup-nothing");
        EXPECT_STREQ(std::getenv("ZANT_LOOPBACK_FAULT"), "lookup-nothing");
    }
    EXPECT_STREQ(std::getenv("ZANT_TESTKIT_TEST"), "outer");
    EXPECT_EQ(std::getenv("ZANT_LOOPBACK_FAULT"), nullptr);
    EXPECT_THROW(ScopedVariable("", "x"), std::runtime_error);
}

TEST(CommandLogTest, SaysWhyItCannotKnow) {
    EXPECT_THROW(CommandLog("/nonexistent"), std::runtime_error);
    const CommandLog log(engineFolder);
    EXPECT_THROW(CommandLog second(engineFolder), std::runtime_error);
    EXPECT_EQ(log.engineDirectory().back(), '/');
    const Result result = log.check("");
    EXPECT_FALSE(result) << "nothing was sent, but nothing could have been seen either";
    EXPECT_NE(result.message().find(log.engineDirectory()), std::string::npos);
}

TEST(CommandLogTest, WritesDownWhatTheEngineReceives) {
    LoopbackEngine engine(engineFolder);
    const Instance* instance = engine.library().createInstance();
    ASSERT_NE(instance, nullptr);
    EXPECT_TRUE(engine.log().check("")) << "no command yet";
    EXPECT_EQ(instance->parse("fg   gradients , 0.50 ,2; var length,2.5;", "test", ParseText), 0);
    const Result result = engine.log().check(R"(
        fg gradients,0.5,2;
        var length,2.5;
    )");
    EXPECT_TRUE(result) << result.message();
    EXPECT_FALSE(engine.log().check("fg gradients,0.5,2;"));

    engine.log().forget();
    EXPECT_TRUE(engine.log().check(""));
    instance->parse("fg render;", "test", ParseText);
    EXPECT_EQ(engine.log().sent().text(), "fg render;\n");

    const TemporaryFolder folder;
    engine.log().sent().save(folder.name() + "/golden.zant");
    EXPECT_TRUE(engine.log().checkFile(folder.name() + "/golden.zant"));
    instance->parse("fg reset;", "test", ParseText);
    EXPECT_NE(engine.log().checkFile(folder.name() + "/golden.zant").message().find("golden.zant: nothing more"),
              std::string::npos);
}

TEST(CommandLogTest, EachLogBeginsAnewAndLeavesNothing) {
    std::string folder;
    for (const char* command : {"fg render;", "fg reset;"}) {
        LoopbackEngine engine(engineFolder);
        engine.library().createInstance()->parse(command, "test", ParseText);
        const Result result = engine.log().check(command);
        EXPECT_TRUE(result) << result.message();
        folder = std::filesystem::path(std::getenv("ZANT_LOOPBACK_TRANSCRIPT")).parent_path().string();
        EXPECT_TRUE(std::filesystem::exists(folder));
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
    EXPECT_FALSE(getLibrary(nullptr)->isLoaded());
    EXPECT_EQ(std::getenv("ZANT_LOOPBACK_TRANSCRIPT"), nullptr);
}

TEST(CommandLogTest, AnEngineThatIsLoadedAlreadyIsNotTrusted) {
    Library& library = *getLibrary(nullptr);
    ASSERT_TRUE(library.loadExplicitly((engineFolder + std::string("/")).c_str())) << library.getLoadError();
    EXPECT_THROW(LoopbackEngine engine(engineFolder), std::runtime_error);
    EXPECT_TRUE(library.isLoaded());
    library.unloadExplicitly();
}

TEST(ContractWatchTest, ShowsForbiddenCalls) {
    const ContractWatch watch;
    EXPECT_FALSE(watch.check()) << "no engine yet";
    {
        LoopbackEngine engine(engineFolder);
        Instance* instance = engine.library().createInstance();
        instance->parse("fg render;", "test", ParseText);
        EXPECT_TRUE(watch.check()) << watch.check().message();
        const ParserFunctionsVtable* parser = engine.library().vtables.parser;
        void* gone = instance->parserContext;
        engine.library().releaseInstance(instance);
        parser->parse(gone, "fg render;", "test", ParseText);
    }
    EXPECT_NE(watch.check().message().find("parse"), std::string::npos) << watch.check().message();
}

TEST(LoopbackFaultTest, ReachesTheEngine) {
    {
        const LoopbackFault fault("null-instance");
        LoopbackEngine engine(engineFolder);
        EXPECT_EQ(engine.library().createInstance(), nullptr);
    }
    const LoopbackFault fault("version-0");
    EXPECT_THROW(LoopbackEngine engine(engineFolder), std::runtime_error);
    EXPECT_NE(getLibrary(nullptr)->flags & AUTO_UNLOAD, 0u) << "as before";
}

}  // namespace
}  // namespace Zant::Testkit
