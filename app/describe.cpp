// zant describe: the manual page and the shell's completion, made from the options that the program declares.

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <sstream>

#include "app/commandline.h"
#include "app/outputfile.h"
#include "own/version.h"

namespace Zant::App {
namespace {

constexpr const char* conventions =
    "Command files are read in any encoding: plain text, quick text, or binary blocks one after another.\n"
    "\\fB\\-\\fR is standard input.\n"
    "What \\fB\\-o\\fR names is written beside its place and takes the place at the end, so that it may be the input "
    "as\n"
    "well; after a failure the old file is as it was.\n";

// ---- The manual page ----

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

std::string placeholder(const OptionHelp& option) {
    if (option.value.empty()) return {};
    if (option.choices.empty()) return " \\fI" + roff(option.value) + "\\fR";
    return " " + bold(fmt::format("{}", fmt::join(option.choices, " ")));
}

void writeOption(OutputFile& page, const OptionHelp& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.spellings)
        names.push_back(bold(name));
    page.print(".TP\n{}{}\n{}{}\n", fmt::join(names, ", "), placeholder(option), roff(option.description),
               option.fallback.empty() ? "" : " (default: " + roff(option.fallback) + ")");
}

void writeCommand(OutputFile& page, const CommandHelp& command) {
    page.print(".SS zant {}{}", roff(command.name), command.options.empty() ? "" : " [OPTIONS]");
    for (const OptionHelp& argument : command.arguments)
        page.print(" {}{}", argument.spellings.front(), argument.repeated ? "..." : "");
    page.print("\n{}.\n", roff(command.description));
    for (const OptionHelp& argument : command.arguments)
        page.print(".TP\n\\fI{}\\fR\n{}\n", argument.spellings.front(), roff(argument.description));
    for (const OptionHelp& option : command.options)
        writeOption(page, option);
}

/// The lines "  0  fine" that stand under every help text.
void writeExitCodes(OutputFile& page, const std::string& exitCodes) {
    page.write(".SH EXIT STATUS\nThe same for every subcommand. When several apply, the highest one holds.\n");
    std::istringstream lines(exitCodes);
    for (std::string line, code, meaning; std::getline(lines, line);) {
        std::istringstream words(line);
        if (line.rfind("  ", 0) == 0 && words >> code && std::getline(words >> std::ws, meaning))
            page.print(".TP\n{}\n{}\n", bold(code), roff(meaning));
    }
}

void writeManual(OutputFile& page, const ProgramHelp& program) {
    page.print(".TH ZANT 1 \"\" \"Zant {}\" \"Zant\"\n", ZANT_VERSION);
    page.write(".SH NAME\nzant \\- drive a rendering engine with command files, check and convert them\n");
    page.write(".SH SYNOPSIS\n.B zant\n\\fISUBCOMMAND\\fR [\\fIOPTIONS\\fR] [\\fIFILE\\fR...]\n.SH DESCRIPTION\n");
    page.write(conventions);
    page.write(".SH OPTIONS\n");
    for (const OptionHelp& option : program.options)
        writeOption(page, option);
    page.write(".SH SUBCOMMANDS\n");
    for (const CommandHelp& command : program.commands)
        writeCommand(page, command);
    writeExitCodes(page, program.exitCodes);
}

// ---- bash ----

std::string spellings(const std::vector<OptionHelp>& options) {
    std::string all;
    for (const OptionHelp& option : options)
        for (const std::string& name : option.spellings)
            all += (all.empty() ? "" : " ") + name;
    return all;
}

/// One branch for each option that takes a value: its words, or file names, which bash adds itself.
void writeValues(OutputFile& script, const CommandHelp& command) {
    for (const OptionHelp& option : command.options) {
        if (option.value.empty()) continue;
        std::vector<std::string> patterns;
        for (const std::string& name : option.spellings)
            patterns.push_back("'" + command.name + " " + name + "'");
        script.print("        {}) words='{}' ;;\n", fmt::join(patterns, " | "), fmt::join(option.choices, " "));
    }
}

void writeBash(OutputFile& script, const ProgramHelp& program) {
    std::vector<std::string> names;
    for (const CommandHelp& command : program.commands)
        names.push_back(command.name);
    script.print("# Completion of zant {} for bash.\n_zant() {{\n", ZANT_VERSION);
    script.print(
        "    local words= current=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}}\n"
        "    case \"$COMP_CWORD ${{COMP_WORDS[1]}}\" in\n"
        "        '1 '*) words='{} {}' ;;\n",
        fmt::join(names, " "), spellings(program.options));
    for (const CommandHelp& command : program.commands)
        script.print("        *' {}') [[ $current != -* ]] || words='{}' ;;\n", command.name,
                     spellings(command.options));
    script.write("    esac\n    [[ $COMP_CWORD = 1 ]] || case \"${COMP_WORDS[1]} $before\" in\n");
    for (const CommandHelp& command : program.commands)
        writeValues(script, command);
    script.write(
        "    esac\n    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n}\n"
        "complete -o default -F _zant zant\n");
}

}  // namespace

void describe(const std::string& what, const ProgramHelp& program) {
    OutputFile output;
    (what == "bash" ? writeBash : writeManual)(output, program);
    output.finish();
}

}  // namespace Zant::App
