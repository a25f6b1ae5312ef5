#ifndef ZANT_MODERN_NAME_H
#define ZANT_MODERN_NAME_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "own/cxx17.h"

namespace zant {

/// The name of an object of the engine, made from any text: a different one for each text, in every encoding the same.
///
/// The engine's own names hold letters, digits and "_", at most 127 of them. A text of these that does not begin with a
/// digit and holds no "_x" is its own name. Any other byte is written as `_x` and its two hexadecimal digits, and so
/// are the "_" before an "x" and a digit that comes first: "Cube 1" is `Cube_x201`. The empty text is `_x`. A name that
/// would be longer is cut, and ends in `_xh` and sixteen digits that are made from the whole text.
///
/// Threads: a plain value; several threads may read it.
class name {
public:
    name(std::string_view text) : text_(text) { encode(); }
    name(const char* text) : name(std::string_view(text ? text : "")) {}
    name(std::nullptr_t) = delete;
    name(std::string text) : text_(std::move(text)) { encode(); }

    /// The whole text, as it was given.
    const std::string& text() const noexcept { return text_; }
    /// What the engine calls the object, terminated, at most 127 bytes.
    const char* c_str() const noexcept { return encoded_; }
    std::string_view encoded() const noexcept { return {encoded_, size_}; }
    /// Whether the end of the text is in the engine's name as a hash only.
    bool is_cut() const noexcept { return is_cut_; }

    /// The text that a name of the engine was made from; for one that was cut, its beginning and "…".
    static std::string decode(std::string_view encoded) {
        std::string text;
        while (!encoded.empty()) {
            const bool is_escape = encoded.substr(0, 2) == "_x";
            const int high = is_escape && encoded.size() > 3 ? hex_value(encoded[2]) : -1;
            const int low = high >= 0 ? hex_value(encoded[3]) : -1;
            if (is_escape && low < 0) return encoded.substr(2, 1) == "h" ? text + "\xE2\x80\xA6" : text;
            text += low < 0 ? encoded[0] : static_cast<char>(high * 16 + low);
            encoded.remove_prefix(low < 0 ? 1 : 4);
        }
        return text;
    }

    friend bool operator==(const name& a, const name& b) { return a.text_ == b.text_; }
    friend bool operator!=(const name& a, const name& b) { return !(a == b); }

private:
    static constexpr std::size_t longest = 127;
    static constexpr std::size_t hash_size = 3 + 16;

    void encode() {
        if (text_.empty()) return append("_x");
        std::size_t beginning = 0;  // what is kept of a name that is cut
        for (std::size_t k = 0; k < text_.size(); ++k) {
            char unit[4] = {text_[k], '\0', '\0', '\0'};
            const std::size_t size = stands_for_itself(k) ? 1 : escape(unit);
            if (size_ + size > longest) return cut(beginning);
            append({unit, size});
            if (size_ + hash_size <= longest) beginning = size_;
        }
    }

    bool stands_for_itself(std::size_t k) const {
        const char c = text_[k];
        if (c == '_') return k + 1 == text_.size() || text_[k + 1] != 'x';
        if (c >= '0' && c <= '9') return k != 0;
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    }

    static std::size_t escape(char (&unit)[4]) {
        const auto byte = static_cast<unsigned char>(unit[0]);
        unit[0] = '_', unit[1] = 'x', unit[2] = hex_digit(byte >> 4), unit[3] = hex_digit(byte & 15);
        return sizeof unit;
    }

    void cut(std::size_t beginning) {
        std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
        for (const char c : text_)
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
        size_ = beginning;
        is_cut_ = true;
        append("_xh");
        for (int shift = 60; shift >= 0; shift -= 4) {
            const char digit = hex_digit(static_cast<unsigned>(hash >> shift) & 15);
            append({&digit, 1});
        }
    }

    void append(std::string_view piece) {
        piece.copy(encoded_ + size_, piece.size());
        size_ += piece.size();
    }

    static char hex_digit(unsigned value) { return static_cast<char>(value < 10 ? '0' + value : 'a' + value - 10); }
    static int hex_value(char c) {
        if (c >= '0' && c <= '9') return c - '0';
        return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    }

    std::string text_;
    char encoded_[longest + 1] = {};
    std::size_t size_ = 0;
    bool is_cut_ = false;
};

}  // namespace zant

#endif
