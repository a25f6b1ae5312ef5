#ifndef ZANT_OWN_TEXTBUFFER_H
#define ZANT_OWN_TEXTBUFFER_H

#include "own/resizablebuffer.h"

namespace Zant {

/// A growing text with a pending separator between its items.
///
/// The text is terminated after concat(), separate() and operator+; `dataSize` does not count the terminator. The
/// single-byte append and the quoted forms write none: finish with a concat() before the text is read.
/// Items follow each other as: separate(), the text of the item, then the separator that the next item needs.
/// When an allocation fails, the exception leaves text, separator and block as they were before the call.
class TextBuffer : public ResizableBuffer {
public:
    ~TextBuffer() { separator = nullptr; }

    void concat(const char* s) {
        append(s, std::strlen(s) + 1);
        --dataSize;
    }

    /// Appends v in decimal.
    void concat(int v);
    /// Appends v with at most 8 decimals, as mantissa and exponent when its decimal exponent exceeds 5 in magnitude.
    void concat(double v);
    /// Appends v with at most 5 decimals, as mantissa and exponent when its decimal exponent exceeds 4 in magnitude.
    void concat(float v);

    /// Appends s with every `quote` in it doubled, not terminated. A null s counts as empty.
    void concatQuotedString(const char* s, char quote);

    /// Appends the separator, then s between two `quote` characters, not terminated. What is doubled inside is always
    /// the double quote. A null s counts as empty.
    void addQuotedString(const char* s, char quote);

    /// Makes the pending separator ifSet if there is one, else ifNone: the first item of a command may be separated in
    /// another way than the later ones.
    void setSeparateIf(const char* ifSet, const char* ifNone) { separator = separator ? ifSet : ifNone; }

    /// Appends the separator if there is one; it stays pending.
    void separate() {
        if (separator) concat(separator);
    }

    /// Appends the separator, then s.
    TextBuffer& operator+(const char* s);

    /// Appends the separator, then s in double quotes, not terminated.
    TextBuffer& operator+=(const char* s) {
        addQuotedString(s, '"');
        return *this;
    }

    /// Takes the text out: text and separator are gone, the block stays for the next text.
    /// @return the text, valid until the next append; an empty string if there has never been a block
    operator const char*() {
        if (!buffer) return "";
        separator = nullptr;
        dataSize = 0;
        return buffer;
    }

    const char* separator = nullptr;  ///< written before the next item, null for none; not owned

private:
    template <class Writer>
    void concatNumber(Writer write);
    template <class Writer>
    void concatCopied(Writer write);
};

}  // namespace Zant

#endif
