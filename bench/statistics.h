#ifndef ZANT_BENCH_STATISTICS_H
#define ZANT_BENCH_STATISTICS_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// The value below which a part of the others lies, 0.5 for the median. Takes values in any order, at least one.
inline double quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

/// How many times as long something took as something else, with the interval that holds the true median in 95 of 100
/// runs.
struct Ratio {
    double median, low, high;

    /// Whether a target is missed for certain: noise alone does not put the whole interval above it.
    bool misses(double target) const { return low > target; }
};

/// Compares two series of times, turn by turn: what slows the machine for a while slows both. The interval is read off
/// the sorted ratios, whatever their distribution: 1.96 standard deviations of the place of the median to either side.
inline Ratio ratioOf(const std::vector<double>& times, const std::vector<double>& others) {
    std::vector<double> ratios;
    for (size_t i = 0; i < std::min(times.size(), others.size()); ++i)
        ratios.push_back(times[i] / others[i]);
    std::sort(ratios.begin(), ratios.end());
    const double last = static_cast<double>(ratios.size()) - 1;
    const double reach = 1.96 * std::sqrt(static_cast<double>(ratios.size())) / 2;
    const auto at = [&](double place) { return ratios[static_cast<size_t>(std::clamp(place, 0.0, last))]; };
    return {at(last / 2), at(std::floor(last / 2 - reach)), at(std::ceil(last / 2 + reach))};
}

#endif
