// Names that the library makes, and the UTF-8 of wide texts.

#include <cstring>

#include "client/commands/utf8.h"
#include "client/symbols/symbol.h"
#include "tests/commandstest.h"

namespace {

TEST(CommandNames, Digits) {
    const struct {
        int digit;
        char character;
    } digits[] = {{0, '0'}, {9, '9'}, {10, 'a'}, {34, 'y'}, {35, 'A'}, {59, 'Y'}, {60, 'Z'}, {-1, '/'}};
    for (const auto& row : digits)
        EXPECT_EQ(CommandBuffer::encode(row.digit), row.character) << row.digit;
    const struct {
        size_t value;
        int radix;
        const char* text;
    } values[] = {{0, 60, "_"},
                  {0, 16, "_"},
                  {5, 60, "_5"},
                  {9, 60, "_9"},
                  {35, 60, "A"},
                  {60, 60, "_10"},
                  {255, 16, "ff"},
                  {0x600000c04a80, 16, "_600000c04a80"},
                  {0x600000c04a80, 60, "CHmbwTyF"},
                  {0xa0001234, 16, "a0001234"},
                  {0xa0001234, 60, "_3r7Akk"},
                  {SIZE_MAX, 16, "ffffffffffffffff"},
                  {0x1000000000000000, 16, "_1000000000000000"}};
    for (const auto& row : values) {
        char text[18];
        CommandBuffer::encode(row.value, text, row.radix);
        EXPECT_STREQ(text, row.text);
    }
}

TEST_F(Commands, AutomaticNames) {
    CommandBuffer* const buffers[] = {&textBuffer, &quickBuffer, &offlineBuffer, &binaryBuffer};
    const int radixes[] = {16, 60, 16, 60};
    for (size_t i = 0; i < 4; ++i) {
        Symbol symbol(*buffers[i]);
        char expected[18];
        CommandBuffer::encode(reinterpret_cast<size_t>(&symbol), expected, radixes[i]);
        EXPECT_STREQ(symbol.name, expected) << i;
    }
}

TEST(Utf8, CodeValues) {
    const struct {
        unsigned int code;
        const char* bytes;
    } rows[] = {{0x7F, "\x7F"},
                {0x80, "\xC2\x80"},
                {0x7FF, "\xDF\xBF"},
                {0x800, "\xE0\xA0\x80"},
                {0x20AC, "\xE2\x82\xAC"},
                {0xD800, "\xED\xA0\x80"},
                {0xFFFF, "\xEF\xBF\xBF"},
                {0x10000, "\xF0\x90\x80\x80"},
                {0x10FFFF, "\xF4\x8F\xBF\xBF"},
                {0x1FFFFF, "\xF7\xBF\xBF\xBF"},
                {0x200000, "\xF8\x88\x80\x80\x80"},
                {0x3FFFFFF, "\xFB\xBF\xBF\xBF\xBF"},
                {0x4000000, "\xFC\x84\x80\x80\x80\x80"},
                {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"}};
    for (const auto& row : rows) {
        char bytes[8] = {};
        UTF8Codec::encode(row.code, bytes);
        EXPECT_STREQ(bytes, row.bytes) << row.code;
        EXPECT_EQ(UTF8Codec::length(row.code), std::strlen(row.bytes));
        const wchar_t text[] = {static_cast<wchar_t>(row.code), L'z', 0};
        if (static_cast<unsigned int>(text[0]) != row.code) continue;  // where units have 16 bits
        const UTF8EncoderBuffer<wchar_t> encoded(text);
        EXPECT_EQ(std::string(encoded.data), std::string(row.bytes) + "z") << row.code;
        EXPECT_EQ(encoded.capacity, std::strlen(row.bytes) + 2);
    }
    char untouched[] = "abc";
    UTF8Codec::encode(0x80000000u, untouched);
    EXPECT_STREQ(untouched, "abc");
    UTF8EncoderBuffer<wchar_t> reused(L"");
    EXPECT_STREQ(reused.data, "");
    EXPECT_FALSE(reused.encode(nullptr));
    EXPECT_TRUE(reused.encode(L"longer"));
    EXPECT_STREQ(reused.data, "longer");
}

template <class Unit>
std::string inUtf8(const std::vector<unsigned int>& units) {
    std::vector<Unit> text;
    for (const unsigned int unit : units)
        text.push_back(static_cast<Unit>(unit));
    text.push_back(0);
    const UTF8EncoderBuffer<Unit> encoded(text.data());
    return encoded.data ? encoded.data : "refused";
}

TEST(Utf8, UnitsOf16BitsPairTheirSurrogates) {
    const struct {
        std::vector<unsigned int> units;
        const char *of16Bits, *of32Bits;
    } rows[] = {
        {{'a', 0xE9, 0x20AC}, "a\xC3\xA9\xE2\x82\xAC", "a\xC3\xA9\xE2\x82\xAC"},
        {{0xD83D, 0xDE00, 'z'}, "\xF0\x9F\x98\x80z", "\xED\xA0\xBD\xED\xB8\x80z"},
        {{0xD83D, 'z'}, "\xED\xA0\xBDz", "\xED\xA0\xBDz"},
        {{0xDE00, 0xD83D}, "\xED\xB8\x80\xED\xA0\xBD", "\xED\xB8\x80\xED\xA0\xBD"},
        {{0xDBFF, 0xDBFF, 0xDFFF}, "\xED\xAF\xBF\xF4\x8F\xBF\xBF", "\xED\xAF\xBF\xED\xAF\xBF\xED\xBF\xBF"},
        {{0xFFFFFFFF}, "\xEF\xBF\xBF", "refused"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(inUtf8<char16_t>(row.units), row.of16Bits);
        EXPECT_EQ(inUtf8<wchar_t>(row.units), sizeof(wchar_t) == 2 ? row.of16Bits : row.of32Bits);
    }
    EXPECT_EQ(std::string(UTF8EncoderBuffer<wchar_t>(L"\U0001F600").data), "\xF0\x9F\x98\x80") << "on every platform";
}

}  // namespace
