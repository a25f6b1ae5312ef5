#ifndef ZANT_OWN_DECIMALTABLES_H
#define ZANT_OWN_DECIMALTABLES_H

#include <cstdint>

#include "own/cxx17.h"

namespace Zant {

/// What the number text needs of `pow` and `log`, as constants: the results that the functions of the reference
/// platform (Linux on x86-64, rounding to nearest) give. They are not those of decimal literals, which may differ in
/// the last bit, and not those of the platform that the library runs on: number text has the same bytes everywhere,
/// whatever the host's rounding mode, traps and flags are.
///
/// Threads: read them on any thread, also before main.
class DecimalTables {
public:
    static constexpr int lowestPower = -324;  ///< pow(10, k) is 0 from here down,
    static constexpr int highestPower = 309;  ///< and infinite from here up
    static constexpr int largestExponent = 300;
    static constexpr int mostDecimals = 8;
    static constexpr int mostWholeDigits = 8;

    static const DecimalTables& get() { return tables_; }

    /// pow(10.0, k) for every int k.
    double power(int k) const { return powers()[k < lowestPower ? lowestPower : k > highestPower ? highestPower : k]; }

    /// pow(10.0, k) at p[k], for k from lowestPower to highestPower.
    const double* powers() const { return powers_ - lowestPower; }

    /// The smallest number whose decimal exponent, taken from the logarithm, is k; from lowestPower to highestPower,
    /// which no finite number reaches.
    double reach(int k) const { return reaches_[k - lowestPower]; }

    /// The decimal exponent of a positive finite number.
    int exponent(double a) const;

    /// The smallest number that is written with more than `count` digits before the point, up to mostWholeDigits: the
    /// power of ten that has more, or a few units in the last place below it.
    double moreDigits(int count) const { return moreDigits_[count]; }

    /// The three digits of v, which is below 1000, as values 0 to 9, the first in the lowest byte.
    uint64_t threeDigits(uint32_t v) const { return threeDigits_[v]; }

    /// The text of v, which is below 1000, without leading zeros, and its length in the last byte.
    uint32_t wholeText(uint32_t v) const { return wholeTexts_[v]; }

    /// "e-12" for -12, then a terminator, then its length in the last byte; up to largestExponent either way.
    uint64_t exponentText(int exponent) const { return exponentTexts_[exponent + largestExponent]; }

private:
    constexpr DecimalTables();

    static const DecimalTables tables_;

    double powers_[highestPower - lowestPower + 1] = {};
    double reaches_[highestPower - lowestPower + 1] = {};
    double moreDigits_[mostWholeDigits + 1] = {};
    uint32_t threeDigits_[1000] = {};
    uint32_t wholeTexts_[1000] = {};
    uint64_t exponentTexts_[2 * largestExponent + 1] = {};
};

}  // namespace Zant

#endif
