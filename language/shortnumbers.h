#ifndef ZANT_LANGUAGE_SHORTNUMBERS_H
#define ZANT_LANGUAGE_SHORTNUMBERS_H

#include <cfloat>
#include <cstddef>
#include <cstdint>

#include "language/characters.h"
#include "language/numbers.h"

namespace Zant::Language {

inline constexpr double shortPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                         1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};

constexpr size_t mostDigits = 19;  // that do not wrap; where there is a point, one of them is the point
constexpr uint64_t largestWhole = uint64_t{1} << DBL_MANT_DIG;  // doubles hold all whole numbers up to here

/// Reads digits into a number that goes on; it wraps.
/// @return after them
inline const char* takeDigits(const char* text, uint64_t& digits) {
    for (unsigned digit; (digit = static_cast<unsigned char>(*text) - unsigned{'0'}) < 10; ++text)
        digits = 10 * digits + digit;
    return text;
}

/// Reads the number that begins at `text` if it is one of few digits and without an exponent, as nearly all are.
///
/// Where a double holds the digits as a whole number, it holds the power of ten that divides them as well, and the
/// quotient of two exact numbers is rounded only once, to the nearest double.
/// @param text followed by a character that belongs to no number
/// @return after the number; null for any other number and for what is none, see readAnyNumber()
inline const char* readShortNumber(const char* text, double& number) {
    constexpr bool roundsOnce = FLT_EVAL_METHOD == 0 || FLT_EVAL_METHOD == 1;  // not so on x87
    const bool isNegative = *text == '-';
    const char* const first = text + isNegative;
    uint64_t digits = 0;
    const char* at = takeDigits(first, digits);
    ptrdiff_t decimals = 0;
    if (*at == '.') {
        const char* const decimal = at + 1;
        at = takeDigits(decimal, digits);
        decimals = at - decimal;
    }
    const size_t length = static_cast<size_t>(at - first);
    const bool isShort = length - 1 < mostDigits && digits <= largestWhole;  // not empty either
    if (!roundsOnce || !isShort || isCharacter(*at, Exponent)) return nullptr;
    double value = static_cast<double>(static_cast<int64_t>(digits));
    if (decimals != 0) value /= shortPowers[decimals];
    number = isNegative ? -value : value;
    return at;
}

}  // namespace Zant::Language

#endif
