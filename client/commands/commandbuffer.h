#ifndef ZANT_CLIENT_COMMANDS_COMMANDBUFFER_H
#define ZANT_CLIENT_COMMANDS_COMMANDBUFFER_H

#include <cstddef>

#include "client/values/axes.h"
#include "client/values/coordsys.h"
#include "client/values/varlen.h"
#include "client/values/vector.h"

namespace Zant {

class Instance;
class Symbol;

/// The interface through which every command of the engine's language is written.
///
/// A command is a sequence of calls: addEnum() for the command word, usually one more for a sub-keyword, one call per
/// argument, and parse(), which finishes the command and hands it to the instance's parser. Subclasses decide the
/// encoding.
///
/// The last non-zero code of the parser, or of error(), stays in errorCode until error(0) clears it; nothing is sent
/// meanwhile. When an allocation fails, the exception of `new` leaves the buffer as it was before the call. A buffer
/// outlives the symbols that point at it.
///
/// Threads: one at a time, since a command is assembled across several calls. Give each thread a buffer of its own.
class CommandBuffer {
public:
    Instance* instance;  ///< receives the commands; null for a buffer that only collects text. Not owned.
    int errorCode = 0;   ///< 0 while all is well

    explicit CommandBuffer(Instance* owner) : instance(owner) {}
    CommandBuffer(const CommandBuffer&) = delete;
    CommandBuffer& operator=(const CommandBuffer&) = delete;

    virtual ~CommandBuffer();

    /// Called once for every non-zero code at the moment it is stored. Does nothing here.
    virtual void errorHandle(int code);

    /// Finishes the command and hands it over.
    virtual void parse() = 0;

    /// Writes the automatic name of an unnamed symbol: its address, so that no two live symbols share one.
    /// @param name room for 18 bytes
    virtual void generateAutoname(Symbol& symbol, char* name);

    /// A keyword.
    /// @param number its place in its keyword table, counted from 1
    /// @param word its spelling; may be null
    virtual void addEnum(int number, const char* word) = 0;

    virtual void addDouble(double value) = 0;

    /// A text in UTF-8. Null is sent as a text of length 0.
    virtual void addString(const char* text) = 0;

    /// A text of 32-bit units, sent in UTF-8. Null, and a text with a unit of 0x80000000 or above, is sent as the null
    /// text. Hosts with 16-bit units use addUtf16String().
    virtual void addString(const wchar_t* text);

    virtual void addVector(const Vector& vector) = 0;
    virtual void addAxes(const Axes& axes) = 0;
    virtual void addCoordSys(const CoordSys& coordSys) = 0;
    virtual void addSymbol(const Symbol& symbol) = 0;

    /// Lists are one argument each; they may be empty.
    virtual void addVarLenDouble(const VarLenDouble& list) = 0;
    virtual void addVarLenVector(const VarLenVector& list) = 0;
    virtual void addVarLenAxes(const VarLenAxes& list) = 0;
    virtual void addVarLenCoordSys(const VarLenCoordSys& list) = 0;
    virtual void addVarLenSymbol(const VarLenSymbol& list) = 0;

    /// Stores code in errorCode and reports it through errorHandle(); 0 clears the error and reports nothing.
    void error(int code) {
        errorCode = code;
        if (code != 0) errorHandle(code);
    }

    /// @return the instance's parser context, the first argument of every parser call; null without an instance
    void* getParser() const;

    /// A text in UTF-16; surrogate pairs are joined. Sent as addString(const char*).
    void addUtf16String(const char16_t* text);

    /// A keyword of a table, by its number.
    template <size_t slots>
    void addKeyword(const char* const (&table)[slots], int number) {
        addEnum(number, table[number - 1]);
    }

    /// Adds heading, pitch and bank as an axes argument.
    CommandBuffer& operator+(const AxesHpb& angles);

    /// The digit character of radix 60: 0 to 9, a to y, A to Y.
    static char encode(int digit);

    /// Writes value and a terminator. A text that would start with a decimal digit starts with "_" instead, followed
    /// by the digits; 0 is "_" alone.
    /// @param out room for the digits, the underscore and the terminator: 18 bytes for radix 16
    static void encode(size_t value, char* out, int radix);
};

}  // namespace Zant

#endif
