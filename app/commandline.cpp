// The command line: the options of every subcommand, and what help says of them.

#include "app/commandline.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>

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

/// The program with its subcommands; the one that is called leaves its exit code.
class CommandLine {
public:
    CommandLine();
    int run(int argc, char** argv);

private:
    /// A subcommand that does the work with options of its own.
    template <class Options>
    std::pair<CLI::App*, std::shared_ptr<Options>> add(const char* name, const char* description,
                                                       int (*work)(const Options&)) {
        CLI::App* command = program_.add_subcommand(name, description);
        command->footer(exitCodes);
        const auto options = std::make_shared<Options>();
        command->callback([this, options, work] { exitCode_ = work(*options); });
        return {command, options};
    }
    void addRun();
    void addCheck();
    void addConvert();
    void addForms();
    void addDecode();
    void addProbe();
    void addReport();
    void addRehearse();
    void addReference();
    void addDescribe();

    bool isSubcommand(const std::string& word) const;
    int explainUsage(const CLI::ParseError& error) const;
    ProgramHelp help() const;

    CLI::App program_{"Drives a Zant engine from the command line.", "zant"};
    int exitCode_ = Fine;
};

// ---- Options that several subcommands have ----

void addEngine(CLI::App* command, std::string& engine, const char* description = "Directory of the engine file") {
    command->add_option("--engine", engine, std::string(description) + ", or loopback (the default) or preview");
}

void addOutput(CLI::App* command, std::string& output) {
    command->add_option("-o,--output", output, "File to write (default: standard output)");
}

void addFiles(CLI::App* command, std::vector<std::string>& files) {
    command->add_option("FILE", files, "Command files in any encoding; - is standard input")->required();
}

void addTimeLimit(CLI::App* command, int& seconds, const char* description) {
    command->add_option("--time-limit", seconds, description)->check(CLI::Range(1, 86400))->capture_default_str();
}

// ---- The subcommands ----

CommandLine::CommandLine() {
    program_.set_version_flag("--version", ZANT_VERSION);
    program_.require_subcommand(1);
    program_.allow_windows_style_options(false);  // /a is the name of a file on every platform
    program_.footer(exitCodes);
    addRun();
    addCheck();
    addConvert();
    addForms();
    addDecode();
    addProbe();
    addReport();
    addRehearse();
    addReference();
    addDescribe();
}

void CommandLine::addRun() {
    const auto [command, options] =
        add<RunOptions>("run", "Drive an engine with command files and show its text", App::run);
    addEngine(command, options->engine);
    command->add_option(
        "--picture", options->picture,
        "Draw the scene when the files are done, and write it to this PNG file (default engine: preview)");
    command->add_option("--value", options->values, "Read a declared value back when the files are done (repeatable)")
        ->allow_extra_args(false);
    command
        ->add_option("FILE", options->files, "Command files in any encoding, sent in this order; - is standard input")
        ->required();
}

void CommandLine::addCheck() {
    const auto [command, options] =
        add<CheckOptions>("check", "Name every command that the vocabulary does not have", check);
    command->add_flag("--json", options->json,
                      "Write each mistake as a JSON object on a line of its own, nothing else");
    command->add_flag("--includes", options->includes, "Check the files of 'include' commands as well, each once");
    command->add_flag(
        "--symbols", options->symbols,
        "Follow the names as well: undeclared, deleted, of another kind. Files share them, in their order");
    addFiles(command, options->files);
}

void CommandLine::addConvert() {
    const auto [command, options] = add<ConvertOptions>("convert", "Write commands in another encoding", convert);
    command->add_option("--to", options->encoding, "Encoding to write")
        ->required()
        ->check(CLI::IsMember({"text", "quick", "binary"}));
    addOutput(command, options->output);
    addFiles(command, options->files);
}

void CommandLine::addForms() {
    const auto [command, options] = add<FormsOptions>("forms", "Show a command's forms with the function names", forms);
    command->add_flag("--json", options->json, "Write each form as a JSON object on a line of its own, nothing else");
    command
        ->add_option("WORD", options->words,
                     "A command word or its number, with or without keywords; a keyword; a part of a function name")
        ->required();
}

void CommandLine::addDecode() {
    const auto [command, options] = add<DecodeOptions>("decode", "Show commands of any encoding, item by item", decode);
    addOutput(command, options->output);
    addFiles(command, options->files);
}

void CommandLine::addProbe() {
    const auto [command, options] =
        add<ProbeOptions>("probe", "Say, step by step, why an engine loads or does not", probe);
    command->footer(std::string("Here 1 means that the engine loads but lacks what a client calls.\n\n") + exitCodes);
    command->add_option("DIR", options->directory, "Directory of the engine file, with its final separator")
        ->required();
    addTimeLimit(command, options->timeLimit, "Seconds after which an engine that hangs is ended");
}

