// The command-line host: drives an engine with command files, checks and converts them, and explains the vocabulary.

#include <csignal>
#include <sstream>

#include "app/outputfile.h"
#include "app/program.h"
#include "app/text.h"
#include "own/version.h"

namespace Zant::App {
namespace {

constexpr const char* exitCodes =
    "Exit codes:\n"
    "  0  fine\n"
    "  1  the input has errors or cannot be read\n"
    "  2  wrong usage\n"
    "  3  the engine did not load\n"
    "  4  the output could not be written";

bool isSubcommand(const CLI::App& program, const std::string& word) {
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; }))
        if (command->check_name(word)) return true;
    return false;
}

/// Help and version go to standard output, what is wrong with the usage to standard error.
int explainUsage(const CLI::App& program, const CLI::ParseError& error) {
    std::ostringstream help, wrong;
    const int code = program.exit(error, help, wrong);
    std::fputs(help.str().c_str(), stdout);
    std::fputs(shown(wrong.str(), "\n").c_str(), stderr);
    return code == 0 ? Fine : WrongUsage;
}

int runProgram(int argc, char** argv) {
    CLI::App program{"Drives a Zant engine from the command line.", "zant"};
    program.set_version_flag("--version", ZANT_VERSION);
    program.require_subcommand(1);
    program.footer(exitCodes);
    int exitCode = Fine;
    for (const auto add : {addRun, addCheck, addConvert, addForms, addDecode, addProbe, addReport, addRehearse,
                           addReference, addDescribe})
        add(program, exitCode);
    for (CLI::App* command : program.get_subcommands([](CLI::App*) { return true; }))
        command->footer(exitCodes);
    if (argc > 1 && argv[1][0] != '-' && !isSubcommand(program, argv[1])) {
        complain(std::string("zant: no subcommand '") + argv[1] + "' (zant --help lists them)");
        return WrongUsage;
    }
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return explainUsage(program, error);
    }
    return exitCode;
}

int runAndTell(int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN);  // a file at its largest size is an error like a full disk
    try {
        return runProgram(argc, argv);
    } catch (const OutputError& error) {
        complain(std::string("zant: ") + error.what());
        return OutputNotWritten;
    } catch (const std::exception& error) {
        // What printing throws is told by the end of standard output.
        if (!std::ferror(stdout)) complain(std::string("zant: ") + error.what());
        return InputHasErrors;
    }
}

}  // namespace

void refuseToReplace(const std::vector<std::string>& inputs, const std::string& output) {
    if (isOneOf(output, inputs)) throw CLI::ValidationError("--output", output + " is one of the files that are read");
}

}  // namespace Zant::App

int main(int argc, char** argv) {
    const int code = Zant::App::runAndTell(argc, argv);
    if (code == Zant::App::OutputNotWritten) return code;
    return Zant::App::finishStandardOutput() ? code : Zant::App::OutputNotWritten;
}
