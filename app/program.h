#ifndef ZANT_APP_PROGRAM_H
#define ZANT_APP_PROGRAM_H

#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <vector>

namespace Zant::App {

/// The exit codes of every subcommand. When several apply, the highest one holds.
enum ExitCode { Fine = 0, InputHasErrors = 1, WrongUsage = 2, EngineNotLoaded = 3, OutputNotWritten = 4 };

/// Ends the program as wrongly used when the output of a subcommand that only shows its inputs would replace one.
void refuseToReplace(const std::vector<std::string>& inputs, const std::string& output);

/// Each subcommand adds itself to the program; when it is the one called, it leaves its exit code in `exitCode`.
void addRun(CLI::App& program, int& exitCode);
void addProbe(CLI::App& program, int& exitCode);
void addCheck(CLI::App& program, int& exitCode);
void addConvert(CLI::App& program, int& exitCode);
void addForms(CLI::App& program, int& exitCode);
void addDecode(CLI::App& program, int& exitCode);
void addReport(CLI::App& program, int& exitCode);
void addRehearse(CLI::App& program, int& exitCode);
void addReference(CLI::App& program, int& exitCode);
void addDescribe(CLI::App& program, int& exitCode);

}  // namespace Zant::App

#endif
