// zant check: says file, line and column of every command that the vocabulary does not have.

#include <fmt/core.h>

#include <filesystem>
#include <set>
#include <utility>

#include "app/commandfile.h"
#include "app/findings.h"
#include "app/program.h"
#include "app/text.h"
#include "language/symbols.h"

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

/// Files that include each other deeper than this are refused by the engine.
constexpr size_t deepest = 16;

/// A file is looked for beside the file that includes it, then where it says.
fs::path locate(const std::string& name, const std::string& includer) try {
    const fs::path beside = fs::u8path(includer).parent_path() / fs::u8path(name);
    std::error_code ignored;
    return fs::is_regular_file(beside, ignored) ? beside : fs::u8path(name);
} catch (const fs::filesystem_error&) {
    return {};  // a text that cannot be the name of a file
}

/// Checks files, and when asked those that they include, then each file once.
class Checker {
public:
    explicit Checker(const CheckOptions& chosen) : options_(chosen) {}

    bool checkAll() {
        for (const std::string& name : options_.files)
            checkFile(name);
        return fine_;
    }

private:
    void checkFile(const std::string& name) {
        std::error_code ignored;
        const fs::path itself = fs::canonical(fs::u8path(name), ignored);
        if (options_.includes && !itself.empty() && !seen_.insert(itself).second) return;
        const size_t outer = std::exchange(mistakes_, 0);
        open_.insert(itself);
        try {
            CommandFile file(name);
            checkCommands(file);
        } catch (const InputError& error) {
            fine_ = false;
            options_.json ? tell(findingAsJson(name, error.what())) : complain(error.what());
        }
        open_.erase(itself);
        mistakes_ = outer;
    }

    void checkCommands(CommandFile& file) {
        Command command;
        size_t commands = 0;
        for (ReadResult result; (result = file.next(command)) != ReadResult::End;) {
            ++commands;
            if (result == ReadResult::Error)
                tell(file.fileName(), file.diagnostic());
            else
                checkCommand(file, command);
        }
        if (!options_.json)
            tell(fmt::format("{}: {}, {}", file.fileName(), counted(commands, "command"),
                             counted(mistakes_, "mistake")));
    }

    void checkCommand(const CommandFile& file, const Command& command) {
        if (options_.symbols) checkSymbols(file, command);
        if (options_.includes && std::string_view(command.word()) == "include") follow(command, file.fileName());
    }

    void checkSymbols(const CommandFile& file, const Command& command) {
        for (const SymbolTable::Finding& finding : symbols_.check(command))
            tell(file.fileName(), file.inFile(finding.in(command)));
        symbols_.follow(command, file.fileName() + ", " + file.whereIs(command));
    }

    void follow(const Command& command, const std::string& includer) {
        const std::string name = command.text(command.values()[0]);
        const fs::path path = locate(name, includer);
        std::error_code failure;
        const fs::path file = fs::canonical(path, failure);
        // Devices and pipes may have no end; the engine does not read them either.
        if (failure || !fs::is_regular_file(file, failure))
            return tell(includer, {command.position, "cannot read the file '" + name + "'", ""});
        if (open_.count(file)) return tell(includer, {command.position, "the file '" + name + "' includes itself", ""});
        if (open_.size() > deepest) return tell(includer, {command.position, "files are included too deeply", ""});
        checkFile(path.generic_u8string());
    }

    void tell(const std::string& file, const Diagnostic& diagnostic) {
        fine_ = false;
        ++mistakes_;
        tell(options_.json ? findingAsJson(file, diagnostic) : diagnostic.describe(file.c_str()));
    }
    static void tell(const std::string& line) { fmt::print("{}\n", shown(line)); }

    const CheckOptions& options_;
    bool fine_ = true;
    size_t mistakes_ = 0;      // of the file that is being checked
    std::set<fs::path> open_;  // files that are being checked, one inside the other
    std::set<fs::path> seen_;  // files that have been checked
    SymbolTable symbols_;      // of all files: they are meant to run one after the other
};

}  // namespace

int check(const CheckOptions& options) {
    return Checker(options).checkAll() ? Fine : InputHasErrors;
}

}  // namespace Zant::App
