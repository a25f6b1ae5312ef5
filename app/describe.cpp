// zant describe: the manual page and the shell's completion, made from the options that the program declares.

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <sstream>

#include "app/outputfile.h"
#include "app/program.h"
#include "own/version.h"

namespace Zant::App {
namespace {

using Commands = std::vector<const CLI::App*>;
using Options = std::vector<const CLI::Option*>;

constexpr const char* conventions =
    "Command files are read in any encoding: plain text, quick text, or binary blocks one after another.\n"
    "\\fB\\-\\fR is standard input.\n"
    "What \\fB\\-o\\fR names is written beside its place and takes the place at the end, so that it may be the input "
    "as\n"
    "well; after a failure the old file is as it was.\n";

Commands commandsOf(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

Options optionsOf(const CLI::App& command, bool positional) {
    return command.get_options([=](const CLI::Option* option) { return option->get_positional() == positional; });
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

/// The words that an option takes where it takes no others, else nothing.
std::string choicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const size_t open = type.find('{'), close = type.find('}');
    if (open == std::string::npos || close == std::string::npos) return {};
    std::string choices = type.substr(open + 1, close - open - 1);
    for (char& c : choices)
        if (c == ',') c = ' ';
    return choices;
}

/// "-o" and "--output"
std::vector<std::string> spellingsOf(const CLI::Option& option) {
    std::vector<std::string> all;
    for (const std::string& name : option.get_snames())
        all.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        all.push_back("--" + name);
    return all;
}

// ---- The manual page
// -------------------------------------------------------------------------------------------------

/// Text as roff reads it: a plain minus, and no line that looks like a request.
std::string roff(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '-' || c == '\\') escaped += '\\';
        escaped += c == '\\' ? 'e' : c;
    }
    return (!text.empty() && (text[0] == '.' || text[0] == '\'') ? "\\&" : "") + escaped;
}

std::string bold(const std::string& text) {
    return "\\fB" + roff(text) + "\\fR";
}

std::string placeholder(const CLI::Option& option) {
    if (!takesValue(option)) return {};
    const std::string choices = choicesOf(option);
    return choices.empty() ? " \\fI" + roff(option.get_type_name()) + "\\fR" : " " + bold(choices);
}

void writeOption(OutputFile& page, const CLI::Option& option) {
    std::vector<std::string> names = spellingsOf(option);
    for (std::string& name : names)
        name = bold(name);
    const std::string fallback = option.get_default_str();
    page.print(".TP\n{}{}\n{}{}\n", fmt::join(names, ", "), placeholder(option), roff(option.get_description()),
               fallback.empty() ? "" : " (default: " + roff(fallback) + ")");
}

void writeCommand(OutputFile& page, const CLI::App& command) {
    page.print(".SS zant {}", roff(command.get_name()));
    page.write(optionsOf(command, false).empty() ? "" : " [OPTIONS]");
    const Options positionals = optionsOf(command, true);
    for (const CLI::Option* option : positionals)
        page.print(" {}{}", option->get_name(true), option->get_expected_max() > 1 ? "..." : "");
    page.print("\n{}.\n", roff(command.get_description()));
    for (const CLI::Option* option : positionals)
        page.print(".TP\n\\fI{}\\fR\n{}\n", option->get_name(true), roff(option->get_description()));
    for (const CLI::Option* option : optionsOf(command, false))
        writeOption(page, *option);
}

/// The lines "  0  fine" that stand under every help text.
void writeExitCodes(OutputFile& page, const CLI::App& program) {
    page.write(".SH EXIT STATUS\nThe same for every subcommand. When several apply, the highest one holds.\n");
    std::istringstream lines(program.get_footer());
    for (std::string line, code, meaning; std::getline(lines, line);) {
        std::istringstream words(line);
        if (line.rfind("  ", 0) == 0 && words >> code && std::getline(words >> std::ws, meaning))
            page.print(".TP\n{}\n{}\n", bold(code), roff(meaning));
    }
}

void writeManual(OutputFile& page, const CLI::App& program) {
    page.print(".TH ZANT 1 \"\" \"Zant {}\" \"Zant\"\n", ZANT_VERSION);
    page.write(".SH NAME\nzant \\- drive a rendering engine with command files, check and convert them\n");
    page.write(".SH SYNOPSIS\n.B zant\n\\fISUBCOMMAND\\fR [\\fIOPTIONS\\fR] [\\fIFILE\\fR...]\n.SH DESCRIPTION\n");
    page.write(conventions);
    page.write(".SH OPTIONS\n");
    for (const CLI::Option* option : optionsOf(program, false))
        writeOption(page, *option);
    page.write(".SH SUBCOMMANDS\n");
    for (const CLI::App* command : commandsOf(program))
        writeCommand(page, *command);
    writeExitCodes(page, program);
}

// ---- bash
// ------------------------------------------------------------------------------------------------------------

std::string spellings(const CLI::App& command) {
    std::vector<std::string> all;
    for (const CLI::Option* option : optionsOf(command, false))
        for (const std::string& name : spellingsOf(*option))
            all.push_back(name);
    return fmt::format("{}", fmt::join(all, " "));
}

/// One branch for each option that takes a value: its words, or file names, which bash adds itself.
void writeValues(OutputFile& script, const CLI::App& command) {
    for (const CLI::Option* option : optionsOf(command, false)) {
        if (!takesValue(*option)) continue;
        std::vector<std::string> patterns;
        for (const std::string& name : spellingsOf(*option))
            patterns.push_back("'" + command.get_name() + " " + name + "'");
        script.print("        {}) words='{}' ;;\n", fmt::join(patterns, " | "), choicesOf(*option));
    }
}

void writeBash(OutputFile& script, const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* command : commandsOf(program))
        names.push_back(command->get_name());
    script.print("# Completion of zant {} for bash.\n_zant() {{\n", ZANT_VERSION);
    script.print(
        "    local words= current=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}}\n"
        "    case \"$COMP_CWORD ${{COMP_WORDS[1]}}\" in\n"
        "        '1 '*) words='{} {}' ;;\n",
        fmt::join(names, " "), spellings(program));
    for (const CLI::App* command : commandsOf(program))
        script.print("        *' {}') [[ $current != -* ]] || words='{}' ;;\n", command->get_name(),
                     spellings(*command));
    script.write("    esac\n    [[ $COMP_CWORD = 1 ]] || case \"${COMP_WORDS[1]} $before\" in\n");
    for (const CLI::App* command : commandsOf(program))
        writeValues(script, *command);
    script.write(
        "    esac\n    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n}\n"
        "complete -o default -F _zant zant\n");
}

}  // namespace

void addDescribe(CLI::App& program, int&) {
    auto* command = program.add_subcommand("describe", "Write the manual page, or the completion of a shell");
    command->group("");  // for the build, which installs both
    auto what = std::make_shared<std::string>();
    command->add_option("WHAT", *what)->required()->check(CLI::IsMember({"manual", "bash"}));
    command->callback([what, &program] {
        OutputFile output;
        (*what == "bash" ? writeBash : writeManual)(output, program);
        output.finish();
    });
}

}  // namespace Zant::App
