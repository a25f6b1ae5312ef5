#include "client/commands/utf8.h"

namespace Zant {

namespace {

constexpr size_t invalid = static_cast<size_t>(-1);

/// The code values of a text, one after another: one per 32-bit unit; of 16-bit units a high and a low surrogate
/// together are one.
template <class Unit>
unsigned int next(const Unit*& text) {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): it takes a wchar_t for a char
    const auto unit = static_cast<unsigned int>(*text++);
    if constexpr (sizeof(Unit) == sizeof(char16_t)) {
        const bool paired = unit >= 0xD800 && unit < 0xDC00 && *text >= 0xDC00 && *text < 0xE000;
        if (paired) return 0x10000 + ((unit - 0xD800) << 10) + (*text++ - 0xDC00u);
    }
    return unit;
}

}  // namespace

size_t UTF8Codec::length(unsigned int code) {
    static constexpr unsigned int limits[] = {0x80, 0x800, 0x10000, 0x200000, 0x4000000, 0x80000000};
    for (size_t bytes = 1; bytes <= 6; ++bytes) {
        if (code < limits[bytes - 1]) return bytes;
    }
    return 0;
}

void UTF8Codec::encode(unsigned int code, char* out) {
    static constexpr unsigned int marks[] = {0, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};
    const size_t bytes = length(code);
    if (bytes == 0) return;
    const size_t following = bytes - 1;
    *out++ = static_cast<char>(marks[following] | code >> (6 * following));
    for (size_t left = following; left-- > 0;) {
        *out++ = static_cast<char>(0x80 | (code >> (6 * left) & 0x3F));
    }
}

template <class Unit>
UTF8EncoderBuffer<Unit>::UTF8EncoderBuffer(const Unit* text) {
    encode(text);
}

template <class Unit>
UTF8EncoderBuffer<Unit>::~UTF8EncoderBuffer() {
    delete[] data;
}

template <class Unit>
bool UTF8EncoderBuffer<Unit>::encode(const Unit* text) {
    const size_t length = text ? stringUTF8Length(text) : invalid;
    if (length == invalid) return false;
    if (capacity < length + 1) {
        char* grown = new char[length + 1];
        delete[] data;
        data = grown;
        capacity = length + 1;
    }
    return encode(text, data);
}

template <class Unit>
size_t UTF8EncoderBuffer<Unit>::stringUTF8Length(const Unit* text) {
    size_t total = 0;
    while (*text) {
        const size_t bytes = UTF8Codec::length(next(text));
        if (bytes == 0) return invalid;
        total += bytes;
    }
    return total;
}

template <class Unit>
bool UTF8EncoderBuffer<Unit>::encode(const Unit* text, char* out) {
    while (*text) {
        const unsigned int code = next(text);
        UTF8Codec::encode(code, out);
        out += UTF8Codec::length(code);
    }
    *out = 0;
    return true;
}

template class UTF8EncoderBuffer<wchar_t>;
template class UTF8EncoderBuffer<char16_t>;

}  // namespace Zant
