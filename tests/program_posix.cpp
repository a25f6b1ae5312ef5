// What the program does for a shell, and the system's words for names that lead nowhere.

#include <cctype>
#include <sstream>

#include "shell.h"

namespace {

using namespace ZantProgram;
using ProgramInAShell = ShellTest;

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

TEST_F(ProgramInAShell, TheManualPageAndTheCompletionHaveEveryOption) {
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
    EXPECT_EQ(compared, 28u);
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

TEST_F(ProgramInAShell, SurvivesNamesOfEveryKind) {
    const std::pair<std::string, const char*> rows[] = {{".", "s a directory"},
                                                        {"none/\xC3\x28", "No such file"},
                                                        {std::string(5000, 'n'), "File name too long"},
                                                        {"", "No such file"}};
    for (const auto& [name, shown] : rows)
        for (const char* command : {"check", "run", "decode", "convert --to text", "convert --to binary", "report"})
            expectShown(zant(command + (" '" + name + "'")), 1, {shown});
}

}  // namespace
