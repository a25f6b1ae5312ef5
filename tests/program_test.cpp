// The command-line host, run as a user runs it.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <sstream>
#include <utility>
#include <vector>

#include "zantprogram.h"

namespace {

namespace fs = std::filesystem;

using namespace ZantProgram;

const std::string examples = ZANT_SOURCE_DIR "/examples/";
const std::string data = ZANT_SOURCE_DIR "/tests/data/";

TEST(Program, ExitCodesAndMessages) {
    struct Row {
        const char* arguments;
        int code;
        const char* shown;
    };
    const std::string badFile = temporary("zant_bad.zant");
    const std::string missingFirst = "check /nonexistent/file " + badFile,
                      runMissing = "run /nonexistent/file " + badFile;
    std::ofstream(badFile) << "about;\nlihgt a;\n";
    const std::string checkBad = "check " + badFile;
    const std::string runBad = "run " + badFile;
    const std::string names = temporary("zant_names.zant"), moreNames = temporary("zant_more_names.zant");
    std::ofstream(names) << "var x;\nclear x;\n";
    std::ofstream(moreNames) << "delete x;\nclear x;\n";
    const std::string firstIsBad = "decode " + badFile + " " + names;
    const std::string inOrder = "check --symbols " + names + " " + moreNames;
    const std::string inDisorder = "check --symbols " + moreNames + " " + names;
    const Row rows[] = {
        {inOrder.c_str(), 1, "zant_more_names.zant:2:7: 'x' was deleted in /"},
        {inDisorder.c_str(), 1, "zant_more_names.zant:1:8: 'x' is not declared"},
        {"", 2, "subcommand is required"},
        {"dance", 2, "no subcommand 'dance'"},
        {"--version", 0, "3.0.0"},
        {"check", 2, "FILE is required"},
        {"check /nonexistent/file", 1, "No such file"},
        {missingFirst.c_str(), 1, ": 2 commands, 1 mistake\n"},
        {runMissing.c_str(), 1, "light"},
        {"check /", 1, "s a directory"},
        {firstIsBad.c_str(), 1, "lihgt"},
        {checkBad.c_str(), 1, ":2:1: unknown command 'lihgt', did you mean 'light'?"},
        {runBad.c_str(), 1, "light"},
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
    for (const Row& row : rows) {
        const Outcome result = zant(row.arguments);
        EXPECT_EQ(result.code, row.code) << row.arguments << "\n" << result.output;
        EXPECT_NE(result.output.find(row.shown), std::string::npos) << row.arguments << "\n" << result.output;
    }
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
    std::istringstream help(zant(arguments + " --help").output);
    for (std::string line, word; std::getline(help, line);) {
        std::istringstream words(line);
        if (line.rfind("  ", 0) != 0 || (line[2] == '-') != isOption || !(words >> word)) continue;
        if (isOption ? word.find("--") != std::string::npos : std::islower(static_cast<unsigned char>(word[0])) != 0)
            items.push_back(word.substr(isOption ? word.find("--") : 0));
    }
    return items;
}

TEST(Program, TheManualPageAndTheCompletionHaveEveryOption) {
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

TEST(Program, SurvivesFilesOfEveryKind) {
    const std::string empty = temporary("zant_empty.zant"), zeros = temporary("zant_zeros.zant"),
                      oneLine = temporary("zant_long.zant"), brokenText = temporary("zant_utf8.zant"),
                      unended = temporary("zant_unended.zant"), folder = temporary("zant_folder.zant"),
                      marked = temporary("zant_marked.zant");
    std::ofstream(empty).close();
    std::ofstream(zeros) << std::string(5000, '\0');
    std::ofstream(oneLine) << "echo \"" << std::string(3000000, 'x') << "\";" << std::string(1000000, ' ') << "about;";
    std::ofstream(brokenText) << "echo \"\xFF\xC3(\xED\xA0\x80\xF8\";\nechø;\n";
    std::ofstream(unended) << "echo \"never closed;\nabout;\n";
    std::ofstream(marked) << "\xEF\xBB\xBF"
                             "about;\n";
    fs::create_directory(folder);
    const struct {
        std::string file;
        int code;           // of every command
        const char* shown;  // by check
    } rows[] = {
        {empty, 0, ""},
        {zeros, 1, "byte 0: no block begins here"},
        {oneLine, 0, ""},
        {brokenText, 1, ":2:1:"},
        {unended, 1, ":1:6:"},
        {marked, 0, ""},
        {folder, 1, "s a directory"},
        {folder + "/none/\xC3\x28", 1, "No such file"},
        {std::string(5000, 'n'), 1, "File name too long"},
        {"", 1, "No such file"},
    };
    for (const auto& row : rows) {
        const std::string name = row.file.substr(0, 60);
        const Outcome check = zant("check '" + row.file + "'");
        EXPECT_EQ(check.code, row.code) << name << "\n" << check.output.substr(0, 500);
        EXPECT_NE(check.output.find(row.shown), std::string::npos) << name << "\n" << check.output.substr(0, 500);
        for (const char* command : {"run ", "decode ", "convert --to text ", "convert --to binary ", "report "}) {
            const Outcome other = zant(command + ("'" + row.file + "'"));
            EXPECT_EQ(other.code, row.code) << command << name << "\n" << other.output.substr(0, 500);
        }
    }
}

TEST(Program, RunsCommandFilesAndReadsValuesBack) {
    const std::string file = temporary("zant_values.zant");
    write(file, "coordSys places,(1,2,3)@<>;\naxes turned,axes((1,0,0),(0,2,0),(0,0,3));\n");
    const Outcome result =
        zant("run --value exposure --value title --value origin --value nothing --value places --value turned " +
             examples + "room.zant " + examples + "turntable.zant " + file);
    EXPECT_EQ(result.code, 1) << result.output;
    for (const char* shown :
         {"room: geometry", "exposure = 1.5", "title = A room in the \"morning\"", "origin = (0, 1.5, -4)",
          "places = (1, 2, 3) @ <>", "turned = matrix (1, 0, 0) (0, 2, 0) (0, 0, 3)", "no value 'nothing'"})
        EXPECT_NE(result.output.find(shown), std::string::npos) << shown << "\n" << result.output;
}

TEST(Program, NamesTenPlantedMistakes) {
    const Outcome result = zant("check " + data + "ten_mistakes.zant");
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.output.find("10 mistakes"), std::string::npos) << result.output;
    for (const char* shown : {":2:1:", "'light'", ":3:4:", "'gradients'",
                              ":4:", ":5:16:", ":7:", ":8:", ":9:26:", "'color'", ":10:", ":11:", ":12:"})
        EXPECT_NE(result.output.find(shown), std::string::npos) << shown << "\n" << result.output;
    EXPECT_EQ(countOf("ten_mistakes.zant:", result.output), 11u) << result.output;
}

TEST(Program, ConvertsThereAndBack) {
    const std::string plain = temporary("zant_plain.zant");
    const std::string quick = temporary("zant_quick.zant");
    const std::string binary = temporary("zant_binary.zant");
    const std::string again = temporary("zant_again.zant");
    for (const char* example : {"room.zant", "turntable.zant"}) {
        EXPECT_EQ(zant("convert --to text -o " + plain + " " + examples + example).code, 0);
        EXPECT_EQ(zant("convert --to quick -o " + quick + " " + plain).code, 0);
        EXPECT_EQ(zant("convert --to binary -o " + binary + " " + quick).code, 0);
        EXPECT_EQ(zant("convert --to text -o " + again + " " + binary).code, 0);
        EXPECT_EQ(contentOf(plain), contentOf(again));
        EXPECT_GT(countOf("\n", contentOf(plain)), 30u);
        EXPECT_EQ(contentOf(quick).substr(0, 1), "[");
        EXPECT_EQ(zant("check " + plain + " " + quick + " " + binary).code, 0);
    }
    fs::resize_file(binary, fs::file_size(binary) - 3);
    const Outcome cut = zant("check " + binary);
    EXPECT_EQ(cut.code, 1);
    EXPECT_NE(cut.output.find("the block is cut off"), std::string::npos) << cut.output;
}

TEST(Program, SaysWhichNumbersTextCannotHold) {
    const std::string file = temporary("zant_numbers.zant"), text = temporary("zant_numbers_text.zant");
    std::ofstream(file) << "vector v,(0.1,1e300,-0);\nvector w,(0.30000000000000004,9007199254740993,1e23);\n";
    EXPECT_EQ(zant("convert --to text " + file).output,
              "vector v,(0.1,1e300,-0);\nvector w,(0.30000000000000004,9007199254740992,1e23);\n");

    // double d, with the words of a NaN
    const uint64_t words[] = {56, 9, 1, uint64_t{'d'}, 0, 0x7FF8000000000000, static_cast<uint64_t>(-3)};
    std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(words), sizeof words);
    const Outcome changed = zant("convert --to text -o " + text + " " + file);
    EXPECT_EQ(changed.code, 1);
    EXPECT_NE(changed.output.find("text cannot hold 1 of the numbers, the first at byte 0:"), std::string::npos)
        << changed.output;
    EXPECT_EQ(zant("convert --to binary -o " + text + " " + file).code, 0);
    write(text, "about;\n");
    EXPECT_EQ(zant("convert --to text " + file + " " + text).code, 1) << "the first file's numbers count as well";
}

TEST(Program, DecodesItemByItem) {
    const std::string file = temporary("zant_decode.zant");
    std::ofstream(file) << "fg gradients,0.5,2;\nlightAdd adaptive,(0,10,0),(1,1,1),(0,-1,0),sky,0.5,16,2;\n"
                           "lightAdd line,{(0,0,0),(1,2,3)},(0,1,0),(1,1,1);";
    const Outcome result = zant("decode " + file);
    for (const char* shown : {"line 1: fg gradients,0.5,2;", "fg2_gradients", "gradients (number 6)", "(0, 10, 0)",
                              "sky", "2 items", "1 item\n"})
        EXPECT_NE(result.output.find(shown), std::string::npos) << shown << "\n" << result.output;
}

TEST(Program, ReportsWithoutPaths) {
    const Outcome result = zant("report " + examples + "room.zant");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.output.find("the engine loads"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("-- the last 20 of "), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("showInfo symbols;"), std::string::npos) << result.output;
    EXPECT_EQ(result.output.find(ZANT_SOURCE_DIR), std::string::npos) << result.output;
}

}  // namespace
