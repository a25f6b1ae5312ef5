// The text of numbers and the way back: literal examples, limits of room, and comparison with the definition.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "own/str2num.h"
#include "own/textbuffer.h"
#include "tests/early_numbers.h"
#include "tests/number_cases.h"
#include "tests/number_oracle.h"
#include "tests/numbercheck.h"

using namespace Zant;

/// Sets a locale with a decimal comma, if there is one or one can be made.
void useDecimalComma();

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Calls a formatter with an area of exactly `room` bytes between guards; gives the text, and checks room left,
// terminator, guards, and that the bytes after the terminator stay as they were.
template <class Write>
std::string written(size_t room, Write write) {
    constexpr size_t guard = 16;
    constexpr char untouched = 0x5A;
    std::string area(guard + room + guard, untouched);
    char* out = &area[guard];
    size_t left = room;
    write(out, left);
    const std::string before(guard, untouched);
    EXPECT_EQ(area.substr(0, guard), before);
    if (room == 0) {
        EXPECT_EQ(left, 0u);
        EXPECT_EQ(area.substr(guard), before);
        return {};
    }
    const std::string text(out);
    EXPECT_EQ(left, room - text.size() - 1) << text;
    EXPECT_EQ(area.substr(guard + text.size() + 1), std::string(left + guard, untouched)) << text;
    return text;
}

std::string sci(double x, size_t room, int decimals, int maxExp) {
    return written(room, [=](char* out, size_t& left) { double_2_sci(x, out, left, decimals, maxExp); });
}

std::string natural(double x, size_t room, int decimals, char fill) {
    return written(room, [=](char* out, size_t& left) { double_2_natural(x, out, left, decimals, fill); });
}

std::string decimal(double x, size_t room, int decimals, char fill) {
    return written(room, [=](char* out, size_t& left) { double_2_decimal(x, out, left, decimals, fill); });
}

std::string modulo(size_t v, size_t room, char fill, int radix, bool minus) {
    return written(room, [=](char* out, size_t& left) { size_t_2_modulo(v, out, left, fill, radix, minus); });
}

std::string integer(int v, size_t room, char fill = 0, int radix = 10) {
    return written(room, [=](char* out, size_t& left) { int_2_modulo(v, out, left, fill, radix); });
}

// ---- Literal examples; checked again under a locale with a decimal comma -------------------------------------------

