#ifndef ZANT_LANGUAGE_WRITER_H
#define ZANT_LANGUAGE_WRITER_H

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "client/commands/commandbuffer.h"
#include "client/symbols/symbol.h"
#include "language/command.h"

namespace Zant::Language {

/// Writes a command that was read into any command buffer, call by call as a typed command function would.
///
/// Symbols are sent by name. Keeps its memory: use one for many commands. Sends nothing of its own, in particular no
/// deletion of the symbols that it names.
class CommandReplay {
public:
    CommandReplay();
    ~CommandReplay();

    /// Writes the command and calls parse() of the buffer.
    void send(const Command& command, CommandBuffer& buffer);
    /// Writes the command without parse().
    void write(const Command& command, CommandBuffer& buffer);

private:
    const Symbol& symbolNamed(const char* name, size_t slot);
    void writeValue(const Command& command, const Value& value, CommandBuffer& buffer);
    void writeList(const Command& command, const Value& value, CommandBuffer& buffer);

    std::unique_ptr<CommandBuffer> nowhere_;  // what the symbols below send goes there
    std::deque<Symbol> symbols_;
    std::vector<const Symbol*> symbolList_;
};

/// Writes commands as text that can be read again: plain text with words, or quick text with numbers.
///
/// The notation is that of the client's own text buffers, but for names of symbols that need quotes and get them.
/// Plain text with exact numbers is the canonical text of a command.
class TextWriter {
public:
    enum class Form { Plain, Quick };
    enum class Numbers {
        Exact,    ///< the shortest text that is read as the same number
        AsClient  ///< as the client's buffers write them, at most eight decimals and the rest cut off, until they stay
    };

    explicit TextWriter(Form form = Form::Plain, Numbers numbers = Numbers::Exact);

    /// @return the command with its ";", valid until the next call; it belongs to the writer
    const char* write(const Command& command);

    /// @return how many numbers of the last command text cannot hold, exact as it may be: what is not finite is written
    ///         as 0, and an angle that no degrees are read as is written as the nearest one
    size_t changedNumbers() const { return changed_; }

private:
    void writeKeyword(int number, const char* word);
    void writeValue(const Command& command, const Value& value);
    void writeItem(const Command& command, const Value& value, size_t item);
    void writeQuoted(const char* string);
    void writeNumber(double number);
    void writeAsClient(double number, bool isAngle);
    void writeNumbers(const double* numbers, int count);
    void writeAngle(double radians);
    void writeAngles(const double* radians, const double* scales);
    void writeAxes(const ZantAxesCore& axes);

    Form form_;
    Numbers numbers_;
    std::string text_;
    size_t changed_ = 0;
};

/// Writes commands as binary blocks, symbols by name.
class BinaryWriter {
public:
    BinaryWriter();
    ~BinaryWriter();

    /// @return the block, valid until the next call; it belongs to the writer. Padding is zero.
    const void* write(const Command& command);

    /// @return the length of the block that was written last, in bytes
    size_t size() const;

private:
    class Buffer;
    std::unique_ptr<Buffer> buffer_;
    CommandReplay replay_;
};

/// @return whether a symbol's name can stand bare in text
bool isBareName(const char* name);

}  // namespace Zant::Language

#endif
