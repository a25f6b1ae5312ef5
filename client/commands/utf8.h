#ifndef ZANT_CLIENT_COMMANDS_UTF8_H
#define ZANT_CLIENT_COMMANDS_UTF8_H

#include <cstddef>

#include "own/cxx17.h"

namespace Zant {

/// UTF-8 bytes of single code values.
///
/// Values below 0x80000000 are encoded in one to six bytes, surrogates and values above 0x10FFFF included; nothing
/// below that limit is rejected.
///
/// Threads: any, since it keeps nothing.
struct UTF8Codec {
    /// @return the number of bytes of a code value, 1 to 6, or 0 when it is 0x80000000 or above
    static size_t length(unsigned int code);

    /// Writes the bytes of one code value, without terminator; none for 0x80000000 and above.
    static void encode(unsigned int code, char* out);
};

/// Scratch storage for one text in UTF-8, made for one conversion and released with it.
///
/// Each unit of 32 bits is one code value. Of units of 16 bits, `char16_t` and on Windows `wchar_t`, a high surrogate
/// and the low surrogate after it are one code value; a surrogate on its own is encoded as it stands.
///
/// Threads: one at a time for each object.
template <class Unit>
class UTF8EncoderBuffer {
public:
    char* data = nullptr;  ///< the text with its terminator; null when it could not be converted
    size_t capacity = 0;   ///< allocated size of data in bytes

    /// Converts text. data stays null when text is null or holds a unit of 0x80000000 or above.
    explicit UTF8EncoderBuffer(const Unit* text);
    ~UTF8EncoderBuffer();
    UTF8EncoderBuffer(const UTF8EncoderBuffer&) = delete;
    UTF8EncoderBuffer& operator=(const UTF8EncoderBuffer&) = delete;

    /// Converts another text into data, which grows when it is too small.
    /// @return false, with data as it was, when the text is null or cannot be converted
    bool encode(const Unit* text);

    /// @return the number of UTF-8 bytes without terminator, or (size_t)-1 when a unit is invalid
    static size_t stringUTF8Length(const Unit* text);

    /// Writes the UTF-8 text and its terminator; out has room for stringUTF8Length(text) + 1 bytes.
    /// @param text a text that stringUTF8Length() accepts
    /// @return true
    static bool encode(const Unit* text, char* out);
};

extern template class UTF8EncoderBuffer<wchar_t>;
extern template class UTF8EncoderBuffer<char16_t>;

}  // namespace Zant

#endif
