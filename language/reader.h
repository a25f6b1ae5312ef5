#ifndef ZANT_LANGUAGE_READER_H
#define ZANT_LANGUAGE_READER_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "language/command.h"

namespace Zant::Language {

class Grammar;
class TextParser;

/// Why a command was not understood.
struct Diagnostic {
    Position position;
    std::string message;  ///< one line, complete with the suggestion: "unknown command 'lihgt', did you mean 'light'?"
    std::string suggestion;  ///< the nearest word, or the notation of the nearest form; may be empty

    /// @return "name:line:column: message" for text, "name: byte offset: message" for a binary block
    std::string describe(const char* inputName) const;
};

enum class ReadResult {
    Command,  ///< a command was read
    Error,    ///< a command was not understood: see diagnostic(). Reading can go on after it.
    End       ///< the input has ended
};

/// Where a TextReader gets its text from, piece by piece.
class TextSource {
public:
    virtual ~TextSource() = default;
    /// @return the number of bytes stored in `into`, at most `room`; 0 at the end of the text
    virtual size_t read(char* into, size_t room) = 0;
};

/// Reads from a file that the caller owns and has opened.
class FileSource : public TextSource {
public:
    explicit FileSource(std::FILE* openFile) : file_(openFile) {}
    size_t read(char* into, size_t room) override { return std::fread(into, 1, room, file_); }

private:
    std::FILE* file_;
};

/// Reads commands from text, plain or quick: a keyword may be a word or a number in brackets, in either.
///
/// Commands end with ";"; the last one may end with the text. White space, newlines included, is free between tokens.
/// The command word is followed by white space or ",", every later item by ",". An empty command (";" alone) is
/// skipped. A byte order mark at the start is skipped as well.
///
/// Items: numbers `-1.5e3`; texts in double quotes, a quote inside doubled; vectors `(1,2,3)` of one to four
/// components; axes `<>`, `<h,p,b>`, `<h,p,b>*(s)`, `*(sx,sy,sz)` (degrees), `axes((..),(..),(..))`; coordinate
/// systems `(x,y,z)@axes`; symbols as a bare name, or in quotes when the name is wholly a number or holds white space
/// or one of , ; { } ( ) "; lists `{a,b}`, one item without braces, nothing at all for the empty list.
///
/// After an error, reading continues after the next ";" outside of quotes; where a closing quote or a ";" seems to be
/// missing, on the next line. The input is read once; memory does not grow with it, only with its longest command.
/// Nothing outside of the input is ever read, whatever it holds.
class TextReader {
public:
    /// Reads a text in memory, which stays the caller's and must outlive the reader.
    explicit TextReader(std::string_view text);
    /// Reads from a source, through a window that grows when a single command does not fit.
    explicit TextReader(TextSource& source, size_t windowSize = 256 * 1024);
    /// The same, for another vocabulary.
    TextReader(std::string_view text, const Grammar& vocabulary);
    TextReader(TextSource& source, size_t windowSize, const Grammar& vocabulary);
    TextReader(const TextReader&) = delete;
    TextReader& operator=(const TextReader&) = delete;

    /// Reads the next command.
    /// @param command set when the result is ReadResult::Command; otherwise its content has no meaning
    ReadResult next(Command& command);

    /// @return the reason of the last ReadResult::Error
    const Diagnostic& diagnostic() const { return failure_; }

    /// @return the number of bytes after which reading goes on, for showing progress
    size_t consumed() const { return offset_; }

private:
    bool findEnd();
    bool refill();
    void closeRest();
    ReadResult readCommand(Command& command, const char* last);
    void explainMistake(const TextParser& parser);
    ReadResult failUnclosed();
    void fail(const char* at, const char* message);
    void goOnAt(const char* place);
    static const char* textOverLines(const char* from, const char* to);
    const char* behindLine(const char* from) const;
    bool isFirstOfLine(const char* at) const;
    Position positionOf(const char* at) const;
    void advance(const char* to);
    void skipSpace(const char* limit);

    const Grammar& grammar_;
    TextSource* input_ = nullptr;
    std::vector<char> window_;       // of a source, and of the last command of a text in memory
    const char* cursor_ = nullptr;   // reading goes on here
    const char* limit_ = nullptr;    // after what is there now
    const char* scanned_ = nullptr;  // the search for the end of the command goes on here
    const char* quote_ = nullptr;    // the quote that scanned stands after, if it stands inside of quotes
    bool ended_ = false;             // whether there is nothing after limit
    size_t offset_ = 0;              // of cursor in the input
    size_t line_ = 1;                // of cursor
    size_t lineStart_ = 0;           // offset of the first byte of that line
    size_t readAgain_ = 0;           // bytes that were read again after an error
    Diagnostic failure_;
};

/// Gives the names of registered symbols, which a binary block carries as a word of the engine's.
class SymbolResolver {
public:
    virtual ~SymbolResolver() = default;
    /// @return the name of the object with this registered word, or null when there is none
    virtual const char* nameOf(uint64_t registered) = 0;
};

/// Reads binary blocks, one command each.
///
/// Words are of 8 bytes, little-endian, at multiples of 8 from the start of the block, which itself may lie anywhere.
/// What stands where follows from the forms alone. A text of length 0 is a null or an empty text; only the fit of the
/// whole block tells them apart, and where both fit, it is the empty one. Padding is never looked at.
/// Nothing outside of the block is ever read, whatever it holds.
class BinaryReader {
public:
    /// @param resolver may be null: a registered symbol is an error then
    explicit BinaryReader(SymbolResolver* resolver = nullptr);
    BinaryReader(SymbolResolver* resolver, const Grammar& vocabulary);

    /// Reads one block. Its first word says how long it is.
    /// @param limit how many bytes may be read; a block that says more is an error
    /// @return ReadResult::End for a block without a command
    ReadResult read(const void* block, size_t limit, Command& command);
    /// The same, for a block whose length word can be trusted.
    ReadResult read(const void* block, Command& command) { return read(block, SIZE_MAX, command); }

    /// @return the reason of the last ReadResult::Error
    const Diagnostic& diagnostic() const { return failure_; }

    /// @return the length that the block states, or 0 when it cannot be one: below 16, not a multiple of 8, or more
    ///         than limit
    static size_t blockLength(const void* block, size_t limit = SIZE_MAX);

private:
    ReadResult failAt(size_t offset, const char* message);

    const Grammar& grammar_;
    SymbolResolver* symbols_;
    Diagnostic failure_;
};

}  // namespace Zant::Language

#endif
