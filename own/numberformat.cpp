// Numbers to text, the general way: digit by digit, in the defined order of operations, with powers of ten from a
// table.
#include "own/str2num.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "own/decimaltables.h"
#include "own/numbertext.h"

namespace Zant {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double largestExact = 1LL << 53;

double powerOfTen(int k) {
    return DecimalTables::get().power(k);
}

// floor(log10(a)); 0, infinity and NaN have none: the most negative int.
int decimalExponent(double a) {
    return a > 0.0 && a <= largest ? DecimalTables::get().exponent(a) : INT_MIN;
}

// What has no int value (NaN, infinity, out of range) gives the most negative int on every processor.
int toInt(double v) {
    return v > INT_MIN - 1.0 && v < INT_MAX + 1.0 ? static_cast<int>(v) : INT_MIN;
}

char digitCharacter(size_t digit) {
    return static_cast<char>(digit < 10 ? '0' + digit : 'A' + (digit - 10));
}

void put(char*& out, size_t& room, char c) {
    *out++ = c;
    --room;
}

// Writes the digits of v in front of `end`; returns the first.
template <class Radix>
char* digitsBefore(char* end, size_t v, Radix radix) {
    do {
        *--end = digitCharacter(v % radix);
        v /= radix;
    } while (v != 0);
    return end;
}

// Whether a * powerOfTen(k) is a finite number, found without forming it: a host may trap the overflow.
bool isFiniteProduct(double a, int k) {
    constexpr double scale = 0x1p-600;
    if (k <= 0) return a <= largest;
    return k < DecimalTables::highestPower && (a * scale) * (powerOfTen(k) * scale) <= largest * scale * scale;
}

// The literal formula, on t * 2^-64, which changes no digit and keeps the product with ten from overflowing.
int digitOfLarge(double t) {
    t *= 0x1p-64;
    const signed char digit = static_cast<signed char>(toInt((t - t / 10.0 * 10.0) * 0x1p64 + 0.5));
    return digit < 0 ? 0 : digit > 9 ? 9 : digit;
}

// The decimal digit of a, which is not negative, at the exponent k: 0 the units, 1 the first decimal, -1 the tens.
// An infinite product has the digit 0, and so has a NaN.
int digitAt(double a, int k) {
    if (!isFiniteProduct(a, k)) return 0;
    const double product = a * powerOfTen(k);
    // The literal formula gives just this below 2^53, where no quotient is rounded up to an integer.
    if (product >= 0 && product < largestExact) return static_cast<int>(static_cast<uint64_t>(product) % 10);
    const double t = std::floor(product);
    if (product >= 0x1p64) return digitOfLarge(t);
    const signed char digit = static_cast<signed char>(toInt(t - std::floor(t / 10.0) * 10.0 + 0.5));
    return digit < 0 ? 0 : digit > 9 ? 9 : digit;
}

void putDigits(double a, int first, int last, char*& out, size_t& room) {
    for (int k = first; k <= last && room != 0; ++k)
        put(out, room, static_cast<char>('0' + digitAt(a, k)));
}

// Copies 2 to numberTextRoom bytes, each at least once.
void copyShort(char* to, const char* from, size_t n) {
    if (n >= 16) {
        std::memcpy(to + n - 16, from + n - 16, 16);
        std::memcpy(to, from, 16);
    } else if (n >= 8) {
        std::memcpy(to + n - 8, from + n - 8, 8);
        std::memcpy(to, from, 8);
    } else if (n >= 4) {
        std::memcpy(to + n - 4, from + n - 4, 4);
        std::memcpy(to, from, 4);
    } else {
        std::memcpy(to + n - 2, from + n - 2, 2);
        std::memcpy(to, from, 2);
    }
}

// The smallest numbers have a power of 0, which nothing is divided by: a host may trap that.
double mantissaOf(double x, int exponent) {
    const double power = powerOfTen(exponent);
    return power == 0.0 ? std::copysign(infinity, x) : x / power;
}

int lastDecimal(double a, int maxDecimals) {
    // Further places have an infinite power, and so the digit 0.
    int k = maxDecimals < DecimalTables::highestPower ? maxDecimals : DecimalTables::highestPower;
    while (k > 0 && digitAt(a, k) == 0)
        --k;
    return k;
}

}  // namespace

