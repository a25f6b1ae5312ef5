#include "numbercheck.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "number_cases.h"
#include "own/str2num.h"

namespace {

using namespace Zant;

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

int valueOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    return 99;
}

/// Digits of a radix, slowly. @return how many there are
size_t slowDigits(const char* text, int radix, size_t& value) {
    value = 0;
    size_t count = 0;
    for (; valueOf(text[count]) < radix; ++count)
        value = value * static_cast<size_t>(radix) + static_cast<size_t>(valueOf(text[count]));
    return count;
}

std::string checkIntegers(const char* text) {
    for (const int radix : {2, 8, 10, 16, 36}) {
        size_t expected = 0;
        const size_t length = slowDigits(text, radix, expected);
        const char* p = text;
        const size_t value = modulo_2_size_t(p, radix);
        if (value != expected || p != text + length) return quoted(text) + " in radix " + std::to_string(radix);

        const bool minus = *text == '-';
        const size_t digits = slowDigits(text + minus, radix, expected);
        p = text;
        const unsigned integer = static_cast<unsigned>(modulo_2_int(p, radix));
        const unsigned magnitude = static_cast<unsigned>(expected);
        if (integer != (minus ? 0u - magnitude : magnitude) || p != text + minus + digits)
            return quoted(text) + " as an integer in radix " + std::to_string(radix);
    }
    return {};
}

/// Of short texts also the value: long ones gather rounding errors, and huge exponents wrap.
std::string checkDecimal(const char* text) {
    const char* p = text;
    const double value = sdecimal_2_double(p);
    const std::string consumed(text, static_cast<size_t>(p - text));
    if (consumed.find_first_not_of("-0123456789.eE+") != std::string::npos) return quoted(consumed) + " is no number";
    const size_t first = consumed.find_first_of("0123456789.eE");
    if (first == std::string::npos || consumed.size() > 18 || consumed[first] == 'e' || consumed[first] == 'E')
        return {};
    const size_t exponent = consumed.find_first_of("eE");
    if (exponent != std::string::npos && consumed.size() - exponent > 4) return {};
    std::string standard = consumed;  // "e+-3" counts as e-3 here
    if (const size_t both = standard.find("+-"); both != std::string::npos) standard.erase(both, 1);
    const double expected = std::strtod(standard.c_str(), nullptr);
    if (value == expected || std::fabs(value - expected) <= 1e-12 * std::fabs(expected)) return {};
    if (std::fabs(expected) < 1e-290 || std::fabs(expected) > 1e290) return {};
    return quoted(consumed) + " reads " + std::to_string(value);
}

}  // namespace

std::string checkReading(std::string_view text) {
    std::vector<char> exact(text.size() + 1, 0);
    if (!text.empty()) std::memcpy(exact.data(), text.data(), text.size());
    const std::string fault = checkIntegers(exact.data());
    return fault.empty() ? checkDecimal(exact.data()) : fault;
}

std::string checkWriting(double number, unsigned choice) {
    const int decimals = static_cast<int>(choice % 13);
    const int limit = static_cast<int>(choice / 13 % 8);
    const size_t room = choice / 104 % 3 == 0 ? choice / 312 % 40 : 30;
    const std::string difference = differenceToOracle(number, room, decimals, limit);
    if (!difference.empty()) return difference;

    char text[64];
    size_t left = 40;
    double_2_sci(number, text, left, 8, 5);
    const char* p = text;
    const double back = sdecimal_2_double(p);
    if (*p != 0) return quoted(text) + " is not read to its end";
    const double magnitude = std::fabs(number);
    if (!(magnitude > 1e-290 && magnitude < 1e290)) return {};
    // Eight decimals, of the number or of its mantissa. The last one that is written may be a unit low; and where a
    // digit was rounded up by its product, nines and zeros may follow it: 419423999.49999994 reads "4.194249e8".
    const char* const point = std::strchr(text, '.');
    size_t written = point ? std::strspn(point + 1, "0123456789") : 0;
    while (written > 0 && (point[written] == '9' || point[written] == '0'))
        --written;
    const double scale = std::strchr(text, 'e') ? magnitude : 1;
    const double tolerance = (std::pow(10.0, -static_cast<double>(written)) + 1.1e-8) * scale + 1e-12 * magnitude;
    return std::fabs(back - number) <= tolerance ? "" : quoted(text) + " is not the text of its number";
}