void checkScientific() {
    struct Row {
        double value;
        int decimals;
        int maxExp;
        const char* text;
    };
    const Row rows[] = {
        {0.0, 8, 5, "0"},
        {-0.0, 8, 5, "0"},
        {-3.25, 8, 5, "-3.25"},
        {1.0 / 3.0, 8, 5, "0.33333333"},
        {1.9999999999, 8, 5, "2"},
        {1234567.0, 8, 5, "1.234567e6"},
        {1000000.0, 8, 5, "1000000"},
        {10000000.0, 8, 5, "1e7"},
        {0.00001, 8, 5, "0.00001"},
        {0.00000999, 8, 5, "9.99e-6"},
        {-15000000000.0, 8, 5, "-1.5e10"},
        {1e15, 8, 5, "10e14"},
        {infinity, 8, 5, "0"},
        {-infinity, 8, 5, "-0"},
        {notANumber, 8, 5, "0"},
        {5e-324, 8, 5, "0e-324"},
        // Digits that a rounded product loses belong to the definition.
        {0.0113, 8, 5, "0.0112"},
        {0.29, 2, 5, "0.28"},
        {123456.7f, 5, 4, "1.23456e5"},
        {3.14159265f, 5, 4, "3.14159"},
        {0.00001f, 5, 4, "10e-6"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(sci(row.value, 30, row.decimals, row.maxExp), row.text);
}

void checkDecimal() {
    EXPECT_EQ(decimal(2.5, 30, 3, 0), "2.500");
    EXPECT_EQ(decimal(0.999, 30, 2, 0), "0.99");
    EXPECT_EQ(decimal(1000.0, 30, 0, 0), "1000");
    EXPECT_EQ(decimal(-2.5, 10, 2, ' '), "    -2.50");
    EXPECT_EQ(decimal(-2.5, 10, 2, '0'), "0000-2.50");
    EXPECT_EQ(decimal(123.25, 5, 2, '*'), "123.");
    EXPECT_EQ(decimal(2.5, 1, 2, ' '), "");
    EXPECT_EQ(natural(0.995, 30, 2, 0), "1");
    EXPECT_EQ(natural(0.129, 30, 2, 0), "0.12");
    EXPECT_EQ(natural(-7.75, 30, 0, 0), "-7");
    EXPECT_EQ(natural(-7.75, 9, 4, '.'), "...-7.75");
    EXPECT_EQ(natural(0.5, 1, 4, '.'), "");
}

void checkParsing() {
    struct Row {
        const char* text;
        double value;
        const char* rest;
    };
    const Row rows[] = {
        {"12.5e2x", 1250, "x"},
        {"e5", 0, ""},
        {"-0.25", -0.25, ""},
        {"5.", 5, ""},
        {"5.e3", 5000, ""},
        {".5", 0.5, ""},
        {".", 0, ""},
        {"-", -0.0, ""},
        {"-0", -0.0, ""},
        {"+1", 0, "+1"},
        {" 1", 0, " 1"},
        {"1e+-3", 1e-3, ""},
        {"1e", 1, ""},
        {"1e-", 1, ""},
        {"2E2e", 200, "e"},
        {"1,5", 1, ",5"},
        {"1e400", infinity, ""},
        {"1e-400", 0, ""},
        {"0e999", notANumber, ""},
        {"1e4294967298", 100, ""},
        {"1.5.5", 1.5, ".5"},
        {"--1", -0.0, "-1"},
    };
    for (const Row& row : rows) {
        const char* at = row.text;
        const double value = sdecimal_2_double(at);
        EXPECT_STREQ(at, row.rest) << row.text;
        EXPECT_EQ(std::isnan(value), std::isnan(row.value)) << row.text;
        if (std::isnan(value)) continue;
        EXPECT_EQ(value, row.value) << row.text;
        EXPECT_EQ(std::signbit(value), std::signbit(row.value)) << row.text;
    }
}

void checkLongParsing() {
    const std::string digits = "0." + std::string(700, '1');  // more than there are powers of ten
    const char *few = "0.11111111111111111111", *many = digits.c_str();
    EXPECT_EQ(sdecimal_2_double(many), sdecimal_2_double(few));
}

// ---- Comparison with the definition --------------------------------------------------------------------------------

size_t compare(uint64_t seed, size_t count, size_t room, int decimals, int maxExp) {
    NumberCases cases(seed);
    size_t agreeing = 0;
    for (size_t i = 0; i < count; ++i) {
        const std::string difference = differenceToOracle(cases.next(), room, decimals, maxExp);
        if (!difference.empty()) ADD_FAILURE() << difference;
        agreeing += difference.empty();
    }
    return agreeing;
}

}  // namespace

TEST(Numbers, ReadAsDefined) {
    checkScientific();
    checkDecimal();
}

TEST(Numbers, AreReadBack) {
    checkParsing();
    checkLongParsing();
}

TEST(Numbers, AgreeWithTheDefinition) {
    EXPECT_EQ(compare(1, 200000, 40, 8, 5), 200000u);
    EXPECT_EQ(compare(2, 50000, 40, 5, 4), 50000u);
    uint64_t seed = 3;
    for (const int decimals : {-1, 0, 1, 2, 6, 7, 9, 15, 17}) {
        for (const int maxExp : {-1, 0, 3, 12, 305})
            EXPECT_EQ(compare(seed++, 1000, 100, decimals, maxExp), 1000u);
    }
}

TEST(Numbers, AgreeWithTheDefinitionForEverySmallInteger) {
    for (int v = 0; v <= 1001000; ++v)
        ASSERT_EQ(differenceToOracle(v, 40, 8, 5), "");
}

TEST(Numbers, AgreeWithTheDefinitionNextToPowersOfTen) {
    size_t checked = 0;
    for (int k = -330; k <= 310; ++k) {
        const double power = std::pow(10.0, k);
        for (int64_t step = -40; step <= 40; ++step, ++checked) {
            const double x = std::fabs(stepped(power, step));
            ASSERT_EQ(differenceToOracle(x, 40, 8, 5), "");
            ASSERT_EQ(differenceToOracle(-x, 40, 3, 2), "");
            ASSERT_EQ(differenceToOracle(x, 40, 1, 12), "");
        }
        // Far enough to pass every threshold that is taken from a logarithm.
        for (int64_t step = -2000; step <= 2000; step += 61, ++checked) {
            ASSERT_EQ(differenceToOracle(std::fabs(stepped(power, step)), 40, 8, 5), "");
        }
    }
    EXPECT_EQ(checked, 641u * (81 + 66));
}

TEST(Numbers, AreCutWhereTheRoomEnds) {
    EXPECT_EQ(sci(-12.25, 5, 8, 5), "-12.");
    EXPECT_EQ(sci(1.5e10, 5, 8, 5), "1.5");  // an exponent takes two bytes at least
    EXPECT_EQ(sci(1.5e10, 6, 8, 5), "1.5e1");
    for (const double x : {0.0, -12.25, 1.5e10, -0.1, 1.0 / 3.0, 999999.99999999, -2.5e-7, infinity}) {
        for (size_t room = 0; room < 24; ++room)
            EXPECT_EQ(differenceToOracle(x, room, 8, 5), "");
    }
}

TEST(Numbers, AgreeWithTheDefinitionUnderFills) {
    NumberCases cases(5);
    for (int i = 0; i < 20000; ++i) {
        const double x = cases.next();
        const int decimals = i % 11;
        const char fill = "\0 0*"[i % 4];
        const size_t room = static_cast<size_t>(i) % 37;
        const auto definition = [&](auto* function) {
            return written(room, [&](char* out, size_t& left) { function(x, out, left, decimals, fill); });
        };
        ASSERT_EQ(decimal(x, room, decimals, fill), definition(&Oracle::decimal)) << x;
        ASSERT_EQ(definition(&double_2_sdecimal), definition(&Oracle::decimal)) << x;
        ASSERT_EQ(natural(x, room, decimals, fill), definition(&Oracle::natural)) << x;
        const double a = std::fabs(x);
        ASSERT_EQ(double_predot_count(a), Oracle::predotCount(a)) << x;
        ASSERT_EQ(_ddigit(a, i % 40 - 20), Oracle::digit(a, 1 - (i % 40 - 20))) << x;
    }
}

TEST(Numbers, DoNotDependOnTheLocale) {
    useDecimalComma();
    if (std::strcmp(std::localeconv()->decimal_point, ",") != 0) GTEST_SKIP() << "no locale with a decimal comma here";
    checkScientific();
    checkDecimal();
    checkParsing();
    EXPECT_EQ(compare(6, 20000, 40, 8, 5), 20000u);
    std::setlocale(LC_ALL, "C");
}

TEST(Numbers, AreWrittenFromTheEarliestStaticConstructor) {
    EXPECT_STREQ(earlyText, "-12.25 1.5e10");
}

TEST(Integers, ReadAsDefined) {
    EXPECT_EQ(modulo(255, 30, 0, 16, false), "FF");
    EXPECT_EQ(modulo(0, 30, 0, 2, false), "0");
    EXPECT_EQ(modulo(SIZE_MAX, 70, 0, 2, false), std::string(64, '1'));
    EXPECT_EQ(modulo(SIZE_MAX, 30, 0, 10, true), "-18446744073709551615");
    EXPECT_EQ(modulo(35 * 36 + 10, 30, 0, 36, false), "ZA");
    EXPECT_EQ(integer(-42, 8, ' '), "    -42");
    EXPECT_EQ(integer(-42, 8, '0'), "0000-42");
    EXPECT_EQ(integer(-42, 4, '0'), "-42");
    EXPECT_EQ(integer(-42, 3, '0'), "-4");
    EXPECT_EQ(integer(-42, 2), "-");
    EXPECT_EQ(integer(-42, 1), "");
    EXPECT_EQ(integer(-42, 0), "");
    EXPECT_EQ(integer(INT32_MIN, 12), "-2147483648");
    EXPECT_EQ(integer(INT32_MIN, 10), "-21474836");
    EXPECT_EQ(integer(1000000000, 12), "1000000000");

    char area[] = "........";
    char* out = area;
    size_t room = 7;
    fill_and_minus(out, room, 2, '#', 1);
    EXPECT_EQ(out - area, 5);
    EXPECT_EQ(room, 2u);
    EXPECT_STREQ(area, "####-...");
}

TEST(Integers, AreReadBack) {
    struct Row {
        const char* text;
        int radix;
        size_t value;
        const char* rest;
    };
    const Row rows[] = {
        {"ff", 16, 255, ""},          {"fF;", 16, 255, ";"}, {"g", 16, 0, "g"},   {"12", 2, 1, "2"},
        {"zZ", 36, 35 * 36 + 35, ""}, {"", 10, 0, ""},       {"-1", 10, 0, "-1"}, {"18446744073709551617", 10, 1, ""}};
    for (const Row& row : rows) {
        const char* at = row.text;
        EXPECT_EQ(modulo_2_size_t(at, row.radix), row.value) << row.text;
        EXPECT_STREQ(at, row.rest);
    }
    const std::pair<const char*, int> signedRows[] = {
        {"-2147483648", INT32_MIN}, {"2147483648", INT32_MIN}, {"4294967297", 1}, {"-4294967297", -1}, {"-", 0}};
    for (const auto& [text, value] : signedRows) {
        const char* at = text;
        EXPECT_EQ(modulo_2_int(at, 10), value) << text;
        EXPECT_EQ(*at, 0) << text;
    }
}

TEST(Helpers, AppendNumbersToText) {
    const auto appended = [](auto... arguments) {
        char text[64] = "n=";
        s2n_numcat(arguments..., text);
        return std::string(text);
    };
    EXPECT_EQ(appended(reinterpret_cast<void*>(uintptr_t{0xABC123})), "n=ABC123");
    EXPECT_EQ(appended(-17), "n=-17");
    EXPECT_EQ(appended(0.5f), "n=0.50000");
    EXPECT_EQ(appended(-123456.0f), "n=-123456.000");

    char text[64] = "";
    s2n_numcat(42u, text, 5);
    s2n_numcat(12345u, text, 3);
    EXPECT_STREQ(text, "00042123");
    s2n_numcat(2.5, text, 6, 8);
    EXPECT_STREQ(text, "000421232.500");
    s2n_numcat(2.5, text, 1, 8);
    s2n_numcat(7u, text, -1);
    EXPECT_STREQ(text, "000421232.500");

    s2n_numsrd("a", -1, "b", text);
    EXPECT_STREQ(text, "a-1b");
    s2n_numsrd(nullptr, 12, nullptr, text);
    EXPECT_STREQ(text, "12");
}

TEST(Helpers, TreatStringsAsDefined) {
    char area[] = "xxxxxxxx";
    EXPECT_EQ(s2n_strncpy(area, "abc", 8), area);
    EXPECT_EQ(std::string(area, 8), std::string("abc\0xxxx", 8)) << "not padded";
    s2n_strncpy(area, "ABCDE", 5);
    EXPECT_EQ(std::string(area, 8), "ABCDExxx") << "not terminated";
    s2n_strcpy(area, "ab");
    s2n_strcat(area, "cd");
    EXPECT_STREQ(area, "abcd");
    EXPECT_EQ(s2n_strlen(area), 4u);
    EXPECT_EQ(s2n_strstr(area, "cd"), area + 2);
    EXPECT_EQ(s2n_strstr(area, ""), area);
    EXPECT_EQ(s2n_strstr("abcd", "dc"), nullptr);

    EXPECT_EQ(s2n_strcmp("\xE9", "a"), -1);
    EXPECT_EQ(s2n_strcmp("ab\xE9", "ab"), -1) << "the end of a string is a 0";
    EXPECT_EQ(s2n_strcmp("abc", "ab"), 1);
    EXPECT_EQ(s2n_strcmp("ab", "ab"), 0);
    EXPECT_EQ(s2n_strncmp("abX", "abc", 2), 0);
    EXPECT_EQ(s2n_strncmp("abX", "abc", 3), -1);
    EXPECT_EQ(s2n_strncmp("a", "b", 0), 0);
    EXPECT_EQ(s2n_strncmp("a", "a", 9), 0);
}

TEST(Helpers, MoveMemoryAsDefined) {
    unsigned char low[] = {1, 2, 3};
    unsigned char high[] = {1, 0xFE, 3};
    EXPECT_EQ(s2n_memcmp(low, high, 3), 2 - 0xFE);
    EXPECT_EQ(s2n_memcmp(low, high, 1), 0);

    for (const size_t size : {0u, 1u, 7u, 8u, 9u, 16u, 23u, 24u}) {
        alignas(8) char area[32], words[32];
        std::memset(area, '-', sizeof area);
        std::memset(words, '-', sizeof words);
        s2n_memset(area, 'x', size);
        s2n_amemset(words, 'x', size);
        EXPECT_EQ(std::string(area, 32), std::string(size, 'x') + std::string(32 - size, '-'));
        EXPECT_EQ(std::string(words, 32), std::string(size & ~7u, 'x') + std::string(32 - (size & ~7u), '-'));

        alignas(8) const char source[] = "abcdefghijklmnopqrstuvwxyz";
        std::memset(area, '-', sizeof area);
        std::memset(words, '-', sizeof words);
        s2n_memcpy(area, source, size);
        s2n_amemcpy(words, source, size);
        EXPECT_EQ(std::string(area, 32), std::string(source, size) + std::string(32 - size, '-'));
        EXPECT_EQ(std::string(words, 32), std::string(source, size & ~7u) + std::string(32 - (size & ~7u), '-'));
    }
}

// What the fuzzer looks at as well; what it has found is a row here.
TEST(HostileInput, IsReadAndWrittenAsDefined) {
    const char* const texts[] = {"",    "-",      "--1",         "+1",           "1..2e5e6", ".e-", "e5",  "1e-",
                                 "-.5", "12.5e2", "1e999999999", "1e-999999999", "\x80\xFF", "zZ9", "0x1f"};
    for (const char* text : texts)
        EXPECT_EQ(checkReading(text), "");
    EXPECT_EQ(checkReading(std::string(5000, '9') + "." + std::string(5000, '9')), "");
    std::mt19937_64 engine(7);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (size_t length = engine() % 24; length > 0; --length)
            text += "0123456789.-+eEfFzZ \x80"[engine() % 21];
        ASSERT_EQ(checkReading(text), "");
    }
    EXPECT_EQ(checkWriting(3506545.9999999995, 8 + 13 * 5 + 104), "") << "a unit low in the last written place";
    EXPECT_EQ(checkWriting(419423999.49999994, 8), "") << "a nine left after a digit that was rounded up";
    NumberCases cases(8);
    for (unsigned i = 0; i < 20000; ++i)
        ASSERT_EQ(checkWriting(cases.next(), i), "");
}
