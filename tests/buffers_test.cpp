// The byte and text buffers: growth to the byte, terminators, separators.
#include <gtest/gtest.h>

#include <cmath>
#include <new>
#include <random>
#include <string>

#include "own/textbuffer.h"

using namespace Zant;

namespace {

// What the definition of growth gives: doubling from the old size, or from 16, until it is enough.
size_t grown(size_t size, size_t needed) {
    if (needed <= size) return size;
    size = size == 0 ? 16 : size;
    while (size < needed)
        size *= 2;
    return size;
}

std::string content(const ResizableBuffer& buffer) {
    return std::string(buffer.buffer, buffer.dataSize);
}

template <class Value>
std::string concatenated(Value value) {
    TextBuffer buffer;
    buffer.concat(value);
    EXPECT_EQ(buffer.buffer[buffer.dataSize], 0);
    return content(buffer);
}

}  // namespace

TEST(ResizableBuffer, GrowsByDoubling) {
    ResizableBuffer one, seventeen, twenty, fitted, odd;
    one.append('x');
    EXPECT_EQ(one.bufferSize, 16u);
    seventeen.append("12345678901234567", 17);
    EXPECT_EQ(seventeen.bufferSize, 32u);
    twenty.append("1234567890", 10);
    EXPECT_EQ(twenty.allocBuffer(20), 10u);
    EXPECT_EQ(twenty.bufferSize, 32u);
    EXPECT_EQ(twenty.dataSize, 30u);
    fitted.fit(100);
    EXPECT_EQ(fitted.bufferSize, 128u);
    EXPECT_EQ(fitted.dataSize, 0u);
    odd.resize(24);
    odd.fit(25);
    EXPECT_EQ(odd.bufferSize, 48u);
}

TEST(ResizableBuffer, MovesItsDataAndTheByteBehind) {
    TextBuffer buffer;
    buffer.concat("abc");
    buffer.resize(40);
    EXPECT_EQ(buffer.bufferSize, 40u);
    EXPECT_STREQ(buffer.buffer, "abc");
    buffer.replace(1, "XY", 2);
    EXPECT_STREQ(buffer.buffer, "aXY");
    buffer.freeBuffer();
    EXPECT_EQ(buffer.buffer, nullptr);
    EXPECT_EQ(buffer.bufferSize + buffer.dataSize, 0u);
    buffer.replace(0, "a", 1);
    EXPECT_EQ(buffer.buffer, nullptr);
}

TEST(ResizableBuffer, AnswersForNothing) {
    ResizableBuffer buffer;
    EXPECT_FALSE(buffer.append("", 0));
    EXPECT_EQ(buffer.buffer, nullptr);
    buffer.align(8);
    buffer.appendString("");
    EXPECT_EQ(buffer.buffer, nullptr);
    EXPECT_TRUE(buffer.append('x'));
    EXPECT_TRUE(buffer.append("", 0));
}

TEST(ResizableBuffer, AlignsItsEnd) {
    ResizableBuffer buffer;
    buffer.append("1234567890123", 13);
    buffer.align(8);
    EXPECT_EQ(buffer.dataSize, 16u);
    buffer.align(8);
    EXPECT_EQ(buffer.dataSize, 16u);
    for (const size_t n : {1u, 2u, 4u, 16u, 64u, 256u}) {
        buffer.append('x');
        buffer.align(n);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer.buffer + buffer.dataSize) % n, 0u) << n;
        EXPECT_LE(buffer.dataSize, buffer.bufferSize);
    }
}

TEST(ResizableBuffer, RefusesWhatNoMemoryHolds) {
    ResizableBuffer buffer;
    buffer.append("xy", 2);
    for (const size_t size : {SIZE_MAX, SIZE_MAX / 2})
        EXPECT_THROW(buffer.allocBuffer(size), std::bad_alloc);
    EXPECT_THROW(buffer.fit(SIZE_MAX), std::bad_alloc);
    EXPECT_EQ(buffer.dataSize, 2u);
    EXPECT_EQ(buffer.bufferSize, 16u);
}

