#ifndef ZANT_APP_COMMANDFILE_H
#define ZANT_APP_COMMANDFILE_H

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "app/progress.h"
#include "language/reader.h"

namespace Zant::App {

/// The commands of one file, in whichever encoding it is: plain text, quick text, or binary blocks one behind another.
///
/// Text cannot hold a zero byte and the length in front of a block always does: that tells the two apart. Memory does
/// not grow with the file. Shows a progress bar on a terminal.
class CommandFile : private TextSource {
public:
    /// Opens the file ("-" is standard input). Throws std::runtime_error when it cannot be read.
    explicit CommandFile(const std::string& fileName);
    ~CommandFile() override;
    CommandFile(const CommandFile&) = delete;
    CommandFile& operator=(const CommandFile&) = delete;

    /// Reads the next command; after an error, reading goes on behind it where that is possible.
    ReadResult next(Command& command);

    /// The reason of the last error, on one line, with the file's name and the position.
    std::string describeError() const { return failure.describe(name.c_str()); }
    /// Where the last command stands: "line 12", or "byte 64" of a file of blocks.
    std::string whereIs(const Command& command) const;
    const std::string& fileName() const { return name; }

private:
    size_t read(char* into, size_t room) override;
    ReadResult nextBlock(Command& command);
    ReadResult fail(const char* message);

    std::string name;
    std::FILE* file;
    std::string head;  // read to tell the encoding, not yet given on
    bool binary = false;
    size_t blockStart = 0;
    size_t blockEnd = 0;
    std::vector<char> block;
    std::unique_ptr<TextReader> text;
    BinaryReader blocks;
    Diagnostic failure;
    Progress progress;
};

}  // namespace Zant::App

#endif
