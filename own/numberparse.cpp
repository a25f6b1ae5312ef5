// Text to numbers, digit by digit.
#include "own/decimaltables.h"
#include "own/str2num.h"

namespace Zant {

namespace {

int wrapToInt(size_t v) {
    return static_cast<int>(static_cast<unsigned int>(v));
}

int negateWrapping(int v) {
    return wrapToInt(0u - static_cast<unsigned int>(v));
}

// Of a decimal digit 0 to 9, of anything else more.
unsigned decimalDigit(char c) {
    return static_cast<unsigned>(c) - '0';
}

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    return 127;
}

double addDecimals(double value, const char*& p) {
    const double* const powers = DecimalTables::get().powers();
    const double* power = powers + 1;
    for (unsigned digit; (digit = decimalDigit(*p)) < 10; ++p) {
        value += static_cast<int>(digit) / *power;
        power += power != powers + DecimalTables::highestPower;  // infinite from there on
    }
    return value;
}

}  // namespace

size_t modulo_2_size_t(const char*& p, int radix) {
    size_t value = 0;
    for (int digit; (digit = digitValue(*p)) < radix; ++p) {
        value = value * static_cast<size_t>(radix) + static_cast<size_t>(digit);
    }
    return value;
}

int modulo_2_int(const char*& p, int radix) {
    const bool negative = *p == '-';
    if (negative) ++p;
    const int value = wrapToInt(modulo_2_size_t(p, radix));
    return negative ? negateWrapping(value) : value;
}

double udecimal_2_double(const char*& p) {
    double value = 0.0;
    for (unsigned digit; (digit = decimalDigit(*p)) < 10; ++p)
        value = value * 10.0 + static_cast<int>(digit);
    if (*p == '.') value = addDecimals(value, ++p);
    if (*p != 'e' && *p != 'E') return value;
    ++p;
    if (*p == '+') ++p;
    return value * DecimalTables::get().power(modulo_2_int(p, 10));
}

double sdecimal_2_double(const char*& p) {
    const bool negative = *p == '-';
    if (negative) ++p;
    const double value = udecimal_2_double(p);
    return negative ? -value : value;
}

}  // namespace Zant
