// zant check: says file, line and column of every command that the vocabulary does not have.

#include <fmt/core.h>

#include "app/commandfile.h"
#include "app/program.h"
#include "app/text.h"

namespace Zant::App {
namespace {

bool checkFile(const std::string& name) {
    CommandFile file(name);
    Command command;
    size_t commands = 0;
    size_t mistakes = 0;
    for (ReadResult result; (result = file.next(command)) != ReadResult::End;) {
        ++commands;
        if (result == ReadResult::Command) continue;
        ++mistakes;
        fmt::print("{}\n", shown(file.describeError()));
    }
    fmt::print("{}: {}, {}\n", shown(file.fileName()), counted(commands, "command"), counted(mistakes, "mistake"));
    return mistakes == 0;
}

int check(const std::vector<std::string>& files) {
    return readAll(files, checkFile) == Outcome::Fine ? Fine : InputHasErrors;
}

}  // namespace

void addCheck(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("check", "Name every command that the vocabulary does not have");
    auto files = std::make_shared<std::vector<std::string>>();
    command->add_option("FILE", *files, "Command files in any encoding; - is standard input")->required();
    command->callback([files, &exitCode] { exitCode = check(*files); });
}

}  // namespace Zant::App
