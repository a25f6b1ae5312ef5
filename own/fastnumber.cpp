// The fast path to the text of a number: all digits at once from one product, where that provably gives the digits that
// the definition finds one by one.
//
// The definition takes the digit of a at exponent k from floor(a * 10^k). Let p be the rounded product a * 10^decimals.
// - p lies clear of the integers, by more than rounding errors amount to: every digit is a digit of floor(p).
// - p lies at an integer n: above the last nonzero digit of n, every digit is a digit of n. From there down to the last
//   decimal, the rounded product a * 10^k may fall just short of the integer that n implies at that place; then the
//   digit is one lower (9 in place of 0). So these places are looked at.
// - Rounding shortens the text only where the last decimal is 9, or where a 0 has become a 9 as above.
// What is left (a within rounding errors of an integer that it is not, huge and tiny numbers) goes the general way. So
// do products at an integer where the host rounds otherwise than to nearest.
#include "own/numbertext.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "own/bits.h"
#include "own/decimaltables.h"

#ifdef ZANT_SSE2_CODE
#include <emmintrin.h>
#endif

namespace Zant {

namespace {

template <int value>
using Constant = std::integral_constant<int, value>;

constexpr int mostDecimals = DecimalTables::mostDecimals;
constexpr uint32_t integerPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// The errors of a product with a power of ten, both rounded, stay below this part of it.
constexpr double errorPart = 1.0 / (1LL << 51);
// Up to here they stay below an eighth.
constexpr double largestProduct = 1LL << 48;
// Numbers below have at most eight digits before the point, also when they are rounded up.
constexpr uint32_t wholeLimit = 99999999;
// Integers up to here have been compared with the definition, every one of them, in every rounding mode.
constexpr double largestInteger = 999999.0;

// ---- Eight digits in one word, the first digit in the lowest byte ---------------------------------------------------

constexpr uint64_t zeroCharacters = 0x3030303030303030;

// 1130000 is 001, 130 and 000. The first of these nine digits is shifted out; the others are the word 0x03010100.
uint64_t eightDigits(uint32_t v, const DecimalTables& tables) {
    const uint32_t upper = v / 1000;
    return tables.threeDigits(upper / 1000) >> 8 | tables.threeDigits(upper % 1000) << 16 |
           tables.threeDigits(v % 1000) << 40;
}

uint64_t digitAt(uint64_t digits, int place) {
    return (digits >> (8 * (place - 1))) & 0xFF;
}

// Of digits that are not all zero.
size_t countToLastNonzero(uint64_t digits) {
    return static_cast<size_t>(highestBit(digits)) / 8 + 1;
}

// Of digits that are not all zero.
int countLeadingZeros(uint64_t digits) {
    return lowestBit(digits) / 8;
}

void store(char* out, uint64_t characters) {
    std::memcpy(out, &characters, sizeof characters);
}

// ---- Where products fall short --------------------------------------------------------------------------------------

constexpr double toInteger = 3LL << 51;  // added and taken off, it rounds what is below 2^51

// The highest bit of a byte for each place, up to the eighth, at which v falls short of the integer that it is nearest
// to; the lower bits have no meaning. All places are looked at: that is faster than to stop early.
#ifdef ZANT_SSE2_CODE
__m128i shortPair(__m128d v, const double* powers) {
    const __m128d shift = _mm_set1_pd(toInteger);
    const __m128d product = _mm_mul_pd(v, _mm_loadu_pd(powers));
    return _mm_castpd_si128(_mm_cmplt_pd(product, _mm_sub_pd(_mm_add_pd(product, shift), shift)));
}

uint64_t shortPlaces(double v, const double* powers) {
    const __m128d both = _mm_set1_pd(v);
    const __m128i first = _mm_packs_epi32(shortPair(both, powers + 1), shortPair(both, powers + 3));
    const __m128i last = _mm_packs_epi32(shortPair(both, powers + 5), shortPair(both, powers + 7));
    const __m128i all = _mm_packs_epi16(first, last);  // two bytes for each place
    return static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_packs_epi16(all, all)));
}
#else
uint64_t shortPlaces(double v, const double* powers) {
    uint64_t places = 0;
    for (int k = 1; k <= mostDecimals; ++k) {
        const double product = v * powers[k];
        places |= uint64_t{product < product + toInteger - toInteger} << (8 * k - 1);
    }
    return places;
}
#endif

// ---- The digits of a number -----------------------------------------------------------------------------------------

struct Product {
    Product(double a, double power)
        : value(a * power), floor(static_cast<int64_t>(value)), rest(value - static_cast<double>(floor)) {}