void fill_and_minus(char*& out, size_t& room, size_t width, char fill, char minus) {
    if (fill != 0 && room > width) {
        for (size_t count = room - width - (minus ? 1 : 0); count != 0; --count)
            put(out, room, fill);
    }
    if (minus && room != 0) put(out, room, '-');
}

void size_t_2_modulo(size_t v, char* out, size_t& room, char fill, int radix, char minus) {
    if (room == 0) return;
    --room;
    char digits[64];
    char* const end = digits + sizeof digits;
    const char* first = radix == 10 ? digitsBefore(end, v, std::integral_constant<size_t, 10>())
                                    : digitsBefore(end, v, static_cast<size_t>(radix));
    const size_t width = static_cast<size_t>(end - first);
    fill_and_minus(out, room, width, fill, minus);
    const size_t kept = width < room ? width : room;
    std::memcpy(out, first, kept);
    out[kept] = 0;
    room -= kept;
}

void int_2_modulo(int v, char* out, size_t& room, char fill, int radix) {
    const unsigned int magnitude = v < 0 ? 0u - static_cast<unsigned int>(v) : static_cast<unsigned int>(v);
    size_t_2_modulo(magnitude, out, room, fill, radix, static_cast<char>(v < 0));
}

int double_predot_count(double a) {
    const int exponent = decimalExponent(a);
    if (exponent < 0) return 1;
    return exponent + (digitAt(a, -exponent - 1) > 0 ? 2 : 1);
}

int _ddigit(double x, int p) {
    return digitAt(x, static_cast<int>(1u - static_cast<unsigned int>(p)));
}

void double_2_decimal(double x, char* out, size_t& room, int decimals, char fill) {
    if (room == 0) return;
    --room;
    const double a = std::fabs(x);
    const int whole = double_predot_count(a);
    const size_t width = static_cast<size_t>(whole) + static_cast<size_t>(decimals) + (decimals != 0 ? 1 : 0);
    fill_and_minus(out, room, width, fill, static_cast<char>(x < 0));
    putDigits(a, 1 - whole, 0, out, room);
    if (decimals != 0 && room != 0) {
        put(out, room, '.');
        putDigits(a, 1, decimals, out, room);
    }
    *out = 0;
}

void double_2_sdecimal(double x, char* out, size_t& room, int decimals, char fill) {
    double_2_decimal(x, out, room, decimals, fill);
}

void double_2_natural(double x, char* out, size_t& room, int maxDecimals, char fill) {
    const double sign = x < 0 ? -1.0 : 1.0;
    const double a = std::fabs(x);
    if (maxDecimals <= 0) return double_2_decimal(sign * a, out, room, 0, fill);
    // The largest number stays: rounded upwards the sum would overflow.
    const double rounded = a < largest ? a + 5.0 * powerOfTen(-1 - maxDecimals) : a;
    const int exactLast = lastDecimal(a, maxDecimals);
    const int roundedLast = lastDecimal(rounded, maxDecimals);
    if (exactLast > roundedLast) return double_2_decimal(sign * rounded, out, room, roundedLast, fill);
    double_2_decimal(sign * a, out, room, exactLast, fill);
}

char* generalNumberText(double x, char* out, const NumberStyle& style) {
    const int exponent = decimalExponent(std::fabs(x));
    // 0, infinity and NaN have no exponent form, and their most negative int has no negative.
    const bool scientific = exponent > style.exponentLimit || (exponent != INT_MIN && -exponent > style.exponentLimit);
    size_t room = style.room;
    double_2_natural(scientific ? mantissaOf(x, exponent) : x, out, room, style.decimals, 0);
    if (scientific && room >= 2) {
        out[style.room - 1 - room] = 'e';
        int_2_modulo(exponent, out + style.room - room, room, 0, 10);
    }
    return out + (style.room - 1 - room);
}

void double_2_sci(double x, char* out, size_t& room, int decimals, int maxExp) {
    if (room == 0) return;
    char text[numberTextRoom];
    const char* const end = fastNumberText(x, text, decimals, maxExp);
    size_t size = end ? static_cast<size_t>(end - text) + 1 : 0;
    if (size != 0 && size <= room) {
        copyShort(out, text, size);
    } else {
        size = static_cast<size_t>(generalNumberText(x, out, {decimals, maxExp, room}) - out) + 1;
    }
    room -= size;
}

}  // namespace Zant
