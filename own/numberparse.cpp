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

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    return 127;
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
    for (int digit; (digit = digitValue(*p)) < 10; ++p)
        value = value * 10.0 + digit;
    if (*p == '.') {
        ++p;
        int k = 1;
        for (int digit; (digit = digitValue(*p)) < 10; ++p, ++k)
            value += digit / DecimalTables::get().power(k);
    }
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
