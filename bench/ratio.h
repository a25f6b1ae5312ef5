#ifndef ZANT_BENCH_RATIO_H
#define ZANT_BENCH_RATIO_H

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bench/statistics.h"

/// A contest of several ways to do the same work, on a machine that may be busy: the contestants take turns in one
/// process, each turn is timed, and each is compared with the best peer, turn by turn.
///
///     Contest contest("dot product", vectors.size());
///     contest.ours("Zant", [&] { ... }, 1.0);   // one turn works through all items; at most 1.0 times the best peer
///     contest.peer("Imath", [&] { ... });
///     allMet &= contest.run();
///
/// A turn should take 50 microseconds or more. Hand its result to keep(), or the compiler removes the work.
///
/// The environment variable ZANT_BENCH_RESULTS names a file to which each contestant is appended as a line of fields
/// with tabs between them: contest, contestant, "ours", "peer" or "aside", nanoseconds, lower and upper quartile,
/// ratio, low and high end of its interval, target. What does not apply is 0.
class Contest {
public:
    using Turn = std::function<void()>;

    /// @param itemsPerTurn how many items one turn works through; times are printed per item
    Contest(std::string title, size_t itemsPerTurn, size_t rounds = 101)
        : title_(std::move(title)), items_(itemsPerTurn), rounds_(rounds) {}

    /// @param target the largest ratio to the best peer that is accepted, 0 for none
    void ours(std::string name, Turn turn, double target = 0) { add(std::move(name), std::move(turn), Ours, target); }

    void peer(std::string name, Turn turn) { add(std::move(name), std::move(turn), Peer, 0); }

    /// Shown beside the others, and no measure of ours: it does less, or is not what is asked for.
    void aside(std::string name, Turn turn) { add(std::move(name), std::move(turn), Aside, 0); }

    /// Runs all rounds and prints one line per contestant: median time, spread (the distance of the quartiles as a part
    /// of the median: how noisy the machine was), ratio to the best peer with its interval, target.
    /// @return whether every target was met, or missed by no more than noise
    bool run() {
        for (Contestant& contestant : contestants_)
            contestant.turn();
        for (size_t round = 0; round < rounds_; ++round) {
            for (size_t i = 0; i < contestants_.size(); ++i)
                time(contestants_[(round + i) % contestants_.size()]);
        }
        return print();
    }

private:
    enum Side { Ours, Peer, Aside };

    struct Contestant {
        std::string name;
        Turn turn;
        Side side;
        double target;
        std::vector<double> times;  // nanoseconds per item, one for each round

        double median() const { return quantile(times, 0.5); }
    };

    void add(std::string name, Turn turn, Side side, double target) {
        contestants_.push_back({std::move(name), std::move(turn), side, target, {}});
        contestants_.back().times.reserve(rounds_);
    }

    void time(Contestant& contestant) {
        const auto start = std::chrono::steady_clock::now();
        contestant.turn();
        const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
        contestant.times.push_back(elapsed.count() / static_cast<double>(items_));
    }

    /// Null when there is no peer.
    const Contestant* bestPeer() const {
        const Contestant* best = nullptr;
        for (const Contestant& contestant : contestants_) {
            if (contestant.side == Peer && (!best || contestant.median() < best->median())) best = &contestant;
        }
        return best;
    }

    bool print() const {
        const Contestant* const best = bestPeer();
        bool allMet = true;
        std::printf("\n%-40s %10s %8s %8s %15s %8s\n", title_.c_str(), "ns", "spread", "ratio", "95 % interval",
                    "target");
        for (const Contestant& contestant : contestants_) {
            const Ratio ratio = best ? ratioOf(contestant.times, best->times) : Ratio{};
            allMet &= printLine(contestant, ratio);
            writeResult(contestant, ratio);
        }
        std::fflush(stdout);
        return allMet;
    }

    static bool printLine(const Contestant& contestant, const Ratio& ratio) {
        const double time = contestant.median();
        const double spread = (quantile(contestant.times, 0.75) - quantile(contestant.times, 0.25)) / time;
        const bool met = contestant.target == 0 || !ratio.misses(contestant.target);
        std::printf("  %-38s %10.1f %7.0f%%", contestant.name.c_str(), time, spread * 100);
        if (ratio.median != 0) std::printf(" %8.2f %6.2f to %5.2f", ratio.median, ratio.low, ratio.high);
        if (contestant.target != 0) std::printf(" %8.2f %s", contestant.target, met ? "met" : "MISSED");
        std::printf("\n");
        return met;
    }

    void writeResult(const Contestant& contestant, const Ratio& ratio) const {
        static constexpr const char* sides[] = {"ours", "peer", "aside"};
        const char* const name = std::getenv("ZANT_BENCH_RESULTS");
        std::FILE* const file = name ? std::fopen(name, "a") : nullptr;
        if (!file) return;
        std::fprintf(file, "%s\t%s\t%s\t%g\t%g\t%g\t%g\t%g\t%g\t%g\n", title_.c_str(), contestant.name.c_str(),
                     sides[contestant.side], contestant.median(), quantile(contestant.times, 0.25),
                     quantile(contestant.times, 0.75), ratio.median, ratio.low, ratio.high, contestant.target);
        std::fclose(file);
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
