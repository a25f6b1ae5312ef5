#ifndef ZANT_APP_INPUTFILE_H
#define ZANT_APP_INPUTFILE_H

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/filepointer.h"
#include "app/progress.h"
#include "language/reader.h"

namespace Zant::App {

using namespace Language;

/// An input could not be read. The message names it and says why.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The bytes of one file, pipe or device, read once from front to back. Shows a progress bar on a terminal.
class InputFile : public TextSource {
public:
    enum class Encoding {
        Text,    ///< plain or quick text
        Blocks,  ///< binary blocks one after another
        Wide     ///< text in UTF-16 or UTF-32, which no engine reads
    };

    /// Opens the file ("-" is standard input). Throws InputError.
    explicit InputFile(const std::string& fileName);
    ~InputFile() override;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const std::string& name() const { return shownName_; }
    Encoding encoding() const { return found_; }
    /// What is wrong with wide text, at its first byte.
    Diagnostic wideText() const;

    /// Throws InputError.
    size_t read(char* into, size_t room) override;

private:
    std::string shownName_;
    FilePointer file_;
    std::string head_;  // read to tell the encoding, not yet given on
    Encoding found_;
    const char* wideName_;
    Progress progress_;
};

/// Finds the blocks in a file of them.
class BlockFile {
public:
    explicit BlockFile(InputFile& openInput) : input_(openInput) {}

    /// Reads the next block. One without an end is an error, reading goes on after it; after a block of unknown
    /// length nothing can be found again, and the file ends there.
    /// @return ReadResult::Command when block() is a whole block
    ReadResult next();

    const std::vector<char>& block() const { return bytes_; }
    /// The offset of the block in the file.
    size_t start() const { return blockStart_; }
    const Diagnostic& diagnostic() const { return failure_; }

private:
    ReadResult fail(const char* message);

    InputFile& input_;
    std::vector<char> bytes_;
    size_t blockStart_ = 0;
    size_t blockEnd_ = 0;
    bool ended_ = false;
    Diagnostic failure_;
};

/// What became of several files: the worst counts.
enum class Outcome { Fine, HasMistakes, Unreadable };

/// Reads files one after the other. One that cannot be read is told, and the others are read all the same.
/// @param read answers whether the file was free of mistakes; may throw InputError
Outcome readAll(const std::vector<std::string>& names, const std::function<bool(const std::string&)>& read);

}  // namespace Zant::App

#endif
