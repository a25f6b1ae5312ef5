#include "own/textbuffer.h"

#include "own/numbertext.h"

namespace Zant {

namespace {

size_t quotedLength(const char* s, char quote) {
    size_t length = 0;
    for (; *s; ++s)
        length += *s == quote ? 2 : 1;
    return length;
}

size_t lengthOrNone(const char* s) {
    return s ? std::strlen(s) : 0;
}

}  // namespace

void TextBuffer::concat(int v) {
    concatNumber([v](char* out) { return writeNumberText(v, out); });
}

void TextBuffer::concat(double v) {
    concatNumber([v](char* out) { return writeNumberText(v, out); });
}

void TextBuffer::concat(float v) {
    concatNumber([v](char* out) { return writeNumberText(static_cast<double>(v), out, floatStyle); });
}

// In place only where there is room to scribble over: the growth rule goes by the length of a text, not known before.
template <class Writer>
void TextBuffer::concatNumber(Writer write) {
    if (bufferSize - dataSize >= numberTextRoom) {
        char* const out = buffer + dataSize;
        dataSize += static_cast<size_t>(write(out) - out);
        return;
    }
    concatCopied(write);
}

template <class Writer>
ZANT_NOINLINE void TextBuffer::concatCopied(Writer write) {  // inlined, it would cost every number a stack frame
    char text[numberTextRoom];
    write(text);
    concat(text);
}

void TextBuffer::concatQuotedString(const char* s, char quote) {
    if (!s) return;
    const size_t offset = allocBuffer(quotedLength(s, quote));
    for (char* out = buffer + offset; *s; ++s) {
        *out++ = *s;
        if (*s == quote) *out++ = quote;
    }
}

void TextBuffer::addQuotedString(const char* s, char quote) {
    if (!s) s = "";
    // All the room at once: what follows can no longer fail halfway.
    fit(dataSize + lengthOrNone(separator) + quotedLength(s, '"') + 2);
    separate();
    append(quote);
    concatQuotedString(s, '"');
    append(quote);
}

TextBuffer& TextBuffer::operator+(const char* s) {
    const size_t separatorLength = lengthOrNone(separator);
    const size_t length = std::strlen(s);
    const size_t offset = allocBuffer(separatorLength + length + 1);
    if (separatorLength != 0) std::memcpy(buffer + offset, separator, separatorLength);
    std::memcpy(buffer + offset + separatorLength, s, length + 1);
    --dataSize;
    return *this;
}

}  // namespace Zant
