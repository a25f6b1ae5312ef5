#ifndef ZANT_BENCH_RATIO_H
#define ZANT_BENCH_RATIO_H

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A contest of several ways to do the same work, on a machine that may be busy: the contestants take turns in one
/// process, each turn is timed, and the medians are compared as ratios to the best peer of the same run.
///
///     Contest contest("dot product", vectors.size());
///     contest.ours("Zant", [&] { ... }, 1.0);   // one turn works through all items; at most 1.0 times the best peer
///     contest.peer("Imath", [&] { ... });
///     allMet &= contest.run();
///
/// A turn should take 50 microseconds or more. Hand its result to keep(), or the compiler removes the work.
class Contest {
public:
    using Turn = std::function<void()>;

    /// @param itemsPerTurn how many items one turn works through; times are printed per item
    Contest(std::string title, size_t itemsPerTurn, size_t rounds = 101)
        : title_(std::move(title)), items_(itemsPerTurn), rounds_(rounds) {}

    /// @param target the largest ratio to the best peer that is accepted, 0 for none
    void ours(std::string name, Turn turn, double target = 0) { add(std::move(name), std::move(turn), false, target); }

    void peer(std::string name, Turn turn) { add(std::move(name), std::move(turn), true, 0); }

    /// Runs all rounds and prints one line per contestant: median time, spread (the distance of the quartiles as a part
    /// of the median: how noisy the machine was), ratio to the best peer, target.
    /// @return whether every target was met
    bool run() {
        for (Contestant& contestant : contestants_)
            contestant.turn();
        for (size_t round = 0; round < rounds_; ++round) {
            for (size_t i = 0; i < contestants_.size(); ++i)
                time(contestants_[(round + i) % contestants_.size()]);
        }
        for (Contestant& contestant : contestants_)
            std::sort(contestant.times.begin(), contestant.times.end());
        return print();
    }

private:
    struct Contestant {
        std::string name;
        Turn turn;
        bool isPeer;
        double target;
        std::vector<double> times;  // nanoseconds per item
    };

    void add(std::string name, Turn turn, bool isPeer, double target) {
        contestants_.push_back({std::move(name), std::move(turn), isPeer, target, {}});
        contestants_.back().times.reserve(rounds_);
    }

    void time(Contestant& contestant) {
        const auto start = std::chrono::steady_clock::now();
        contestant.turn();
        const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
        contestant.times.push_back(elapsed.count() / static_cast<double>(items_));
    }

    static double quantile(const Contestant& contestant, double part) {
        return contestant.times[static_cast<size_t>(part * static_cast<double>(contestant.times.size() - 1))];
    }

    static double median(const Contestant& contestant) { return quantile(contestant, 0.5); }

    double bestPeer() const {
        double best = 0;
        for (const Contestant& contestant : contestants_) {
            if (contestant.isPeer && (best == 0 || median(contestant) < best)) best = median(contestant);
        }
        return best;
    }

    bool print() const {
        const double best = bestPeer();
        bool allMet = true;
        std::printf("\n%-40s %10s %8s %8s %8s\n", title_.c_str(), "ns", "spread", "ratio", "target");
        for (const Contestant& contestant : contestants_)
            allMet &= printLine(contestant, best);
        std::fflush(stdout);
        return allMet;
    }

    static bool printLine(const Contestant& contestant, double best) {
        const double time = median(contestant);
        const double spread = (quantile(contestant, 0.75) - quantile(contestant, 0.25)) / time;
        std::printf("  %-38s %10.1f %7.0f%%", contestant.name.c_str(), time, spread * 100);
        const bool met = contestant.target == 0 || best == 0 || time <= contestant.target * best;
        if (best != 0) std::printf(" %8.2f", time / best);
        if (contestant.target != 0) std::printf(" %8.2f %s", contestant.target, met ? "met" : "MISSED");
        std::printf("\n");
        return met;
    }

    std::string title_;
    size_t items_;
    size_t rounds_;
    std::vector<Contestant> contestants_;
};

/// Makes the compiler believe that the value, and everything in memory, is looked at.
template <class T>
inline void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

#endif
