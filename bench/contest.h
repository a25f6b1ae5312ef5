#ifndef ZANT_BENCH_CONTEST_H
#define ZANT_BENCH_CONTEST_H

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bench/statistics.h"

/// A contest of several ways to do the same work, on a machine that may be busy: the contestants take turns in one
/// process and on one processor, each turn is timed, and each is compared with the best peer, turn by turn.
///
///     Contest contest("dot product", vectors.size());
///     contest.ours("Zant", [&] { ... }, 1.0);   // one turn works through all items; at most 1.0 times the best peer
///     contest.peer("Imath", [&] { ... });
///     allMet &= contest.run();
///
/// A turn should take 50 microseconds or more. Hand its result to keep(), or the compiler removes the work.
///
/// A round counts only if it was quiet: nobody took the processor away during a turn, and a known piece of work between
/// the turns took what it usually takes. Other rounds are repeated, up to three times as many as were asked for.
///
/// The environment variable ZANT_BENCH_RESULTS names a file to which each contestant is appended as a line of fields
/// with tabs between them: contest, contestant, "ours", "peer" or "aside", nanoseconds, lower and upper quartile,
/// ratio, low and high end of its interval, target, rounds that were repeated. What does not apply is 0.
///
/// With ZANT_BENCH_COUNTS ("all", or "ours" for ours alone) and under callgrind nothing is timed: each contestant has
/// one turn, whose instructions callgrind writes under the contest, the contestant, its side and the number of items,
/// with bars between them.
class Contest {
public:
    using Turn = std::function<void()>;

    /// @param itemsPerTurn how many items one turn works through; times are printed per item
    Contest(std::string title, size_t itemsPerTurn, size_t rounds = 101)
        : title_(std::move(title)), items_(itemsPerTurn), rounds_(rounds) {}

    /// @param target the largest ratio to the best peer that is accepted, for times and for counts; 0 for none
    void ours(std::string name, Turn turn, double target = 0) { add(std::move(name), std::move(turn), Ours, target); }

    void peer(std::string name, Turn turn) { add(std::move(name), std::move(turn), Peer, 0); }

    /// Shown beside the others, and no measure of ours: it does less, or is not what is asked for.
    void aside(std::string name, Turn turn) { add(std::move(name), std::move(turn), Aside, 0); }

    /// The turns start threads: they are not held on one processor, every round counts, and instructions are not
    /// counted, since those that wait differ from run to run.
    void usesThreads() { threads_ = true; }

    /// Runs all rounds and prints one line per contestant: median time, spread (the distance of the quartiles as a part
    /// of the median: how noisy the machine was), ratio to the best peer with its interval, target.
    /// @return whether every target was met, or missed by no more than noise
    bool run();

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

    void add(std::string name, Turn turn, Side side, double target);
    void count(const char* whose);
    void timeRounds();
    void timeRound(size_t number);
    void keepQuietRounds();
    const Contestant* bestPeer() const;
    bool print() const;
    void writeResult(const Contestant& contestant, const Ratio& ratio) const;

    std::string title_;
    size_t items_;
    size_t rounds_;
    bool threads_ = false;
    std::vector<Contestant> contestants_;
    std::vector<double> baseline_;   // what the known piece of work took in each round
    std::vector<bool> undisturbed_;  // whether nobody took the processor away in the round
    size_t repeated_ = 0;
};

/// Makes the compiler believe that the value, and everything in memory, is looked at.
template <class T>
inline void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

#endif
