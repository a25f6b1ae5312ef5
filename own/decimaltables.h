#ifndef ZANT_OWN_DECIMALTABLES_H
#define ZANT_OWN_DECIMALTABLES_H

#include <atomic>
#include <cstdint>

namespace Zant {

/// What the number text needs of `pow` and `log`, looked up instead of computed: every entry is the result of the
/// platform's function, not of a literal, because the two may differ in the last bit.
class DecimalTables {
public:
    static constexpr int lowestPower = -324;  ///< pow(10, k) is 0 from here down,
    static constexpr int highestPower = 309;  ///< and infinite from here up
    static constexpr int largestExponent = 300;
    static constexpr int mostDecimals = 8;
    static constexpr int mostWholeDigits = 8;

    /// The tables, filled on first use: from any thread, also before main.
    static const DecimalTables& get() {
        const DecimalTables* tables = getIfFilled();
        return tables ? *tables : fill();
    }

    /// The tables, or null before the first use.
    static const DecimalTables* getIfFilled() { return filled_.load(std::memory_order_acquire); }

    /// pow(10.0, k) for every int k.
    double power(int k) const {
        return powers_[(k < lowestPower ? lowestPower : k > highestPower ? highestPower : k) - lowestPower];
    }

    /// pow(10.0, k) at p[k], for k from lowestPower to highestPower.
    const double* powers() const { return powers_ - lowestPower; }

    /// 5.0 * pow(10.0, -(decimals + 1)): half of the last decimal, up to mostDecimals.
    double half(int decimals) const { return halves_[decimals]; }

    /// The smallest number whose decimal exponent, taken from the logarithm, is k; up to largestExponent + 1 either
    /// way.
    double reach(int k) const { return reaches_[k + largestExponent + 1]; }

    /// The smallest number that is written with more than `count` digits before the point, up to mostWholeDigits.
    double moreDigits(int count) const { return moreDigits_[count]; }

    /// The three digits of v, which is below 1000, as values 0 to 9, the first in the lowest byte.
    uint64_t threeDigits(uint32_t v) const { return threeDigits_[v]; }

    /// The count of the digits of v, which is below 1000, without leading zeros.
    int digitCount(uint32_t v) const { return digitCounts_[v]; }

    /// "e-12" for -12, then a terminator, then its length in the last byte; up to largestExponent either way.
    uint64_t exponentText(int exponent) const { return exponentTexts_[exponent + largestExponent]; }

private:
    DecimalTables();

    static const DecimalTables& fill();

    static std::atomic<const DecimalTables*> filled_;

    double powers_[highestPower - lowestPower + 1];
    double halves_[mostDecimals + 1];
    double reaches_[2 * largestExponent + 3];
    double moreDigits_[mostWholeDigits + 1];
    uint32_t threeDigits_[1000];
    unsigned char digitCounts_[1000];
    uint64_t exponentTexts_[2 * largestExponent + 1];
};

}  // namespace Zant

#endif
