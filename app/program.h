#ifndef ZANT_APP_PROGRAM_H
#define ZANT_APP_PROGRAM_H

#include <stdexcept>
#include <string>
#include <vector>

#include "app/childprocess.h"

namespace Zant::App {

/// The exit codes of every subcommand. When several apply, the highest one holds.
enum ExitCode { Fine = 0, InputHasErrors = 1, WrongUsage = 2, EngineNotLoaded = 3, OutputNotWritten = 4 };

/// What is asked for cannot be meant.
struct UsageError : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Throws UsageError when the output of a subcommand that only shows its inputs would replace one of them.
void refuseToReplace(const std::vector<std::string>& inputs, const std::string& output);

// ---- The subcommands: what each one is asked for, and what it does. The answers are exit codes.
// -----------------------

struct RunOptions {
    std::string engine;   ///< "loopback", "preview" or the directory of its file; the same in the other subcommands
    std::string picture;  ///< empty for none
    std::vector<std::string> files;
    std::vector<std::string> values;
};
int run(const RunOptions& options);

struct CheckOptions {
    bool json = false;
    bool includes = false;
    bool symbols = false;
    std::vector<std::string> files;
};
int check(const CheckOptions& options);

struct ConvertOptions {
    std::string encoding;  ///< "text", "quick" or "binary"
    std::string output;    ///< empty for standard output; the same in the other subcommands
    std::vector<std::string> files;
};
int convert(const ConvertOptions& options);

struct FormsOptions {
    bool json = false;
    std::vector<std::string> words;
};
int forms(const FormsOptions& options);

struct DecodeOptions {
    std::string output;
    std::vector<std::string> files;
};
int decode(const DecodeOptions& options);

struct ProbeOptions {
    std::string directory;
    int timeLimit = 10;  ///< seconds
};
int probe(const ProbeOptions& options);
extern const ChildTask probing;  ///< what its child does

struct ReportOptions {
    std::string engine;
    std::string output;
    std::vector<std::string> files;
};
int report(const ReportOptions& options);

/// A function that hosts call in a plug-in.
struct Hook {
    std::string name;
    bool named = false;  ///< by the user, and so it must exist
};

struct RehearseOptions {
    std::string plugin;
    std::string engine;
    Hook start{"zantPluginStart"}, work{"zantPluginWork"}, stop{"zantPluginStop"};
    int timeLimit = 30;  ///< seconds
};
int rehearse(const RehearseOptions& options);
extern const ChildTask rehearsing;

struct ReferenceOptions {
    std::string directory;
    std::string header;  ///< empty for none
};
int reference(const ReferenceOptions& options);

}  // namespace Zant::App

#endif
