// The command-line host: drives an engine with command files, checks and converts them, and explains the vocabulary.

#include "app/program.h"

namespace {

bool isSubcommand(const CLI::App& program, const std::string& word) {
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; }))
        if (command->check_name(word)) return true;
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App program{"Drives a Zant engine from the command line.", "zant"};
    program.set_version_flag("--version", ZANT_VERSION);
    program.require_subcommand(1);
    int exitCode = Zant::App::Fine;
    for (const auto add :
         {Zant::App::addRun, Zant::App::addCheck, Zant::App::addConvert, Zant::App::addForms, Zant::App::addDecode,
          Zant::App::addProbe, Zant::App::addReport, Zant::App::addRehearse, Zant::App::addReference})
        add(program, exitCode);
    if (argc > 1 && argv[1][0] != '-' && !isSubcommand(program, argv[1])) {
        std::fprintf(stderr, "zant: no subcommand '%s' (zant --help lists them)\n", argv[1]);
        return Zant::App::WrongUsage;
    }
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? Zant::App::Fine : Zant::App::WrongUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zant: %s\n", error.what());
        return Zant::App::InputHasErrors;
    }
    return exitCode;
}
