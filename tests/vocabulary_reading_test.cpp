// What the typed functions send, in each encoding, is read back as one and the same command: that of the catalogue.

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "language/reader.h"
#include "language/writer.h"
#include "tests/loopbackhost.h"
#include "tests/recordingengine.h"
#include "tests/vocabulary/expected.h"

namespace {

using namespace Vocabulary;

// ---- The reader of the language ----

class ReadingTest : public RecordingEngine::Test, private Zant::Language::SymbolResolver {
protected:
    std::vector<Event> log;
    Arguments arguments{log};

    template <typename Buffer>
    std::string sent(const Row& row) {
        RecordingEngine::state.parsed.clear();
        send<Buffer>(row, instance, arguments);
        return RecordingEngine::state.parsed.back().data;
    }

    void readText(const std::string& text, Zant::Language::Command& command) {
        Zant::Language::TextReader reader{std::string_view(text)};
        Zant::Language::Command none;
        EXPECT_EQ(reader.next(command), Zant::Language::ReadResult::Command)
            << reader.diagnostic().describe(text.c_str());
        EXPECT_EQ(reader.next(none), Zant::Language::ReadResult::End) << text;
    }

    void readBlock(const std::string& block, Zant::Language::Command& command) {
        Zant::Language::BinaryReader reader(this);
        EXPECT_EQ(reader.read(block.data(), block.size(), command), Zant::Language::ReadResult::Command)
            << reader.diagnostic().describe("block");
    }

private:
    const char* nameOf(uint64_t registered) override {
        name = "S" + std::to_string(registered - 9000 + 1);
        return name.c_str();
    }

    std::string name;
};

TEST_F(ReadingTest, AllEncodingsGiveTheCommandOfTheCatalogue) {
    const std::map<std::string, std::string> narrowNames = [] {
        std::map<std::string, std::string> names;
        for (const Zant::Form& form : Zant::allForms()) {
            names[form.function] = form.function;
            if (form.wideFunction) names[form.wideFunction] = form.function;
        }
        return names;
    }();
    size_t checked = 0;
    Zant::Language::TextWriter writer;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Zant::Language::Command plain, quick, binary;
        readText(sent<Zant::CommandTextBuffer>(row), plain);
        readText(sent<Zant::CommandQuickTextBuffer>(row), quick);
        readBlock(sent<Zant::CommandBinaryBuffer>(row), binary);
        if (HasFailure()) break;
        EXPECT_EQ(plain.form->function, narrowNames.at(row.name));
        EXPECT_TRUE(sameCommand(plain, quick));
        EXPECT_TRUE(sameCommand(binary, plain));
        EXPECT_EQ(writer.write(plain), Expected(row, arguments).text(false));
        EXPECT_EQ(writer.write(binary), Expected(row, arguments).text(false));
        ++checked;
    }
    EXPECT_EQ(checked, functionCount);
}

// ---- The loopback engine ----

/// Sends rows to the loopback engine, which writes down what it has understood.
class LoopbackReading : public ::testing::Test {
protected:
    Zant::Tests::TemporaryFile transcript;
    Zant::Tests::Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}};
    std::unique_ptr<Zant::Tests::Host> host = std::make_unique<Zant::Tests::Host>();
    std::vector<Event> log;
    Arguments arguments{log};

    /// Declares an object for each argument that must exist.
    void prepare(const Row& row) {
        for (const Place& place : placesOf(row)) {
            if (place.number != 0) continue;
            const std::string v = std::to_string(place.parameter + 1);
            std::string commands;
            if (place.word == "B") commands = "bitmap B" + v + ",floatRgb,(64,64);";
            if (place.word == "M" || place.word == "LS") commands = "mesh M" + v + ";";
            if (place.word == "X") commands = "vertexMap X" + v + ",2,fixedSize,2000;";
            if (place.word == "S" || place.word == "LS") commands += "surface S" + v + ",black;";
            if (commands.empty()) continue;
            EXPECT_EQ(host->parse(commands.c_str()), 0) << commands << host->text.take();
            registerSymbol(place.parameter);
        }
    }

    void registerSymbol(size_t place) {
        if (!arguments.isRegistered(place)) return;
        uint64_t word = 0;
        host->instance->findObject(("S" + std::to_string(place + 1)).c_str(), &word, HandleObject, nullptr);
        if (word != 0) arguments.setRegistered(place, word);
    }

    /// @return the engine's answer
    template <typename Buffer>
    int answer(const Row& row, const char* mark) {
        prepare(row);
        EXPECT_EQ(host->parse((std::string("echo \"") + mark + row.name + "\";").c_str()), 0);
        Buffer buffer(host->instance);
        call(row, buffer, arguments);
        return buffer.errorCode;
    }

    /// The line behind each mark.
    std::map<std::string, std::string> recorded() {
        host.reset();  // the transcript is complete when the engine has gone
        std::map<std::string, std::string> lines;
        std::istringstream in(transcript.content());
        std::string mark;
        for (std::string line; std::getline(in, line);) {
            if (!mark.empty()) lines[mark] = line;
            const bool isMark = line.rfind("echo \"mark ", 0) == 0;
            mark = isMark ? line.substr(11, line.size() - 13) : std::string();
        }
        return lines;
    }
};

TEST_F(LoopbackReading, IsTheSameInAllEncodings) {
    size_t checked = 0;
    std::map<std::string, int> refused;
    std::map<std::string, std::string> expected;
    for (const Row& row : rows) {
        const int code = answer<Zant::CommandTextBuffer>(row, "mark text ");
        EXPECT_EQ(answer<Zant::CommandQuickTextBuffer>(row, "mark quick "), code) << row.name << host->text.take();
        EXPECT_EQ(answer<Zant::CommandBinaryBuffer>(row, "mark binary "), code) << row.name << host->text.take();
        ++checked;
        if (code != 0) refused[row.name] = code;
        for (const char* mark : {"text ", "quick ", "binary "}) {
            if (code == 0) expected[std::string(mark) + row.name] = Expected(row, arguments).text(false);
        }
    }
    EXPECT_EQ(checked, functionCount);
    // Understood, but the arguments are no row, no points, no files and no commands that the engine has.
    const std::map<std::string, int> refusals = {
        {"meshAddPoly3", 4}, {"meshAddPoly4", 4}, {"meshAddPoly5", 4}, {"vertex3d3", 4}, {"include1", 5},
        {"include1u", 5},    {"parse1", 1},       {"parse1u", 1},      {"parse2", 1},    {"parse2u", 1}};
    EXPECT_EQ(refused, refusals);
    EXPECT_EQ(expected.size(), 3 * (functionCount - refusals.size()));
    const std::map<std::string, std::string> lines = recorded();
    for (const auto& [mark, text] : expected) {
        const auto line = lines.find(mark);
        EXPECT_EQ(line == lines.end() ? "nothing" : line->second, text) << mark;
    }
}

}  // namespace
