#ifndef ZANT_APP_PROGRAM_H
#define ZANT_APP_PROGRAM_H

#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>

namespace Zant::App {

/// The exit codes of the program.
enum ExitCode { Fine = 0, InputHasErrors = 1, WrongUsage = 2, EngineNotLoaded = 3 };

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

}  // namespace Zant::App

#endif
