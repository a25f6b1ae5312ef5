// What the typed functions send, in each encoding, is read back as one and the same command: that of the catalogue.

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "language/reader.h"
#include "language/writer.h"
#include "tests/recordingengine.h"
#include "tests/vocabulary/expected.h"

namespace {

using namespace Vocabulary;

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

}  // namespace
