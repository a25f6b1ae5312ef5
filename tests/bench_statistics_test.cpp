// When a benchmark's target counts as missed.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "bench/statistics.h"

namespace {

/// Times that lie around 100 times a factor, `noise` of them to either side.
std::vector<double> timesAround(double factor, double noise, unsigned seed, size_t rounds = 101) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> part(1 - noise, 1 + noise);
    std::vector<double> times;
    for (size_t i = 0; i < rounds; ++i)
        times.push_back(100 * factor * part(random));
    return times;
}

TEST(BenchStatistics, ATargetIsMissedOnlyForCertain) {
    const struct {
        double factor, noise, target;
        bool missed;
    } rows[] = {
        {1.02, 0.5, 1.0, false},  // a median above the target, and an interval that holds it
        {1.02, 0.001, 1.0, true}, {1.5, 0.3, 1.0, true}, {0.5, 0.3, 1.0, false}, {0.4, 0.0, 0.4, false},
    };
    for (const auto& row : rows) {
        const Ratio ratio = ratioOf(timesAround(row.factor, row.noise, 1), timesAround(1, row.noise, 2));
        EXPECT_EQ(ratio.misses(row.target), row.missed) << ratio.low << ' ' << ratio.median << ' ' << ratio.high;
        EXPECT_TRUE(ratio.low <= ratio.median && ratio.median <= ratio.high);
    }
}

TEST(BenchStatistics, TheIntervalHoldsTheTruthInNineteenOfTwentyRuns) {
    int held = 0;
    for (unsigned run = 0; run < 1000; ++run) {
        const Ratio ratio = ratioOf(timesAround(1, 0.4, 2 * run), timesAround(1, 0.4, 2 * run + 1));
        held += ratio.low <= 1 && 1 <= ratio.high;
    }
    EXPECT_NEAR(held, 955, 20);
}

TEST(BenchStatistics, TurnsAreComparedWithTurns) {
    // A machine that gets slower and slower: medians of the two sides say little, each pair says all.
    std::vector<double> times, others;
    for (int i = 1; i <= 41; ++i) {
        others.push_back(i);
        times.push_back(0.5 * i);
    }
    const Ratio ratio = ratioOf(times, others);
    EXPECT_EQ(ratio.low, 0.5);
    EXPECT_EQ(ratio.high, 0.5);
    const Ratio single = ratioOf({3}, {2});
    EXPECT_EQ(single.median, 1.5);
}

}  // namespace
