#include "own/textbuffer.h"

#include "own/numbertext.h"
#include "own/str2num.h"

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
    if (takeQuick([v](char* out) { return quickNumberText(v, out); })) return;
    char text[quickNumberRoom];
    size_t room = sizeof text;
    int_2_modulo(v, text, room, 0, 10);
    concat(text);
}

void TextBuffer::concat(double v) {
    concatNumber(v, 23, 8, 5);
}

void TextBuffer::concat(float v) {
    concatNumber(static_cast<double>(v), 14, 5, 4);
}

void TextBuffer::concatNumber(double v, size_t room, int decimals, int maxExp) {
    if (takeQuick([=](char* out) { return quickNumberText(v, out, decimals, maxExp); })) return;
    char text[quickNumberRoom];
    double_2_sci(v, text, room, decimals, maxExp);
    concat(text);
}

// Only where there is room to scribble over: the growth rule goes by the length of a text, which is not known yet.
template <class Writer>
bool TextBuffer::takeQuick(Writer write) {
    if (bufferSize - dataSize < quickNumberRoom) return false;
    const size_t length = write(buffer + dataSize);
    dataSize += length;
    return length != 0;
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
