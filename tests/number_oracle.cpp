#include "tests/number_oracle.h"

#include <cfenv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace Oracle {

namespace {

// Powers and logarithms are constants; all other arithmetic runs in the mode of the host.
class Nearest {
public:
    Nearest() { std::fesetround(FE_TONEAREST); }
    ~Nearest() { std::fesetround(mode_); }

private:
    const int mode_ = std::fegetround();
};

double powerOfTen(int k) {
    const Nearest nearest;
    // Not a constant to the compiler, which would fold pow with another rounding or call another function for it.
    volatile double ten = 10.0;
    return std::pow(ten, k);
}

double decimalLogarithm(double a) {
    const Nearest nearest;
    volatile double logarithm = std::log(a);
    volatile double quotient = logarithm / 2.302585092994046;
    return quotient;
}

int toInt(double v) {
    if (std::isnan(v) || v >= 2147483648.0 || v <= -2147483649.0) return INT_MIN;
    return static_cast<int>(v);
}

void put(char*& out, size_t& room, char c) {
    if (room == 0) return;
    *out++ = c;
    --room;
}

}  // namespace

int digit(double a, int k) {
    const double t = std::floor(a * powerOfTen(k));
    const double value = t - std::floor(t / 10.0) * 10.0 + 0.5;
    const int low = toInt(value) & 0xFF;
    if (low >= 0x80) return 0;
    return low > 9 ? 9 : low;
}

int predotCount(double a) {
    if (a == 0) return 1;
    const int m = toInt(decimalLogarithm(a));
    const long long above = -static_cast<long long>(m) - 1;
    int count = m == INT_MIN ? m + 1 : m + 1 + (digit(a, static_cast<int>(above)) > 0);
    return count < 1 ? 1 : count;
}

void decimal(double x, char* out, size_t& room, int decimals, char fill) {
    if (room == 0) return;
    --room;
    const bool negative = x < 0;
    const double a = std::fabs(x);
    const int count = predotCount(a);
    const size_t width = static_cast<size_t>(count + decimals + (decimals != 0));
    if (fill != 0 && room > width) {
        for (size_t i = room - width - negative; i != 0; --i)
            put(out, room, fill);
    }
    if (negative) put(out, room, '-');
    for (int k = 1 - count; k <= 0; ++k)
        put(out, room, static_cast<char>('0' + digit(a, k)));
    if (decimals != 0) put(out, room, '.');
    for (int k = 1; k <= decimals; ++k)
        put(out, room, static_cast<char>('0' + digit(a, k)));
    *out = 0;
}

void natural(double x, char* out, size_t& room, int maxDecimals, char fill) {
    const double sign = x < 0 ? -1.0 : 1.0;
    const double a = std::fabs(x);
    if (maxDecimals <= 0) return decimal(sign * a, out, room, 0, fill);
    const double r = a + 5.0 * powerOfTen(-(maxDecimals + 1));
    int lastOfA = maxDecimals;
    while (lastOfA > 0 && digit(a, lastOfA) == 0)
        --lastOfA;
    int lastOfR = maxDecimals;
    while (lastOfR > 0 && digit(r, lastOfR) == 0)
        --lastOfR;
    if (lastOfA > lastOfR) return decimal(sign * r, out, room, lastOfR, fill);
    decimal(sign * a, out, room, lastOfA, fill);
}

void sci(double x, char* out, size_t& room, int decimals, int maxExp) {
    const int e = toInt(std::floor(decimalLogarithm(std::fabs(x))));
    const bool scientific = e != INT_MIN && (e < 0 ? -e : e) > maxExp;
    const size_t before = room;
    natural(scientific ? x / powerOfTen(e) : x, out, room, decimals, 0);
    if (!scientific || room < 2) return;
    char text[16];
    const int length = std::snprintf(text, sizeof text, "e%d", e);
    char* at = out + (before - room - 1);
    // The exponent takes the place of the terminator and ends in one of its own.
    const size_t kept = static_cast<size_t>(length) < room ? static_cast<size_t>(length) : room;
    std::memcpy(at, text, kept);
    at[kept] = 0;
    room -= kept;
}

}  // namespace Oracle
