// The command-line host, run as a user runs it.

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "zantprogram.h"

namespace {

namespace fs = std::filesystem;

using namespace ZantProgram;
using Program = ZantProgram::Test;

const std::string examples = ZANT_SOURCE_DIR "/examples/";

TEST_F(Program, ExitCodesAndMessages) {
    write("bad", "about;\nlihgt a;\n");
    write("names", "var x;\nclear x;\n");
    write("more", "delete x;\nclear x;\n");
    const struct {
        const char* arguments;
        int code;
        const char* shown;
    } rows[] = {
        {"check --symbols names more", 1, "more:2:7: 'x' was deleted in more, line 1\n"},
        {"check --symbols more names", 1, "more:1:8: 'x' is not declared"},
        {"", 2, "subcommand is required"},
        {"dance", 2, "no subcommand 'dance'"},
        {"--version", 0, "3.0.0"},
        {"check", 2, "FILE is required"},
        {"check missing", 1, "No such file"},
        {"check missing bad", 1, ": 2 commands, 1 mistake\n"},
        {"run missing bad", 1, "light"},
        {"decode bad names", 1, "lihgt"},
        {"check bad", 1, "bad:2:1: unknown command 'lihgt', did you mean 'light'?"},
        {"run bad", 1, "light"},
        {"run --engine /nonexistent/ names", 3, "/nonexistent/zant3d."},
        {"report --engine /nonexistent/", 3, "the engine does not load"},
        {"probe /nonexistent", 3, "has no final separator"},
        {"convert --to morse names", 2, "morse"},
        {"forms gradients", 0, "fg2_gradients"},
        {"forms postprozess", 1, "did you mean 'postProcess'?"},
        {"forms about", 0, "about1u"},
        {"forms include", 0, "1 form."},
        {"forms no_such_\x1B", 1, "no_such_\\x1B"},
        {"check --help", 0, "4  the output could not be written"},
    };
    for (const auto& row : rows)
        expectShown(zant(row.arguments), row.code, {row.shown});
}

TEST_F(Program, RunsCommandFilesAndReadsValuesBack) {
    write("values", "coordSys places,(1,2,3)@<>;\naxes turned,axes((1,0,0),(0,2,0),(0,0,3));\n");
    const std::string values =
        "--value exposure --value title --value origin --value nothing --value places --value turned ";
    expectShown(zant("run " + values + examples + "room.zant " + examples + "turntable.zant values"), 1,
                {"room: geometry", "exposure = 1.5", "title = A room in the \"morning\"", "origin = (0, 1.5, -4)",
                 "places = (1, 2, 3) @ <>", "turned = matrix (1, 0, 0) (0, 2, 0) (0, 0, 3)", "no value 'nothing'"});
}

TEST_F(Program, ConvertsThereAndBack) {
    for (const std::string example : {"room.zant", "turntable.zant"}) {
        for (const std::string& line :
             {"convert --to text -o plain " + examples + example, std::string("convert --to quick -o quick plain"),
              std::string("convert --to binary -o binary quick"), std::string("convert --to text -o again binary"),
              std::string("check plain quick binary")})
            expectShown(zant(line), 0, {});
        EXPECT_EQ(content("plain"), content("again"));
        EXPECT_GT(countOf("\n", content("plain")), 30u);
        EXPECT_EQ(content("quick")[0], '[');
        EXPECT_EQ(zant("convert --to binary quick").output, content("binary")) << "every byte arrives";
    }
    write("binary", content("binary").substr(0, content("binary").size() - 3));
    expectShown(zant("check binary"), 1, {"the block is cut off"});
}

TEST_F(Program, ReplacesItsOutputAsAWholeOrNotAtAll) {
    const std::string scene = "var a,1;\n", old = "old\n", quick = "[18],a,1;\n", bad = "about;\nlihgt;\n";
    write("scene", scene);
    write("bad", bad);
    const struct {
        const char *before, *arguments;
        int code;
        std::string output;
    } rows[] = {
        {"old\n", "convert --to quick -o out scene", 0, quick},
        {"var a,1;\n", "convert --to quick -o out out", 0, quick},
        {"old\n", "convert --to quick -o out missing", 1, old},
        {"old\n", "convert --to quick -o out scene missing", 1, old},
        {"about;\nlihgt;\n", "convert --to text -o out out", 1, bad},
        {"old\n", "decode -o out missing", 1, old},
        {"var a,1;\n", "decode -o out ./out", 2, scene},
    };
    for (const auto& row : rows) {
        write("out", row.before);
        expectShown(zant(row.arguments), row.code, {});
        EXPECT_EQ(content("out"), row.output) << row.arguments;
        EXPECT_EQ(std::distance(fs::directory_iterator(fs::u8path(folder)), {}), 3) << row.arguments;
    }
    EXPECT_EQ(zant("convert --to text -o none/new scene").code, 4);
}

TEST_F(Program, TakesAndShowsNamesAsTheyAreGiven) {
    fs::create_directory(fs::u8path(folder + "/ä ö"));
    write("ä ö/画 😀", "include \"bèside\";\nlihgt;\n");
    write("ä ö/bèside", "echo \"from beside\";\n");
    expectShown(zant("check --includes 'ä ö/画 😀' missing"), 1,
                {"ä ö/画 😀:2:1: unknown command", "ä ö/bèside: 1 command", "missing: No such file or directory"});
    expectShown(zant("run 'ä ö/画 😀'"), 1, {"from beside\n", "ä ö/画 😀:2:1: "});
    expectShown(zant("convert --to quick -o 'ä ö/é' 'ä ö/bèside'"), 0, {});
    EXPECT_EQ(countOf("from beside", content("ä ö/é")), 1u);
    expectShown(zant("run --engine 'ä ö/' missing"), 3, {"ä ö/zant3", "ä ö/zant3d"});
}

TEST_F(Program, SaysWhichNumbersTextCannotHold) {
    const std::string text = "vector v,(0.1,1e300,-0);\nvector w,(0.30000000000000004,9007199254740992,1e23);\n";
    write("numbers", text);
    EXPECT_EQ(zant("convert --to text numbers").output, text);

    // double d, with the words of a NaN
    const uint64_t words[] = {56, 9, 1, uint64_t{'d'}, 0, 0x7FF8000000000000, static_cast<uint64_t>(-3)};
    write("NaN", std::string(reinterpret_cast<const char*>(words), sizeof words));
    expectShown(zant("convert --to text NaN numbers"), 1, {"text cannot hold 1 of the numbers, the first at byte 0:"});
    EXPECT_EQ(zant("convert --to binary NaN").code, 0);
}

TEST_F(Program, DecodesItemByItem) {
    write("scene",
          "fg gradients,0.5,2;\nlightAdd adaptive,(0,10,0),(1,1,1),(0,-1,0),sky,0.5,16,2;\n"
          "lightAdd line,{(0,0,0),(1,2,3)},(0,1,0),(1,1,1);");
    expectShown(zant("decode scene"), 0,
                {"line 1: fg gradients,0.5,2;", "fg2_gradients", "gradients (number 6)", "(0, 10, 0)", "sky", "2 items",
                 "1 item\n"});
}

TEST_F(Program, ReportsWithoutPaths) {
    const Outcome result = zant("report " + examples + "room.zant");
    expectShown(result, 0, {"the engine loads", "-- the last 20 of ", "showInfo symbols;"});
    EXPECT_EQ(result.output.find(ZANT_SOURCE_DIR), std::string::npos) << result;
}

}  // namespace
