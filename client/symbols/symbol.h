#ifndef ZANT_CLIENT_SYMBOLS_SYMBOL_H
#define ZANT_CLIENT_SYMBOLS_SYMBOL_H

#include <cstddef>
#include <cstdint>

#include "client/records/zant_records.h"
#include "own/resizablebuffer.h"

namespace Zant {
class CommandBuffer;
}

/// What a symbol knows about its object.
struct ZantSymbolCore {
    char name[128];               ///< terminated, at most 127 bytes
    Zant::CommandBuffer* buffer;  ///< the way of the symbol's commands; never null, outlives the symbol
    uint64_t handle;              ///< the engine's handle of the object; 0 while the symbol is not linked
    uint64_t registered;          ///< written by the engine at registration; non-zero when it knows the object
};
static_assert(offsetof(ZantSymbolCore, buffer) == 128 && offsetof(ZantSymbolCore, handle) == 136 &&
                  offsetof(ZantSymbolCore, registered) == 144,
              "the stride and the fields of symbols in lists");

namespace Zant {

/// Storage for text that the engine delivers; it is reused and only ever grows.
struct DynamicBuffer {
    ResizableBuffer buffer;
};

/// The client's handle of a named object of the engine: a surface, a light, a variable, a bitmap.
///
/// A symbol starts named and unlinked. The command that defines the object is sent by a typed command function or by
/// the kind's own registerSymbol(); registering then asks the engine for the object's handle, with which values are
/// read and written directly. The destructor sends the command that deletes the object.
///
/// With a buffer that has no instance nothing is linked: direct reads fail, direct writes answer 0.
///
/// Threads: as its command buffer, one at a time. That holds for every kind of symbol.
class Symbol : public ZantSymbolCore {
public:
    /// Called at the end of every registration. Does nothing.
    virtual void updateSymbol();

    /// Runs freeSymbol(); lets no exception out.
    virtual ~Symbol();

    /// Names the symbol and sends nothing.
    /// @param symbolName copied, cut at 127 bytes; null for a name that the buffer generates
    explicit Symbol(CommandBuffer& commands, const char* symbolName = nullptr);
    Symbol(const Symbol&) = delete;
    Symbol& operator=(const Symbol&) = delete;

    /// Starts again with another buffer and name, unlinked. Sends nothing, and deletes nothing.
    void initSymbol(CommandBuffer& commands, const char* symbolName);

    /// Copies a new name, cut at 127 bytes.
    void setName(const char* symbolName);

    /// Replaces the name by one that the buffer generates.
    void generateAutoname();

    /// Links the symbol to the object that a command has defined under its name.
    void registerSymbol();

    /// Links the symbol to an object of the given kind: sets handle, 0 when there is none or no instance.
    /// @param argument passed on to the engine; may be null
    void registerSymbol(_ZantHandleType type, const char* argument);

    /// @return whether the engine knows the object; always true when the buffer has no instance
    bool isRegistered() const;

    /// Asks the engine for the object's text.
    /// @return the text, in the storage of out, or null when there is none
    const char* toString(DynamicBuffer& out);

    /// Reads the object's value into the record; the engine leaves there the code of what it delivered.
    /// @return the engine's answer; without an instance 0, and the record's type is 0
    int getValue(ZantParserExchangeBuffer& record) const;

    /// Writes the object's value.
    /// @return the engine's answer; 0 without an instance
    int setValue(const ZantParserExchangeBuffer& record) const;

    /// Sends the command that deletes the object, unless the engine does not know it. Each call sends it anew: call it
    /// once, or leave it to the destructor.
    void freeSymbol();

protected:
    /// Reads a value of one code. Another code in the answer is reported to the buffer as error 2.
    /// @return whether the record holds a value of that code
    bool readValue(ZantParserExchangeBuffer& record, int32_t code) const;

    /// Sends the command word and the symbol, the command that defines an object without further arguments.
    void define(int command);
};

}  // namespace Zant

#endif
