#include "tests/decimalreference.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace DecimalReference {

namespace {

// The rounding errors of logarithm, quotient and product move a threshold by less than this many representable numbers.
constexpr int64_t searchSteps = 4096;

int64_t bitsOf(double v) {
    int64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

double withBits(int64_t bits) {
    double v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

// The smallest number near `centre` for which the condition holds; it holds from there on upwards.
template <class Condition>
double threshold(double centre, Condition holds) {
    int64_t below = std::max<int64_t>(bitsOf(centre) - searchSteps, 0);
    int64_t above = std::min(bitsOf(centre) + searchSteps, bitsOf(std::numeric_limits<double>::infinity()));
    while (above - below > 1) {
        const int64_t middle = below + (above - below) / 2;
        (holds(withBits(middle)) ? above : below) = middle;
    }
    return withBits(above);
}

}  // namespace

// Read at run time: compilers fold pow of constants with another rounding, or make it another function.
double power(int k) {
    volatile double ten = 10.0;
    return std::pow(ten, k);
}

double reach(int k) {
    return threshold(power(k), [k](double a) { return std::log(a) / 2.302585092994046 >= k; });
}

double moreDigits(int count) {
    if (count == 0) return 0.0;
    const double scale = power(-count);
    return std::min(reach(count), threshold(power(count), [scale](double a) { return a * scale >= 1.0; }));
}

}  // namespace DecimalReference
