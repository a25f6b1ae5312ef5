#ifndef ZANT_TESTS_NUMBER_CASES_H
#define ZANT_TESTS_NUMBER_CASES_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

/// Numbers that are likely to be written wrongly, without end: the kinds take turns, so that each gets its share.
class NumberCases {
public:
    explicit NumberCases(uint64_t seed) : engine_(seed) {}

    double next();

    static constexpr int kinds = 11;

private:
    uint64_t below(uint64_t limit) { return engine_() % limit; }
    double uniform() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
    double magnitude(int kind);

    std::mt19937_64 engine_;
    int turn_ = 0;
};

/// The number that is `steps` representable numbers away from v, which is positive.
double stepped(double v, int64_t steps);

/// Writes x with the library and with the definition, into areas of equal content.
/// @return nothing if text, room left and every byte around agree; else what differs
std::string differenceToOracle(double x, size_t room, int decimals, int maxExp);

#endif
