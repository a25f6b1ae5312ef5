#ifndef ZANT_APP_COMMANDFILE_H
#define ZANT_APP_COMMANDFILE_H

#include <memory>
#include <string>

#include "app/inputfile.h"
#include "language/reader.h"

namespace Zant::App {

/// The commands of one file, in whichever encoding it is: plain text, quick text, or binary blocks one after another.
/// Memory does not grow with the file.
class CommandFile {
public:
    /// Opens the file ("-" is standard input). Throws InputError, as does reading.
    explicit CommandFile(const std::string& fileName);

    /// Reads the next command; after an error, reading goes on after it where that is possible.
    ReadResult next(Command& command);

    /// The reason of the last error, and the same on one line, with the file's name and the position.
    const Diagnostic& diagnostic() const { return failure_; }
    std::string describeError() const { return failure_.describe(fileName().c_str()); }
    /// A mistake in the last command that the caller has found, with its place in the file.
    Diagnostic inFile(Diagnostic mistake) const;
    /// Where the last command stands: "line 12", or "byte 64" of a file of blocks.
    std::string whereIs(const Command& command) const;
    const std::string& fileName() const { return input_.name(); }

private:
    ReadResult nextBlock(Command& command);

    InputFile input_;
    std::unique_ptr<TextReader> text_;
    BlockFile blockFile_;
    BinaryReader blocks_;
    bool ended_ = false;
    Diagnostic failure_;
};

}  // namespace Zant::App

#endif