    bool isClear() const { return std::fabs(rest - 0.5) < 0.5 - value * errorPart; }
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): nothing clear is near a half
    int64_t nearest() const { return static_cast<int64_t>(value + 0.5); }

    double value;
    int64_t floor;
    double rest;
};

// Whether the product of a with every power of ten up to the eighth is exact: 5^8 has 19 bits.
bool isShort(double a) {
    uint64_t bits;
    std::memcpy(&bits, &a, sizeof bits);
    return (bits & 0x7FFFF) == 0;
}

// Whether sums are rounded to nearest; a is not zero. The host may have set another mode.
bool isRoundedToNearest(double a) {
    const double tiny = a * 0x1p-60;
    return a + tiny == a - tiny;
}

// Finds the digits of numbers that are not negative, for one count of decimals (an int, or a constant).
template <class Count>
class FastDigits {
public:
    FastDigits(const DecimalTables& tables, Count decimalCount) : tables_(tables), count_(decimalCount) {}

    // Whether the fast path takes a, which is not negative and within isInRange().
    bool find(double a) {
        const Product product(a, tables_.powers()[count_]);
        // Short first, which is known early and is mostly so or mostly not: binary fractions such as 0.5.
        if (isShort(a) && product.rest == 0) return split(a, product.floor);
        if (!product.isClear()) return findAtInteger(a, product);
        split(a, product.floor);
        // A rest below 0.4 stays below one when half a unit is added, errors included.
        if (digitAt(decimals, count_) != 9 || product.rest < 0.4) return true;
        return round(a, product.floor);
    }

    double value;       // the number that is written: the rounded one where that changes the digits before the point
    uint32_t whole;     // its digits before the point,
    uint64_t decimals;  // and after it, padded with zeros

private:
    // Splits n units of the last decimal; false if the decimals are all zero.
    bool split(double v, int64_t n) {
        value = v;
        whole = static_cast<uint32_t>(v);
        const uint64_t part = static_cast<uint64_t>(n) - static_cast<uint64_t>(whole) * integerPowers[count_];
        decimals = eightDigits(static_cast<uint32_t>(part) * integerPowers[mostDecimals - count_], tables_);
        return part - 1 < integerPowers[count_] - 1u;
    }

    // The last place where v falls short of the integer that it is nearest to, as a 1 in the byte of its digit; or 0.
    // 0.0113 falls short at place 4 alone, as 112.99999999999999: the highest bit is in byte 3, and the result 1 << 24.
    uint64_t lastShortPlace(double v) const {
        const uint64_t places = shortPlaces(v, tables_.powers()) & UINT64_MAX >> (8 * (mostDecimals - count_));
        return 1ULL << highestBit(places | 1) >> 7;
    }

    bool findAtInteger(double a, const Product& product) {
        if (!isRoundedToNearest(a)) return false;
        const uint64_t place = lastShortPlace(a);
        if (!split(a, product.nearest())) return false;
        // Computed rather than branched, as both come often. After the last nonzero digit: a 9 has come up, and
        // rounding makes the text shorter again. At the last nonzero digit: it is one lower.
        // 0.0113, decimals 0x03010100, is short at place 4, 0x01000000: at its last digit, so that it reads 0.0112.
        // 0.29, decimals 0x0902, is short at place 8 as well: 0.28999999 is rounded to 0.29.
        const bool isAfter = place > decimals;
        const bool isAtLast = (place > decimals >> 8) & !isAfter;
        decimals -= isAtLast ? place : 0;
        return true;
    }

    // Takes the rounded number if that ends earlier: the last decimal of a is 9. `floor` is that of its product.
    bool round(double a, int64_t floor) {
        const double rounded = a + 5.0 * tables_.powers()[-1 - count_];
        const Product product(rounded, tables_.power(count_));
        if (product.floor == floor) return true;
        if (product.floor != floor + 1) return false;
        const bool hasDecimals = split(rounded, product.floor);
        if (product.isClear()) return true;
        return hasDecimals && isRoundedToNearest(a) && lastShortPlace(rounded) <= decimals >> 8;
    }

    const DecimalTables& tables_;
    const Count count_;
};

// ---- Writing --------------------------------------------------------------------------------------------------------

char* terminated(char* end) {
    *end = 0;
    return end;
}

// Returns the count of digits.
int writeWhole(char* out, uint32_t whole, const DecimalTables& tables) {
    if (whole < 1000) {
        const uint32_t text = tables.wholeText(whole);
        std::memcpy(out, &text, sizeof text);
        return static_cast<int>(text >> 24);
    }
    const uint64_t digits = eightDigits(whole, tables);
    const int zeros = countLeadingZeros(digits);
    store(out, (digits | zeroCharacters) >> (8 * zeros));
    return 8 - zeros;
}