void CommandLine::addReport() {
    const auto [command, options] =
        add<ReportOptions>("report", "Write what a report needs: versions, probe, the last commands", report);
    addEngine(command, options->engine);
    addOutput(command, options->output);
    command->add_option("FILE", options->files, "Command files or transcripts whose last commands are shown");
}

void CommandLine::addRehearse() {
    const auto [command, options] =
        add<RehearseOptions>("rehearse", "Do to a plug-in what hosts do, and tell what went wrong", rehearse);
    command->footer(
        std::string("A hook that is named must exist; of the default ones, those are called that are there.\n\n") +
        exitCodes);
    command->add_option("PLUGIN", options->plugin, "The plug-in's file")->required();
    addEngine(command, options->engine, "Directory given to the start hook");
    const auto addHook = [command = command](const char* name, Hook& hook, const char* description) {
        command->add_option(name, hook.name, description)->capture_default_str()->each([&hook](const std::string&) {
            hook.named = true;
        });
    };
    addHook("--start", options->start, "int hook(const char* engineDirectory), 0 for failure");
    addHook("--work", options->work, "void hook(void), called between start and stop");
    addHook("--stop", options->stop, "void hook(void)");
    addTimeLimit(command, options->timeLimit, "Seconds after which a rehearsal that hangs is ended");
}

void CommandLine::addReference() {
    const auto [command, options] =
        add<ReferenceOptions>("reference", "Write the vocabulary as pages for Doxygen", reference);
    command->add_option("DIR", options->directory, "Directory to write to, made when it is missing")->required();
    command->add_option("--header", options->header,
                        "The header protos.h: its declarations stand on the pages as well");
}

void CommandLine::addDescribe() {
    auto* command = program_.add_subcommand("describe", "Write the manual page, or the completion of a shell");
    command->group("");  // for the build, which installs both
    const auto what = std::make_shared<std::string>();
    command->add_option("WHAT", *what)->required()->check(CLI::IsMember({"manual", "bash"}));
    command->callback([this, what] { describe(*what, help()); });
}

// ---- Running ----

bool CommandLine::isSubcommand(const std::string& word) const {
    for (const CLI::App* command : program_.get_subcommands([](const CLI::App*) { return true; }))
        if (command->check_name(word)) return true;
    return false;
}

/// Help and version go to standard output, what is wrong with the usage to standard error.
int CommandLine::explainUsage(const CLI::ParseError& error) const {
    std::ostringstream help, wrong;
    const int code = program_.exit(error, help, wrong);
    std::fputs(help.str().c_str(), stdout);
    std::fputs(shown(wrong.str(), "\n").c_str(), stderr);
    return code == 0 ? Fine : WrongUsage;
}

int CommandLine::run(int argc, char** argv) {
    if (argc > 1 && argv[1][0] != '-' && !isSubcommand(argv[1])) {
        complain(std::string("zant: no subcommand '") + argv[1] + "' (zant --help lists them)");
        return WrongUsage;
    }
    try {
        program_.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return explainUsage(error);
    }
    return exitCode_;
}

// ---- What help says, without the library that parses ----

/// "FILE:{text,quick,binary}" has the choices in its type's name.
std::vector<std::string> choicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const size_t open = type.find('{'), close = type.find('}');
    if (open == std::string::npos || close == std::string::npos) return {};
    return CLI::detail::split(type.substr(open + 1, close - open - 1), ',');
}

OptionHelp helpOf(const CLI::Option* option) {
    OptionHelp help;
    for (const std::string& name : option->get_snames())
        help.spellings.push_back("-" + name);
    for (const std::string& name : option->get_lnames())
        help.spellings.push_back("--" + name);
    if (option->get_positional()) help.spellings = {option->get_name(true)};
    if (option->get_items_expected_max() > 0) help.value = option->get_type_name();
    help.choices = choicesOf(*option);
    help.fallback = option->get_default_str();
    help.description = option->get_description();
    help.repeated = option->get_expected_max() > 1;
    return help;
}

std::vector<OptionHelp> optionsOf(const CLI::App& command, bool positional) {
    std::vector<OptionHelp> all;
    for (const CLI::Option* option : command.get_options())
        if (option->get_positional() == positional) all.push_back(helpOf(option));
    return all;
}

ProgramHelp CommandLine::help() const {
    ProgramHelp help{optionsOf(program_, false), {}, exitCodes};
    const auto isShown = [](const CLI::App* command) { return !command->get_group().empty(); };
    for (const CLI::App* command : program_.get_subcommands(isShown))
        help.commands.push_back(
            {command->get_name(), command->get_description(), optionsOf(*command, false), optionsOf(*command, true)});
    return help;
}

}  // namespace

int runCommandLine(int argc, char** argv) {
    return CommandLine().run(argc, argv);
}

}  // namespace Zant::App
