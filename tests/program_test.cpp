// The command-line host, run as a user runs it.

#include <gtest/gtest.h>

#include <cctype>
#include <sstream>
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
        {"run --engine /nonexistent/ /dev/null", 3, "/nonexistent/zant3d.dylib"},
        {"report --engine /nonexistent/", 3, "the engine does not load"},
        {"probe /nonexistent", 3, "has no final separator"},
        {"convert --to morse /dev/null", 2, "morse"},
        {"forms gradients", 0, "fg2_gradients"},
        {"forms postprozess", 1, "did you mean 'postProcess'?"},
        {"forms about", 0, "about1u"},
        {"forms include", 0, "1 form."},
        {"forms no_such_$(printf '\\033')", 1, "no_such_\\x1B"},
        {"check --help", 0, "4  the output could not be written"},
    };
    for (const auto& row : rows)
        expectShown(zant(row.arguments), row.code, {row.shown});
}

/// What bash offers for the last of the words.
std::string completion(const std::string& words) {
    const std::string script = "source <(" ZANT_PROGRAM " describe bash); COMP_WORDS=(zant " + words +
                               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zant; echo ${COMPREPLY[*]}";
    const std::string offered = run("bash -c '" + script + "'").output;
    return offered.substr(0, offered.find('\n'));
}

/// The first words of the help text's lines that begin with two blanks and a letter or a minus.
std::vector<std::string> itemsOfHelp(const std::string& arguments, bool isOption) {
    std::vector<std::string> items;
    std::istringstream help(run(lineOf(arguments + " --help")).output);
    for (std::string line, word; std::getline(help, line);) {
        std::istringstream words(line);
        if (line.rfind("  ", 0) != 0 || (line[2] == '-') != isOption || !(words >> word)) continue;
        if (isOption ? word.find("--") != std::string::npos : std::islower(static_cast<unsigned char>(word[0])) != 0)
            items.push_back(word.substr(isOption ? word.find("--") : 0));
    }
    return items;
}

TEST_F(Program, TheManualPageAndTheCompletionHaveEveryOption) {
    const std::string page = run(ZANT_PROGRAM " describe manual | sed 's/\\\\f[BIR]//g; s/\\\\-/-/g'").output;
    size_t compared = 0;
    for (const std::string& command : itemsOfHelp("", false)) {
        const size_t at = page.find("\n.SS zant " + command + " ");
        ASSERT_NE(at, std::string::npos) << command;
        const std::string section = page.substr(at, page.find("\n.S", at + 1) - at);
        const std::string offered = completion(command + " --") + " ";
        for (const std::string& option : itemsOfHelp(command, true)) {
            EXPECT_NE(section.find(option), std::string::npos) << command << option;
            EXPECT_NE(offered.find(option + " "), std::string::npos) << command << option << ": " << offered;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 27u);
    for (const char* code : {"\n0\nfine\n", "\n3\nthe engine did not load\n"})
        EXPECT_EQ(countOf(code, page), 1u) << code;

    const std::array<std::pair<const char*, const char*>, 5> rows = {{
        {"ch", "check"},
        {"--ver", "--version"},
        {"convert --to \"\"", "text quick binary"},
        {"convert --to q", "quick"},
        {"run --engine r", ""},  // left to file names
    }};
    for (const auto& [words, offered] : rows)
        EXPECT_EQ(completion(words), offered) << words;
}

TEST_F(Program, SurvivesNamesOfEveryKind) {
    const std::pair<std::string, const char*> rows[] = {{".", "s a directory"},
                                                        {"none/\xC3\x28", "No such file"},
                                                        {std::string(5000, 'n'), "File name too long"},
                                                        {"", "No such file"}};
    for (const auto& [name, shown] : rows)
        for (const char* command : {"check", "run", "decode", "convert --to text", "convert --to binary", "report"})
            expectShown(zant(command + (" '" + name + "'")), 1, {shown});
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
        const Outcome converted =
            shell("set -e; zant convert --to text -o plain " + examples + example +
                  "; zant convert --to quick -o quick plain; zant convert --to binary -o binary quick; "
                  "zant convert --to text -o again binary; zant check plain quick binary");
        EXPECT_EQ(converted.code, 0) << converted;
        EXPECT_EQ(content("plain"), content("again"));
        EXPECT_GT(countOf("\n", content("plain")), 30u);
        EXPECT_EQ(content("quick")[0], '[');
    }
    expectShown(shell("truncate -s -3 binary; zant check binary"), 1, {"the block is cut off"});
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
