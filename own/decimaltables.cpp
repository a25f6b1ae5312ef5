#include "own/decimaltables.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>

namespace Zant {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

constexpr uint64_t textOfExponent(int exponent) {
    uint64_t text = 'e';
    uint64_t length = 1;
    if (exponent < 0) text |= uint64_t{'-'} << 8 * length++;
    const unsigned magnitude = static_cast<unsigned>(exponent < 0 ? -exponent : exponent);
    for (unsigned weight = magnitude < 10 ? 1 : magnitude < 100 ? 10 : 100; weight != 0; weight /= 10)
        text |= uint64_t{'0' + magnitude / weight % 10} << 8 * length++;
    return text | length << 56;
}

#include "own/decimaltables.inl"

template <size_t count>
constexpr void copyTable(const double (&from)[count], double (&to)[count]) {
    for (size_t i = 0; i < count; ++i)
        to[i] = from[i];
}

}  // namespace

constexpr DecimalTables::DecimalTables() {
    copyTable(powersOfTen, powers_);
    copyTable(exponentThresholds, reaches_);
    copyTable(digitThresholds, moreDigits_);
    for (uint32_t v = 0; v < 1000; ++v) {
        threeDigits_[v] = v / 100 | v / 10 % 10 << 8 | v % 10 << 16;
        const uint32_t leadingZeros = v < 10 ? 2 : v < 100 ? 1 : 0;
        wholeTexts_[v] = (threeDigits_[v] | 0x303030) >> 8 * leadingZeros | (3 - leadingZeros) << 24;
    }
    for (int e = -largestExponent; e <= largestExponent; ++e)
        exponentTexts_[e + largestExponent] = textOfExponent(e);
}

// Initialised by the compiler, so before any static constructor runs.
const DecimalTables DecimalTables::tables_ = DecimalTables();

int DecimalTables::exponent(double a) const {
    return lowestPower - 1 + static_cast<int>(std::upper_bound(std::begin(reaches_), std::end(reaches_), a) - reaches_);
}

}  // namespace Zant
