// The quick way to the text of a number: all digits at once from one product, where that provably gives the digits that
// the definition finds one by one.
//
// The definition takes the digit of a at exponent k from floor(a * 10^k). Let p be the rounded product a * 10^decimals.
// - p lies clear of the integers, by more than rounding errors amount to: every digit is a digit of floor(p).
// - p lies at an integer n: above the last nonzero digit of n, every digit is a digit of n. From there down to the last
//   decimal, the rounded product a * 10^k may fall just short of the integer that n implies at that place; then the
//   digit is one lower (9 in place of 0). So these places are looked at one by one.
// - Rounding shortens the text only where the last decimal is 9, or where a 0 has become a 9 as above.
// What is left (a within rounding errors of an integer that it is not, huge and tiny numbers) has no quick way.
#include "own/numbertext.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "own/decimaltables.h"

namespace Zant {

namespace {

constexpr int mostDecimals = DecimalTables::mostDecimals;
constexpr uint32_t integerPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// The rounding errors of a product with a (rounded) power of ten stay below this part of it.
constexpr double errorPart = 1.0 / (1LL << 51);
// Up to here they stay below an eighth.
constexpr double largestProduct = 1LL << 48;
// Numbers below have at most eight digits before the point.
constexpr double wholeLimit = 1e8;
// Integers up to here have been compared with the definition, every one of them.
constexpr double largestInteger = 1000000.0;

// ---- Eight digits in one word, the first digit in the lowest byte ---------------------------------------------------

constexpr uint64_t zeroCharacters = 0x3030303030303030;

uint64_t eightDigits(uint32_t v) {
    const uint64_t fours = v / 10000 | static_cast<uint64_t>(v % 10000) << 32;
    const uint64_t hundreds = ((fours * 5243) >> 19) & 0x0000007F0000007F;
    const uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
    const uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000F;
    return tens | (twos - tens * 10) << 8;
}

uint64_t digitAt(uint64_t digits, int place) {
    return (digits >> (8 * (place - 1))) & 0xFF;
}

int countToLastNonzero(uint64_t digits) {
    return digits == 0 ? 0 : 8 - __builtin_clzll(digits) / 8;
}

// Of digits that are not all zero.
int countLeadingZeros(uint64_t digits) {
    return __builtin_ctzll(digits) / 8;
}

void store(char* out, uint64_t characters) {
    std::memcpy(out, &characters, sizeof characters);
}

// ---- The digits of a number ----------------------------------------------------------------------------------------

struct Product {
    Product(double a, double power)
        : value(a * power), floor(static_cast<int64_t>(value)), rest(value - static_cast<double>(floor)) {}

    bool isClear() const { return rest > value * errorPart && rest < 1.0 - value * errorPart; }
    int64_t nearest() const { return static_cast<int64_t>(value + 0.5); }

    double value;
    int64_t floor;
    double rest;
};

// Finds the digits of numbers that are not negative, for one count of decimals.
class QuickDigits {
public:
    QuickDigits(const DecimalTables& tables, int decimalCount)
        : tables_(tables),
          count_(decimalCount),
          units_(integerPowers[decimalCount]),
          scale_(integerPowers[mostDecimals - decimalCount]) {}

    // Whether there is a quick way for a, which is not negative.
    bool find(double a) {
        if (!(a < wholeLimit)) return false;
        if (a <= largestInteger && a == static_cast<uint32_t>(a)) return setInteger(a);
        const Product product(a, tables_.power(count_));
        if (product.value >= largestProduct) return false;
        if (!product.isClear()) return findAtInteger(a, product);
        split(a, product.floor);
        // A rest below a quarter stays below one when half a unit is added, errors included.
        if (digitAt(decimals, count_) != 9 || product.rest < 0.25) return true;
        return round(a, product.floor);
    }

    double value;       // the number that is written: the rounded one where that makes the text shorter
    uint32_t whole;     // its digits before the point,
    uint64_t decimals;  // and behind it, padded with zeros

private:
    bool setInteger(double a) {
        value = a;
        whole = static_cast<uint32_t>(a);
        decimals = 0;
        return true;
    }

    // Splits n units of the last decimal; false if the decimals are all zero.
    bool split(double v, int64_t n) {
        value = v;
        whole = static_cast<uint32_t>(v);
        const uint64_t part = static_cast<uint64_t>(n) - static_cast<uint64_t>(whole) * units_;
        decimals = eightDigits(static_cast<uint32_t>(part) * scale_);
        return part - 1 < units_ - 1u;
    }

