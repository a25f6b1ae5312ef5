// zant report: one file to paste into a report, with versions, the probe's findings and the last commands.

#include <fmt/core.h>

#include <deque>

#include "app/commandfile.h"
#include "app/outputfile.h"
#include "app/pathless.h"
#include "app/probe.h"
#include "app/program.h"
#include "app/session.h"
#include "app/text.h"
#include "language/writer.h"
#include "own/streams.h"
#include "own/version.h"

namespace Zant::App {
namespace {

constexpr size_t lastCommands = 20;

std::string versions() {
    return fmt::format("zant         {}\nsystem       {}\n", ZANT_VERSION, Platform::systemName());
}

/// Adds the last commands of a file, mistakes included, as they were understood.
/// @return whether there was no mistake
bool addLastOf(const std::string& name, std::string& report) {
    CommandFile file(name);
    Command command;
    TextWriter writer;
    std::deque<std::string> last;
    size_t count = 0, mistakes = 0;
    for (ReadResult result; (result = file.next(command)) != ReadResult::End; ++count) {
        mistakes += result == ReadResult::Error;
        last.push_back(result == ReadResult::Command ? writer.write(command) : "# " + file.describeError());
        if (last.size() > lastCommands) last.pop_front();
    }
    report += fmt::format("\n-- the last {} of {} of {}\n", last.size(), counted(count, "command"), name);
    for (const std::string& line : last)
        report += line + "\n";
    return mistakes == 0;
}

}  // namespace

int report(const ReportOptions& options) {
    refuseToReplace(options.files, options.output);
    const std::string directory = engineDirectory(options.engine);
    const ProbeFinding finding = probeEngine(directory);
    std::string text = versions() + "\n-- engine\n" + finding.text;
    const Outcome outcome = readAll(options.files, [&](const std::string& name) { return addLastOf(name, text); });
    std::vector<std::string> paths = options.files;
    paths.push_back(directory);
    OutputFile out(options.output);
    out.write(shown(withoutPaths(text, paths), "\n\t"));
    outcome == Outcome::Unreadable ? out.giveUp() : out.finish();
    return !finding.loads ? EngineNotLoaded : outcome == Outcome::Fine ? Fine : InputHasErrors;
}

}  // namespace Zant::App
