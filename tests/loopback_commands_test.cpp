// Commands for the loopback engine: of every form, from its own transcript, out of files, and by chance.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "client/zant.h"
#include "language/writer.h"
#include "loopbackhost.h"
#include "randomcommands.h"

namespace Zant::Tests {

using namespace Language;

namespace {

// Commands about the engine's own objects, or new ones.
class CommandsOfTheScene : public SampleCommands {
public:
    static std::string newName(size_t place) { return "new" + std::to_string(place); }

private:
    std::string textFor(ArgumentKind kind, size_t place) override {
        if (kind == ArgumentKind::NewSymbol) return newName(place);
        if (kind == ArgumentKind::BitmapSymbol) return "bitmap";
        if (kind == ArgumentKind::MeshSymbol) return "mesh";
        return kind == ArgumentKind::VertexMapSymbol ? "map" : "x";
    }
};

// Commands that read others, or delete what they name.
bool needsCare(const Form& form) {
    const std::string function = form.function;
    return function == "include1" || function == "parse1" || function == "parse2" || function == "interactive0" ||
           function == "symbolsDelete0";
}

// The transcript holds each command as its canonical text, whatever encoding it came in.
TEST(LoopbackCommands, OfEveryFormAreTakenInEveryEncodingAndDeclareTheirObjects) {
    const TemporaryFile transcript;
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}};
    Host host;
    CommandTextBuffer plain(host.instance);
    CommandQuickTextBuffer quick(host.instance);
    CommandBinaryBuffer binary(host.instance);
    TextWriter writer;
    CommandReplay replay;
    CommandsOfTheScene samples;
    Command command;
    std::string told;
    size_t taken = 0;
    size_t declared = 0;
    const std::string setting =
        "symbolsDelete;\nbitmap bitmap,charRgba,(4,4);\nvertexMap map,3,fixedSize,4,1;\nmesh mesh;\n"
        "meshOp mesh,points,map;\nvar x;\n";
    for (const Form& form : allForms()) {
        if (needsCare(form)) continue;
        samples.make(form, command);
        for (CommandBuffer* const buffer : std::initializer_list<CommandBuffer*>{&plain, &quick, &binary}) {
            ASSERT_EQ(host.parse(setting), 0);
            replay.send(command, *buffer);
            EXPECT_EQ(buffer->errorCode, 0) << form.function << host.text.take();
            buffer->error(0);
            told += setting + writer.write(command) + "\n";
            ++taken;
        }
        for (size_t place = 0; place < form.tokenCount; ++place) {
            if (form.tokens[place].kind != ArgumentKind::NewSymbol) continue;
            const std::string name = CommandsOfTheScene::newName(place);
            EXPECT_NE(host.instance->findObject(name.c_str(), HandleObject), nullptr) << form.function;
            ++declared;
        }
    }
    EXPECT_EQ(taken, 3 * (allForms().size() - 5));
    EXPECT_GT(declared, 300U);
    EXPECT_TRUE(transcript.content() == told);
}

std::string include(const std::string& file) {
    return "include \"" + file + "\";";
}

// ---- the transcript, and files that are included -------------------------------------------------------------------

TEST(LoopbackCommands, InATranscriptRunAgainAndGiveItAgain) {
    const TemporaryFile first;
    const TemporaryFile second;
    const TemporaryFile file("var a,1; echo \"from a file\"; lihgt;");
    {
        const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", first.name()}};
        Host host;
        host.parse(include(file.name()) + "parse \"var b;\";[46],[6],0.5,2;delete a;delete a;");
        CommandBinaryBuffer buffer(host.instance);
        DoubleSymbol number(buffer, "has space");
        number.registerSymbol();
    }
    EXPECT_EQ(first.content(),
              "var a,1;\necho \"from a file\";\nvar b;\nfg gradients,0.5,2;\ndelete a;\n"
              "var \"has space\";\ndelete \"has space\";\n");
    {
        const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", second.name()}};
        Host host;
        EXPECT_EQ(host.parse(include(first.name())), 0) << host.text.take();
    }
    EXPECT_EQ(second.content(), first.content());
}

// Sends a vector in two encodings. What the engine says is left in `said`.
std::string transcriptOf(const Vector& vector, const char* numbers, std::string& said) {
    const TemporaryFile transcript;
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}, {"ZANT_LOOPBACK_NUMBERS", numbers}};
    Host host;
    CommandTextBuffer text(host.instance);
    CommandBinaryBuffer binary(host.instance);
    Symbol name(binary, "v");
    for (CommandBuffer* buffer : std::initializer_list<CommandBuffer*>{&text, &binary}) {
        buffer->addEnum(14, "vector");
        buffer->addSymbol(name);
        buffer->addVector(vector);
        buffer->parse();
    }
    said = host.text.take();
    return transcript.content();
}