TEST(TextBuffer, WritesNumbers) {
    EXPECT_EQ(concatenated(1234567.0), "1.234567e6");
    EXPECT_EQ(concatenated(0.1f), "0.1");
    EXPECT_EQ(concatenated(123456.7f), "1.23456e5");
    EXPECT_EQ(concatenated(-std::nan("")), "0");

    // Warm or not, the same text.
    TextBuffer warm;
    warm.fit(64);
    for (const int v : {0, 7, -7, 10, 99, -100, 999, 1000, -54321, 99999999, -99999999, 100000000, -1000000070,
                        2147483647, -2147483647 - 1}) {
        warm.concat(v);
        EXPECT_EQ(std::string(warm), std::to_string(v));
        EXPECT_EQ(concatenated(v), std::to_string(v));
    }
    warm.concat(1e300 / 7);
    EXPECT_EQ(std::string(warm), concatenated(1e300 / 7));
}

TEST(TextBuffer, JoinsAndSeparates) {
    TextBuffer buffer;
    buffer.concat("ab");
    buffer.concat("cd");
    EXPECT_EQ(buffer.dataSize, 4u);
    EXPECT_STREQ(buffer.buffer, "abcd");
    buffer + "e";
    EXPECT_STREQ(buffer.buffer, "abcde");
    buffer.separator = ",";
    buffer + "x" + "y";
    EXPECT_STREQ(buffer.buffer, "abcde,x,y");
    buffer.setSeparateIf(";", " ");
    EXPECT_STREQ(buffer.separator, ";");
    buffer.separate();
    EXPECT_STREQ(buffer.buffer, "abcde,x,y;");

    const char* text = buffer;
    EXPECT_STREQ(text, "abcde,x,y;");
    EXPECT_EQ(buffer.dataSize, 0u);
    EXPECT_EQ(buffer.separator, nullptr);
    buffer.setSeparateIf(",", " ");
    EXPECT_STREQ(buffer.separator, " ");
    buffer.setSeparateIf(",", " ");
    EXPECT_STREQ(buffer.separator, ",");

    TextBuffer empty;
    empty.separator = ",";
    EXPECT_STREQ(static_cast<const char*>(empty), "");
    EXPECT_EQ(empty.buffer, nullptr);
    EXPECT_STREQ(empty.separator, ",") << "nothing was taken out";
}

TEST(TextBuffer, QuotesText) {
    TextBuffer buffer;
    buffer += "a\"b";
    EXPECT_EQ(content(buffer), "\"a\"\"b\"");
    buffer.separator = ",";
    buffer.addQuotedString("it's \"", '\'');
    EXPECT_EQ(content(buffer), "\"a\"\"b\",'it's \"\"'") << "what is doubled is the double quote";
    buffer.concatQuotedString("''x", '\'');
    buffer += nullptr;
    buffer.concat(";");
    EXPECT_STREQ(buffer, "\"a\"\"b\",'it's \"\"'''''x,\"\";");
}

// Every kind of append, in random order, against the growth and the text that are defined.
TEST(TextBuffer, GrowsAsDefinedWhateverIsAppended) {
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        TextBuffer buffer;
        std::string expected;
        size_t size = 0;
        for (int item = 0; item < 40; ++item) {
            const double number = static_cast<double>(random() % 4000000) / static_cast<double>(1 + random() % 1000);
            const std::string text(random() % 20, 'x');
            std::string added = text;
            const auto kind = random() % 5;
            const size_t terminator = kind < 3 ? 1 : 0;
            switch (kind) {
                case 0:
                    buffer.concat(text.c_str());
                    break;
                case 1:
                    buffer.concat(number);
                    added = concatenated(number);
                    break;
                case 2:
                    buffer.concat(static_cast<int>(number));
                    added = std::to_string(static_cast<int>(number));
                    break;
                case 3:
                    buffer.addQuotedString(text.c_str(), '"');
                    added = '"' + text + '"';
                    break;
                default:
                    buffer.append('c');
                    added = "c";
            }
            expected += added;
            size = grown(size, expected.size() + terminator);
            ASSERT_EQ(buffer.bufferSize, size);
            ASSERT_EQ(content(buffer), expected);
            ASSERT_TRUE(terminator == 0 || buffer.buffer[buffer.dataSize] == 0);
        }
    }
}
