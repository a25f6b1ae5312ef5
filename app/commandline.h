#ifndef ZANT_APP_COMMANDLINE_H
#define ZANT_APP_COMMANDLINE_H

#include <string>
#include <vector>

namespace Zant::App {

/// An option of the program, or an argument without a name, as the user sees it.
struct OptionHelp {
    std::vector<std::string> spellings;  ///< "-o" and "--output"; one without minus for an argument
    std::string value;                   ///< what stands for its value, empty when it takes none
    std::vector<std::string> choices;    ///< the only values that it takes, empty when any will do
    std::string fallback;                ///< empty when there is none
    std::string description;
    bool repeated = false;
};

struct CommandHelp {
    std::string name;
    std::string description;
    std::vector<OptionHelp> options;
    std::vector<OptionHelp> arguments;
};

/// Everything that the program can be asked for.
struct ProgramHelp {
    std::vector<OptionHelp> options;
    std::vector<CommandHelp> commands;
    std::string exitCodes;  ///< the lines that stand under every help text
};

/// Does what the command line asks for. @return the exit code.
int runCommandLine(int argc, char** argv);

/// Writes the manual page ("manual") or the completion for a shell ("bash") to standard output.
void describe(const std::string& what, const ProgramHelp& program);

}  // namespace Zant::App

#endif
