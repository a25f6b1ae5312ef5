// Parts of the program that are seen best from inside: what is escaped, what is shortened, what is guessed.

#include "app/pathless.h"
#include "app/readback.h"
#include "app/text.h"
#include "recordingengine.h"

namespace {

using namespace Zant::App;

TEST(AppText, EscapesWhatATerminalShouldNotBeGiven) {
    const struct {
        std::string bytes;
        const char* shown;
    } rows[] = {
        {"plain 'text'", "plain 'text'"},
        {"gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x8E\xA8", "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x8E\xA8"},
        {"\x1B[2J\a\x7F\n", "\\x1B[2J\\x07\\x7F\\x0A"},
        {std::string("a\0b", 3), "a\\x00b"},
        {"\xFF\xC3(\xC3\xC3", "\\xFF\\xC3(\\xC3\\xC3"},         // no UTF-8
        {"\xC0\xAF\xE0\x80\xAF", "\\xC0\\xAF\\xE0\\x80\\xAF"},  // longer than need be
        {"\xED\xA0\x80", "\\xED\\xA0\\x80"},                    // half of a pair
        {"\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80"},           // above the last character
        {"\xC2\x9B", "\\xC2\\x9B"},                             // a control character of two bytes
        {"cut \xE2\x82", "cut \\xE2\\x82"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(row.bytes), row.shown);
    EXPECT_EQ(shown("a\n\tb\r", "\n\t"), "a\n\tb\\x0D");
}

TEST(AppText, ShortensPathsOfEveryPlatform) {
    const struct {
        const char* text;
        const char* shortened;
    } rows[] = {
        {"file         /home/jane doe/my engine/zant3.dylib: opened", "file         .../zant3.dylib: opened"},
        {"directory    /home/jane/engine/\n", "directory    .../engine/\n"},
        {"bitmap b,file,\"C:\\Users\\Jane Doe\\wood.png\";", "bitmap b,file,\"...\\wood.png\";"},
        {"bitmap b,file,\"textures/jane's room, (old)/wood.png\";", "bitmap b,file,\".../wood.png\";"},
        {"cannot read 'D:/Jane/a b.zant'", "cannot read '.../a b.zant'"},
        {"C:\\Users\\Jane\\x.dll: cannot open", "...\\x.dll: cannot open"},
        {"\\\\server\\jane\\x.dll", "...\\x.dll"},
        {"the engine's /home/jane/x and\nmore", "the engine's .../x and\nmore"},
        {"echo \"a / b\"; not closed \"/home/jane\nfg gradients,0.5,2;",
         "echo \"a / b\"; not closed \".../jane\nfg gradients,0.5,2;"},
    };
    for (const auto& row : rows) {
        const std::string once = withoutPaths(row.text, {"/home/jane/known"});
        EXPECT_EQ(once, row.shortened);
        EXPECT_EQ(withoutPaths(once, {}), once) << "shortened twice";
    }
    EXPECT_EQ(withoutPaths("/home/o, jane (old)/a.zant:3:1: what", {"/home/o, jane (old)/a.zant"}),
              ".../a.zant:3:1: what");
}

using ReadBack = RecordingEngine::Test;

TEST_F(ReadBack, GuessesBetweenVectorsAndCoordinateSystemsOnlyWithoutAText) {
    const struct {
        int count;         // or the lower half of the pitch
        const char* text;  // the engine's, null when it gives none
        const char* description;
    } rows[] = {
        {2, "vector x,(1,2);", "(1, 2)"},
        {0, "coordSys x,(1,2,3)@<>;", "(1, 2, 3) @ <>"},
        {3, "coordSys x,(1,2,3)@<>;", "(1, 2, 3) @ <>"},  // an angle may look like a count
        {3, "something else", "something else"},
        {0, nullptr, "(1, 2, 3) @ <> (a guess: the engine gives no text of it)"},
        {7, nullptr, "(1, 2, 3) @ <> (a guess: the engine gives no text of it)"},
        {3, nullptr, "(1, 2, 3) (a guess: the engine gives no text of it)"},
    };
    RecordingEngine::state.object = &RecordingEngine::state;
    for (const auto& row : rows) {
        RecordingEngine::state.getValue = [&row](void*, ZantParserExchangeBuffer* record) {
            if (record->type != ZantValueText) {
                record->type = ZantValueVector;
                record->value.coordSys = {{1, 2, 3}, {}};
                record->value.vector.count = row.count;
            } else if (!row.text) {
                record->type = 0;
            } else if (record->value.text.text) {
                EXPECT_GT(record->value.text.length, std::strlen(row.text));
                std::strcpy(record->value.text.text, row.text);
            } else {
                record->value.text.length = std::strlen(row.text);
            }
            return 1;
        };
        EXPECT_EQ(readBack(*instance, "x").value_or("none"), row.description);
    }
    RecordingEngine::state.object = nullptr;
    EXPECT_FALSE(readBack(*instance, "x").has_value());
}

}  // namespace
