#ifndef ZANT_CLIENT_ENCODING_COMMANDTEXTBUFFER_H
#define ZANT_CLIENT_ENCODING_COMMANDTEXTBUFFER_H

#include "client/commands/commandbuffer.h"
#include "client/engine/tables.h"
#include "own/textbuffer.h"

namespace Zant {

/// Writes each command as one line of the command language: `fg gradients,0.5,2;`
///
/// Keywords are separated by a space from what follows the first one, everything else by commas. Numbers have at most
/// eight decimals, angles are in degrees, strings stand in double quotes with inner ones doubled. A list of two items
/// or more stands in braces, a list of one is the bare item, an empty list is nothing.
///
/// While there is an error, parse() sends nothing and the text stays: once the error is cleared, the next parse()
/// sends everything that was held back as one text. A command abandoned without parse() stays in front of the next,
/// unless discard() drops it. While a text is being read, an event may send another command through the same buffer:
/// that one has a block of its own.
///
/// A vector with a count above 4 is written with 4 components, axes with more than 3 rows with 3.
///
/// Threads: one at a time. That holds for the subclasses as well; parseOffline() is called on the writing thread.
class CommandTextBuffer : public CommandBuffer {
    TextBuffer text_;

public:
    bool quick = false;  ///< keywords as numbers in brackets instead of words

    explicit CommandTextBuffer(Instance* owner);
    ~CommandTextBuffer() override;

    /// Sends the text. While there is an error, and without an instance, it stays.
    void parse() override;
    void generateAutoname(Symbol& symbol, char* name) override;
    void addEnum(int number, const char* word) override;
    void addDouble(double value) override;
    using CommandBuffer::addString;
    void addString(const char* string) override;
    void addVector(const Vector& vector) override;
    void addAxes(const Axes& axes) override;
    void addCoordSys(const CoordSys& coordSys) override;
    void addSymbol(const Symbol& symbol) override;
    void addVarLenDouble(const VarLenDouble& list) override;
    void addVarLenVector(const VarLenVector& list) override;
    void addVarLenAxes(const VarLenAxes& list) override;
    void addVarLenCoordSys(const VarLenCoordSys& list) override;
    void addVarLenSymbol(const VarLenSymbol& list) override;

    /// A keyword as its number in brackets.
    ZANT_NOINLINE void addEnumQuick(int number);  // inlined, it would cost every word a stack frame

    /// The notation of an orientation alone, without separators around it.
    void addAxesCore(const ZantAxesCore& axes);

    /// One list argument, each item through the virtual operation of its type.
    template <class T>
    void addVarLen(const VarLenTemplate<T>& list);

    /// Sets the separator that stands after a keyword.
    void setCommandSeparator();
    /// Sets the separator that stands after an argument.
    void setArgumentSeparator();

    /// Finishes the command without sending it.
    /// @return the text, valid until the next item is written
    const char* getTerminatedBuffer();

    /// Drops what has not been sent: a command without parse(), and what an error has held back. The error stays.
    void discard();

protected:
    CommandTextBuffer(Instance* owner, bool numbers);

    /// Sends the text, unless there is an error.
    void send(const char* source, ParseMode mode);

private:
    friend class CommandOfflineBuffer;

    /// Makes room for the pending separator and one item, and writes the separator.
    /// @return where the item starts
    char* begin(size_t room) {
        text_.fit(text_.dataSize + room + 1);
        char* const out = text_.buffer + text_.dataSize;
        if (!text_.separator) return out;
        *out = *text_.separator;  // every separator of the language is one character
        return out + 1;
    }

    /// Ends the item, and sets the separator for the next one.
    void end(const char* position, const char* separator) {
        text_.dataSize = static_cast<size_t>(position - text_.buffer);
        text_.separator = separator;
    }

    int deliver(const char* source, ParseMode mode);

    void addItem(const Double& item) { addDouble(item.value); }
    void addItem(const Vector& item) { addVector(item); }
    void addItem(const AxesHpb& item) { addAxes(item); }
    void addItem(const CoordSys& item) { addCoordSys(item); }
    void addItem(const Symbol* item) { addSymbol(*item); }
};

template <class T>
void CommandTextBuffer::addVarLen(const VarLenTemplate<T>& list) {
    // An allocation that fails takes the list back.
    struct Rollback {
        TextBuffer* text;
        const size_t size;
        const char* const separator;
        ~Rollback() {
            if (!text) return;
            text->dataSize = size;
            text->separator = separator;
        }
    } rollback{&text_, text_.dataSize, text_.separator};
    const bool braces = list.count >= 2;
    char* out = begin(1);
    if (braces) *out++ = '{';
    end(out, nullptr);
    for (size_t i = 0; i < list.count; ++i) {
        addItem(list.items[i]);
    }
    text_.separator = nullptr;
    out = begin(1);
    if (braces) *out++ = '}';
    end(out, ",");
    rollback.text = nullptr;
}

/// The same with keywords as numbers, for the parser's quick mode: `[46],[6],0.5,2;`
class CommandQuickTextBuffer : public CommandTextBuffer {
public:
    explicit CommandQuickTextBuffer(Instance* owner);
    ~CommandQuickTextBuffer() override;
    void parse() override;
    void addEnum(int number, const char* word) override;
};

/// Hands each finished command to the host instead of an engine.
class CommandOfflineBuffer : public CommandTextBuffer {
public:
    /// @param owner passed on to symbols, which are linked through it; the text never goes there
    explicit CommandOfflineBuffer(Instance* owner = nullptr);
    ~CommandOfflineBuffer() override;

    /// Finishes the command and passes it to parseOffline(), whatever errorCode is.
    void parse() override;

    /// Receives one finished command, its semicolon included.
    /// @param command valid during the call only
    virtual void parseOffline(const char* command) = 0;
};

}  // namespace Zant

#endif