    // A bit for each place from `last` to the last decimal where v falls short of the integer that n implies.
    unsigned shortPlaces(double v, int64_t n, int last) const {
        const double* powers = tables_.powers();
        const double atLast = static_cast<double>(n) / powers[count_ - last];
        unsigned places = 0;
        for (int k = last; k <= count_; ++k) {
            places |= static_cast<unsigned>(v * powers[k] < atLast * powers[k - last]) << k;
        }
        return places;
    }

    bool findAtInteger(double a, const Product& product) {
        const int64_t n = product.nearest();
        if (!split(a, n)) return false;
        const int last = countToLastNonzero(decimals);
        const unsigned places = shortPlaces(a, n, last);
        if (places == 1u << last) {
            decimals -= 1ULL << (8 * (last - 1));
        } else if (places != 0) {
            // A digit behind the last place has become a 9, and rounding restores n.
            value = a + tables_.half(count_);
        }
        return true;
    }

    // Takes the rounded number if that ends earlier; the last decimal of a is 9, and its product has the floor n - 1.
    bool round(double a, int64_t floor) {
        const double rounded = a + tables_.half(count_);
        const Product product(rounded, tables_.power(count_));
        if (product.floor == floor) return true;
        if (product.floor != floor + 1) return false;
        const bool hasDecimals = split(rounded, product.floor);
        if (product.isClear()) return true;
        return hasDecimals && shortPlaces(rounded, product.floor, countToLastNonzero(decimals)) == 0;
    }

    const DecimalTables& tables_;
    const int count_;
    const uint32_t units_;
    const uint32_t scale_;
};

// ---- Writing
// ---------------------------------------------------------------------------------------------------------

// Returns the place behind the digits, or null where the definition writes another count of digits (next to a power of
// ten).
char* writeWhole(char* out, const DecimalTables& tables, const QuickDigits& number) {
    if (number.whole < 10) {
        *out = static_cast<char>('0' + number.whole);
        return number.value < tables.moreDigits(1) ? out + 1 : nullptr;
    }
    const uint64_t digits = eightDigits(number.whole);
    const int zeros = countLeadingZeros(digits);
    store(out, (digits | zeroCharacters) >> (8 * zeros));
    const int count = 8 - zeros;
    const bool asDefined = number.value >= tables.moreDigits(count - 1) && number.value < tables.moreDigits(count);
    return asDefined ? out + count : nullptr;
}

char* writeDecimals(char* out, uint64_t decimals) {
    const int count = countToLastNonzero(decimals);
    *out = '.';
    store(out + 1, decimals | zeroCharacters);
    return out + count + (count != 0);
}

char* writeExponent(char* out, uint64_t text) {
    store(out, text);
    return out + (text >> 56);
}

char* writeNumber(double a, char* out, const DecimalTables& tables, int decimals) {
    QuickDigits number(tables, decimals);
    if (!number.find(a)) return nullptr;
    char* end = writeWhole(out, tables, number);
    return end ? writeDecimals(end, number.decimals) : nullptr;
}

int decimalExponent(double a, const DecimalTables& tables) {
    uint64_t bits;
    std::memcpy(&bits, &a, sizeof bits);
    const int binary = static_cast<int>(bits >> 52) - 1023;
    const int least = (binary * 315653) >> 20;  // binary * log10(2), rounded down
    return least + (a >= tables.reach(least + 1));
}

}  // namespace

size_t quickNumberText(double x, char* out, int decimals, int maxExp) {
    if (decimals < 1 || decimals > mostDecimals || maxExp < 0 || maxExp >= DecimalTables::largestExponent) return 0;
    const DecimalTables& tables = DecimalTables::get();
    const double a = std::fabs(x);
    *out = '-';
    char* const start = out + (x < 0);
    if ((a >= tables.reach(-maxExp) && a < tables.reach(maxExp + 1)) || a == 0) {
        char* const end = writeNumber(a, start, tables, decimals);
        if (!end) return 0;
        *end = 0;
        return static_cast<size_t>(end - out);
    }
    // Written so that a NaN goes the same way as an infinity.
    if (!(a >= tables.reach(-DecimalTables::largestExponent) && a < tables.reach(DecimalTables::largestExponent)))
        return 0;
    const int exponent = decimalExponent(a, tables);
    char* const end = writeNumber(a / tables.power(exponent), start, tables, decimals);
    if (!end) return 0;
    return static_cast<size_t>(writeExponent(end, tables.exponentText(exponent)) - out);
}

}  // namespace Zant
