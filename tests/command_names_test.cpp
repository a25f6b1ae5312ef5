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
        const wchar_t text[] = {static_cast<wchar_t>(row.code), L'z', 0};
        const UTF8EncoderBuffer<wchar_t> encoded(text);
        EXPECT_EQ(std::string(encoded.data), std::string(row.bytes) + "z") << row.code;
        EXPECT_EQ(encoded.capacity, std::strlen(row.bytes) + 2);
    }
    char untouched[] = "abc";
    UTF8Codec::encode(0x80000000u, untouched);
    EXPECT_STREQ(untouched, "abc");
    UTF8EncoderBuffer<wchar_t> reused(L"");
    EXPECT_STREQ(reused.data, "");
    const wchar_t invalidText[] = {static_cast<wchar_t>(0xFFFFFFFFu), 0};
    EXPECT_FALSE(reused.encode(invalidText));
    EXPECT_EQ(UTF8EncoderBuffer<wchar_t>::stringUTF8Length(invalidText), static_cast<size_t>(-1));
    EXPECT_EQ(UTF8EncoderBuffer<wchar_t>(invalidText).data, nullptr);
    EXPECT_TRUE(reused.encode(L"longer"));
    EXPECT_STREQ(reused.data, "longer");
}

}  // namespace