char* writeDecimals(char* out, uint64_t decimals) {
    *out = '.';
    store(out + 1, decimals | zeroCharacters);
    return terminated(decimals == 0 ? out : out + 1 + countToLastNonzero(decimals));
}

bool isSmallInteger(double a) {
    return a <= largestInteger && a == static_cast<int>(a);
}

int decimalExponent(double a, const DecimalTables& tables) {
    uint64_t bits;
    std::memcpy(&bits, &a, sizeof bits);
    const int binary = static_cast<int>(bits >> 52) - 1023;
    const int least = (binary * 315653) >> 20;  // binary * log10(2), rounded down
    return least + (a >= tables.reach(least + 1));
}

bool hasExponent(double a, const DecimalTables& tables) {
    return a >= tables.reach(-DecimalTables::largestExponent) && a < tables.reach(DecimalTables::largestExponent);
}

char* writeInteger(double a, char* out, const DecimalTables& tables) {
    return terminated(out + writeWhole(out, static_cast<uint32_t>(a), tables));
}

// Whether a product of a, which is below the power of ten after the limit, can be looked at.
bool isInRange(double a, const DecimalTables& tables, int decimals, int) {
    return a < wholeLimit && a * tables.powers()[decimals] < largestProduct;
}

template <int decimals, int limit>
constexpr bool isInRange(double, const DecimalTables&, Constant<decimals>, Constant<limit>) {
    static_assert(limit + 1 <= mostDecimals && limit + 1 + decimals <= 14, "10^14 is below the largest product");
    return true;
}

// Returns the place of the terminator, or null for the general way.
template <class Count>
char* writeFraction(double a, char* out, const DecimalTables& tables, Count decimals) {
    FastDigits<Count> number(tables, decimals);
    if (!number.find(a)) return nullptr;
    const int count = writeWhole(out, number.whole, tables);
    // Just below a power of ten the definition may write a digit more.
    if (number.value >= tables.moreDigits(count)) return nullptr;
    return writeDecimals(out + count, number.decimals);
}

// With an exponent.
template <class Count>
ZANT_NOINLINE char* writeScientific(double a, char* out, const DecimalTables& tables, Count decimals) {
    if (!hasExponent(a, tables)) return nullptr;
    const int exponent = decimalExponent(a, tables);
    const double mantissa = a / tables.powers()[exponent];
    char* const end =
        isSmallInteger(mantissa) ? writeInteger(mantissa, out, tables) : writeFraction(mantissa, out, tables, decimals);
    if (!end) return nullptr;
    const uint64_t tail = tables.exponentText(exponent);
    store(end, tail);
    return end + (tail >> 56);
}

// For any count of decimals and limit of the exponent that there are tables for, or for constants.
template <class Count, class Limit>
char* writeSigned(double x, char* out, Count decimals, Limit maxExp) {
    const DecimalTables& tables = DecimalTables::get();
    const double a = std::fabs(x);
    *out = '-';
    out += x < 0;
    if (isSmallInteger(a) && a < tables.reach(maxExp + 1)) return writeInteger(a, out, tables);
    if (!(a >= tables.reach(-maxExp) && a < tables.reach(maxExp + 1))) return writeScientific(a, out, tables, decimals);
    return isInRange(a, tables, decimals, maxExp) ? writeFraction(a, out, tables, decimals) : nullptr;
}

char* writeAsDouble(double x, char* out) {
    return writeSigned(x, out, Constant<doubleStyle.decimals>(), Constant<doubleStyle.exponentLimit>());
}

}  // namespace

char* fastNumberText(double x, char* out, int decimals, int maxExp) {
    if (maxExp < 0 || maxExp >= DecimalTables::largestExponent || decimals < 1 || decimals > mostDecimals)
        return nullptr;
    if (decimals == doubleStyle.decimals && maxExp == doubleStyle.exponentLimit) return writeAsDouble(x, out);
    return writeSigned(x, out, decimals, maxExp);
}

char* writeNumberText(double v, char* out) {
    char* const end = writeAsDouble(v, out);
    return end ? end : generalNumberText(v, out, doubleStyle);
}

char* writeNumberText(int v, char* out) {
    const DecimalTables& tables = DecimalTables::get();
    const uint32_t digits = v < 0 ? 0u - static_cast<uint32_t>(v) : static_cast<uint32_t>(v);
    *out = '-';
    out += v < 0;
    if (digits > wholeLimit) {
        out += writeWhole(out, digits / (wholeLimit + 1), tables);
        store(out, eightDigits(digits % (wholeLimit + 1), tables) | zeroCharacters);
        out += 8;
    } else {
        out += writeWhole(out, digits, tables);
    }
    return terminated(out);
}

}  // namespace Zant
