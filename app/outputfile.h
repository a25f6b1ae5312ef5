#ifndef ZANT_APP_OUTPUTFILE_H
#define ZANT_APP_OUTPUTFILE_H

#include <fmt/core.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/filepointer.h"
#include "own/replacement.h"

namespace Zant::App {

/// The output could not be written. The message names it and says why.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a subcommand writes to a file, or to standard output.
///
/// A regular or new file changes all at once: it is written beside its place under another name, through links, and
/// takes the place, with the old file's mode, in finish(). Until then, and for good when finish() is not reached,
/// the old file is as it was, so that it may also be the input; nothing is left beside it, by a signal either. Devices,
/// pipes and terminals are written directly; what a terminal is given is escaped.
/// Threads: one file at a time in a process.
class OutputFile {
public:
    /// @param fileName empty or "-": standard output. Throws OutputError when it cannot be opened.
    explicit OutputFile(const std::string& fileName = {});
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws OutputError, as every operation that writes.
    void write(std::string_view bytes);
    template <class... Arguments>
    void print(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        write(fmt::format(format, std::forward<Arguments>(arguments)...));
    }

    /// Brings what was written to its place. Nothing is written after it.
    void finish();
    /// Drops what was written, since it is not complete. Says so where an old or a new file was to be written as a
    /// whole.
    void giveUp();

private:
    [[noreturn]] void fail();

    std::string name_;
    Platform::Replacement replacement_;  // begun unless the file is written directly
    FilePointer file_;                   // closed before that lets its file go
    bool terminal_ = false;
};

/// @return whether a name leads to one of the files, as far as they are regular ones
bool isOneOf(const std::string& name, const std::vector<std::string>& files);

/// Ends standard output at the end of the program.
/// @return whether all that was ever written there has arrived; if not, the reason has been told
bool finishStandardOutput();

}  // namespace Zant::App

#endif
