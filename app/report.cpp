// zant report: one file to paste into a report, with versions, the probe's findings and the last commands.

#include <fmt/core.h>
#include <sys/utsname.h>

#include <algorithm>
#include <deque>
#include <fstream>
#include <stdexcept>

#include "app/commandfile.h"
#include "app/probe.h"
#include "app/program.h"
#include "app/session.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

constexpr size_t lastCommands = 20;

struct Options {
    std::string engine;
    std::string output;
    std::vector<std::string> files;
};

/// The last part of a path, which may end with its separator; other words as they are.
std::string lastPart(const std::string& word) {
    const size_t separator = word.find_last_of('/', word.size() - 2);
    return separator == std::string::npos ? word : "..." + word.substr(separator);
}

/// A path says who and where somebody is: only its last part goes into a report.
std::string withoutPaths(const std::string& text) {
    constexpr const char* between = " \t\n:;\"'(),";
    std::string result;
    for (size_t from = 0; from < text.size();) {
        const size_t end = std::min(text.find_first_of(between, from), text.size());
        result += lastPart(text.substr(from, end - from)) + text.substr(end, 1);
        from = end + 1;
    }
    return result;
}

std::string versions() {
    utsname system{};
    uname(&system);
    return fmt::format("zant         {}\nsystem       {} {} {}\n", ZANT_VERSION, system.sysname, system.release,
                       system.machine);
}

/// The last commands of a file, mistakes included, as they were understood.
std::string lastOf(const std::string& name) {
    CommandFile file(name);
    Command command;
    TextWriter writer;
    std::deque<std::string> last;
    size_t count = 0;
    for (ReadResult result; (result = file.next(command)) != ReadResult::End; ++count) {
        last.push_back(result == ReadResult::Command ? writer.write(command) : "# " + file.describeError());
        if (last.size() > lastCommands) last.pop_front();
    }
    std::string text = fmt::format("\n-- the last {} of {} commands of {}\n", last.size(), count, name);
    for (const std::string& line : last)
        text += line + "\n";
    return text;
}

int report(const Options& options) {
    const ProbeFinding finding = probeEngine(options.engine.empty() ? loopbackDirectory() : options.engine);
    std::string text = versions() + "\n-- engine\n" + finding.text;
    for (const std::string& name : options.files)
        text += lastOf(name);
    text = withoutPaths(text);
    if (options.output.empty()) {
        fmt::print("{}", text);
        return Fine;
    }
    std::ofstream file(options.output, std::ios::binary);
    if (!(file << text).flush()) throw std::runtime_error(options.output + ": cannot be written");
    return Fine;
}

}  // namespace

void addReport(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("report", "Write what a report needs: versions, probe, the last commands");
    auto options = std::make_shared<Options>();
    command->add_option("--engine", options->engine, "Directory of the engine file (default: the loopback engine)");
    command->add_option("-o,--output", options->output, "File to write (default: standard output)");
    command->add_option("FILE", options->files, "Command files or transcripts whose last commands are shown");
    command->callback([options, &exitCode] { exitCode = report(*options); });
}

}  // namespace Zant::App
