#include "tests/number_cases.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "own/str2num.h"
#include "tests/number_oracle.h"

double stepped(double v, int64_t steps) {
    int64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    bits += steps;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

double NumberCases::next() {
    const double a = magnitude(turn_++ % kinds);
    return engine_() & 1 ? -a : a;
}

double NumberCases::magnitude(int kind) {
    const int64_t step = static_cast<int64_t>(below(9)) - 4;
    switch (kind) {
        case 0:
            return uniform();
        case 1:
            return uniform() * 1000.0;
        case 2:
            return std::pow(10.0, uniform() * 24.0 - 12.0);
        case 3:
            return static_cast<double>(below(10000000));
        case 4:  // short decimals, as a user types them
            return static_cast<double>(below(1000000)) / std::pow(10.0, static_cast<double>(below(9)));
        case 5:  // and their neighbours
            return std::fabs(
                stepped(static_cast<double>(1 + below(1000000)) / std::pow(10.0, static_cast<double>(below(9))), step));
        case 6:  // where rounding begins to matter: half a unit of one of the decimals
            return stepped(
                (static_cast<double>(below(10000000)) * 10.0 + 9.5) / std::pow(10.0, static_cast<double>(1 + below(9))),
                step);
        case 7:  // the neighbours of powers of ten
            return stepped(std::pow(10.0, static_cast<double>(below(640)) - 330.0), step);
        case 8: {  // every pattern of bits
            const uint64_t bits = engine_() >> 1;
            double v;
            std::memcpy(&v, &bits, sizeof v);
            return v;
        }
        case 9:  // all decimals in use, next to the rounding errors of the largest products
            return std::fabs(stepped(static_cast<double>(1 + below(100000000000000)) / 1e8, step));
        default:  // few bits, at exponents that are in use
            return std::ldexp(static_cast<double>(below(1 << 20)), static_cast<int>(below(50)) - 35);
    }
}

std::string differenceToOracle(double x, size_t room, int decimals, int maxExp) {
    constexpr size_t guard = 8;
    char expected[128];
    char actual[128];
    std::memset(expected, 0x5A, sizeof expected);
    std::memset(actual, 0x5A, sizeof actual);
    size_t expectedRoom = room;
    size_t actualRoom = room;
    Oracle::sci(x, expected + guard, expectedRoom, decimals, maxExp);
    Zant::double_2_sci(x, actual + guard, actualRoom, decimals, maxExp);
    if (actualRoom == expectedRoom && std::memcmp(expected, actual, sizeof expected) == 0) return {};
    expected[127] = actual[127] = 0;
    char line[512];
    std::snprintf(line, sizeof line,
                  "%.17g with room %zu, %d decimals, limit %d: expected \"%s\" (left %zu), got \"%s\" (left %zu)", x,
                  room, decimals, maxExp, expected + guard, expectedRoom, actual + guard, actualRoom);
    return line;
}
