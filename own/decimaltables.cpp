#include "own/decimaltables.h"

#include <cmath>
#include <cstring>

#include "own/str2num.h"

namespace Zant {

namespace {

constexpr double naturalLogarithmOf10 = 2.302585092994046;

// The rounding errors of logarithm and quotient move a threshold by less than this many representable numbers.
constexpr int64_t searchSteps = 4096;

// Read at run time: compilers fold pow of constants with another rounding, or make it another function.
double powerOfTen(int k) {
    volatile double ten = 10.0;
    return std::pow(ten, k);
}

double stepped(double v, int64_t steps) {
    int64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    bits += steps;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

// The smallest number near `centre` for which the condition holds; it holds from there on upwards.
template <class Condition>
double threshold(double centre, Condition holds) {
    int64_t below = -searchSteps;
    int64_t above = searchSteps;
    while (above - below > 1) {
        const int64_t middle = below + (above - below) / 2;
        (holds(stepped(centre, middle)) ? above : below) = middle;
    }
    return stepped(centre, above);
}

uint64_t textOfExponent(int exponent) {
    char text[8] = {'e'};
    size_t room = sizeof text - 1;
    int_2_modulo(exponent, text + 1, room, 0, 10);
    text[7] = static_cast<char>(std::strlen(text));
    uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

}  // namespace

// Initialised by the loader, so before any static constructor runs.
std::atomic<const DecimalTables*> DecimalTables::filled_{nullptr};

const DecimalTables& DecimalTables::fill() {
    static const DecimalTables tables;
    filled_.store(&tables, std::memory_order_release);
    return tables;
}

DecimalTables::DecimalTables() {
    for (int k = lowestPower; k <= highestPower; ++k)
        powers_[k - lowestPower] = powerOfTen(k);
    for (int d = 0; d <= mostDecimals; ++d)
        halves_[d] = 5.0 * power(-(d + 1));
    for (int k = -largestExponent - 1; k <= largestExponent + 1; ++k) {
        reaches_[k + largestExponent + 1] =
            threshold(power(k), [k](double a) { return std::log(a) / naturalLogarithmOf10 >= k; });
    }
    moreDigits_[0] = 0.0;
    for (int count = 1; count <= mostWholeDigits; ++count) {
        const double scale = power(-count);
        const double nextDigit = threshold(power(count), [scale](double a) { return a * scale >= 1.0; });
        moreDigits_[count] = nextDigit < reach(count) ? nextDigit : reach(count);
    }
    for (uint32_t v = 0; v < 1000; ++v) {
        threeDigits_[v] = v / 100 | v / 10 % 10 << 8 | v % 10 << 16;
        digitCounts_[v] = v < 10 ? 1 : v < 100 ? 2 : 3;
    }
    for (int e = -largestExponent; e <= largestExponent; ++e)
        exponentTexts_[e + largestExponent] = textOfExponent(e);
}

}  // namespace Zant