TEST(LoopbackCommands, KeepTheirNumbersInATranscript) {
    std::string said;
    const Vector numbers(0.1 + 0.2, 12345678901.0, 1e23);
    EXPECT_EQ(transcriptOf(numbers, "exact", said),
              "vector v,(0.3,12345678900,1e23);\nvector v,(0.30000000000000004,12345678901,1e23);\n");
    EXPECT_EQ(transcriptOf(numbers, "client", said),
              "vector v,(0.3,1.23456788e10,10e22);\nvector v,(0.3,1.23456788e10,10e22);\n");
    EXPECT_EQ(said, "");
    EXPECT_EQ(transcriptOf(Vector(NAN, 1, 2), "", said), "vector v,(0,1,2);\nvector v,(0,1,2);\n");
    EXPECT_EQ(said, "Warning: the transcript cannot hold 1 of the numbers of vector v,(0,1,2);\n");
    testing::internal::CaptureStderr();
    transcriptOf(numbers, "round", said);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("known are exact, client"), std::string::npos);
}

std::string doubled(const std::string& text) {
    std::string result;
    for (const char letter : text)
        result += letter == '"' ? "\"\"" : std::string(1, letter);
    return result;
}

TEST(LoopbackCommands, ThatIncludeOthersAreFoundBesideThemAndEnd) {
    Host host;
    const TemporaryFile inner("echo \"inner\";"), self;
    const std::string outer = inner.name() + " and one beside it";
    std::ofstream(outer) << include("file") << include("file");
    std::ofstream("file") << "echo \"of the working directory\";";
    EXPECT_EQ(host.parse(include(outer)), 0);
    EXPECT_EQ(host.text.take(), "inner\ninner\n");
    std::remove("file");
    std::ofstream(self.name()) << include(self.name()) << "echo \"once\";";
    EXPECT_EQ(host.parse(include(self.name())), 6);
    EXPECT_NE(host.text.take().find("includes itself\nonce\n"), std::string::npos);
    EXPECT_EQ(host.parse(include(inner.name()), inner.name().c_str()), 0) << "only its name";
    for (const std::string odd : {"", "/", "\xC3\x28"}) {
        EXPECT_EQ(host.parse(include(odd)), 5) << odd;
        EXPECT_NE(host.text.take().find("cannot read the file"), std::string::npos) << odd;
    }
    std::string nested = "echo";
    for (int depth = 0; depth <= 17; ++depth) {
        EXPECT_EQ(host.parse(nested), depth <= 16 ? 0 : 6) << depth;
        nested = "parse \"" + doubled(nested + ";") + "\"";
    }
}

TEST(LoopbackCommands, ThatIncludeTooManyFilesEnd) {
    std::vector<std::unique_ptr<TemporaryFile>> files;
    std::string command = "echo \"leaf\";";
    for (int level = 0; level < 12; ++level) {
        files.push_back(std::make_unique<TemporaryFile>(command));
        command.clear();
        for (int times = 0; times < 6; ++times)
            command += include(files.back()->name());
    }
    Host host;
    EXPECT_EQ(host.parse(command), 6);
    EXPECT_NE(host.text.take().find("more than 10000 files are included"), std::string::npos);
    EXPECT_EQ(host.parse(include(files.front()->name())), 0) << "the next call counts anew";
}

TEST(LoopbackCommands, ThatIncludeTheTranscriptEnd) {
    const TemporaryFile transcript("var x,1;\n");
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}};
    Host host;
    EXPECT_EQ(host.parse("var y,2;" + include(transcript.name())), 0);
    EXPECT_EQ(transcript.content(), "var x,1;\nvar y,2;\nvar x,1;\nvar y,2;\n");
}

// ---- hostile input -----------------------------------------------------------------------------------------------

std::string randomText(std::mt19937& random) {
    static const char* const pieces[] = {
        "var",       " ",          ",",           ";",    "x",    "\"",     "(",       ")",
        "{",         "}",          "1e999",       "-1",   "[58]", "[",      "]",       "bitmap",
        "b",         "delete",     "bitmapOp",    "copy", "\n",   "resize", "parse",   "<>",
        "@",         "mesh",       "vector",      "NaN",  "\xff", "0",      "include", "vertexMap",
        "fixedSize", "vertexData", "meshAddPoly", "m",    "v"};
    std::string text;
    for (size_t count = random() % 20; count > 0; --count)
        text += pieces[random() % (sizeof pieces / sizeof *pieces)];
    return text + ";";
}

// A block with some words replaced; the length word and the end of the memory stay true.
std::vector<uint64_t> randomBlock(const Form& form, RandomCommands& random) {
    const uint64_t words[] = {0, 1, 3, 8, 46, uint64_t(-1), uint64_t(-2), uint64_t(-3), uint64_t(1) << 62, 5};
    BinaryWriter writer;
    Command command;
    random.make(form, command);
    const auto* block = static_cast<const uint64_t*>(writer.write(command));
    std::vector<uint64_t> changed(block, block + writer.size() / 8);
    for (size_t word = 1; word < changed.size(); ++word)
        if (random.below(4) == 0) changed[word] = words[random.below(10)];
    return changed;
}

TEST(LoopbackCommands, OfAnyKindDoNoHarm) {
    Host host;
    std::mt19937 random(20240501);
    for (int round = 0; round < 20000; ++round)
        host.parse(randomText(random));
    RandomCommands commands(7);
    for (int round = 0; round < 3; ++round)
        for (const Form& form : allForms())
            host.instance->parse(randomBlock(form, commands).data(), nullptr, ParseBinary);
    host.text.take();
    EXPECT_EQ(host.parse("echo \"alive\";"), 0);
    EXPECT_EQ(host.text.take(), "alive\n");
}

}  // namespace
}  // namespace Zant::Tests
