// How a contest is timed, and how its instructions are counted.
#include "bench/contest.h"

#include <sched.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#define BENCH_COUNTS
#endif

namespace {

constexpr const char* sides[] = {"ours", "peer", "aside"};

constexpr size_t mostRepeats = 3;       // times as many rounds as were asked for
constexpr double usualWork = 1.1;       // times the median that the known piece of work may take in a quiet round
constexpr size_t stepsOfWork = 20'000;  // some 20 microseconds

double nanosecondsOf(const Contest::Turn& turn) {
    const auto start = std::chrono::steady_clock::now();
    turn();
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count();
}

/// The same work each time, without memory: what it takes tells how fast the processor is just now.
void knownWork() {
    std::uint64_t state = 1;
    for (size_t step = 0; step < stepsOfWork; ++step) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        keep(state);
    }
}

/// How often the processor was taken away from this thread.
long interruptions() {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nivcsw;
}

/// Holds the thread on the processor that it runs on, for as long as the object lives.
class OnOneProcessor {
public:
    explicit OnOneProcessor(bool wanted) : wanted_(wanted && sched_getaffinity(0, sizeof before_, &before_) == 0) {
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<size_t>(sched_getcpu()), &one);
        if (wanted_) sched_setaffinity(0, sizeof one, &one);
    }
    ~OnOneProcessor() {
        if (wanted_) sched_setaffinity(0, sizeof before_, &before_);
    }
    OnOneProcessor(const OnOneProcessor&) = delete;
    OnOneProcessor& operator=(const OnOneProcessor&) = delete;

private:
    cpu_set_t before_{};
    bool wanted_;
};

/// Only the elements whose round is marked.
void keepMarked(std::vector<double>& values, const std::vector<bool>& marked) {
    size_t kept = 0;
    for (size_t i = 0; i < values.size(); ++i) {
        if (marked[i]) values[kept++] = values[i];
    }
    values.resize(kept);
}

void printLine(const char* name, const std::vector<double>& times, double target, const Ratio& ratio) {
    const double time = quantile(times, 0.5);
    const double spread = (quantile(times, 0.75) - quantile(times, 0.25)) / time;
    std::printf("  %-38s %10.1f %7.0f%%", name, time, spread * 100);
    if (ratio.median != 0) std::printf(" %8.2f %6.2f to %5.2f", ratio.median, ratio.low, ratio.high);
    if (target != 0) std::printf(" %8.2f %s", target, ratio.misses(target) ? "MISSED" : "met");
    std::printf("\n");
}

}  // namespace

void Contest::add(std::string name, Turn turn, Side side, double target) {
    contestants_.push_back({std::move(name), std::move(turn), side, target, {}});
}

bool Contest::run() {
    for (Contestant& contestant : contestants_)
        contestant.turn();
    if (const char* const whose = std::getenv("ZANT_BENCH_COUNTS")) {
        count(whose);
        return true;
    }
    const OnOneProcessor held(!threads_);
    timeRounds();
    return print();
}

void Contest::count([[maybe_unused]] const char* whose) {
#ifdef BENCH_COUNTS
    for (const Contestant& contestant : contestants_) {
        if (threads_ || (contestant.side != Ours && std::strcmp(whose, "ours") == 0)) continue;
        const std::string label =
            title_ + "|" + contestant.name + "|" + sides[contestant.side] + "|" + std::to_string(items_);
        CALLGRIND_START_INSTRUMENTATION;
        CALLGRIND_ZERO_STATS;
        contestant.turn();
        CALLGRIND_DUMP_STATS_AT(label.c_str());
        CALLGRIND_STOP_INSTRUMENTATION;
    }
#endif
}

void Contest::timeRounds() {
    size_t ran = 0;
    while (baseline_.size() < rounds_ && ran < (1 + mostRepeats) * rounds_) {
        const size_t missing = rounds_ - baseline_.size();
        for (size_t round = 0; round < missing; ++round)
            timeRound(ran++);
        if (!threads_ && ran < (1 + mostRepeats) * rounds_) keepQuietRounds();
    }
    repeated_ = ran - rounds_;
}

/// One turn of each contestant, another one first in each round.
void Contest::timeRound(size_t number) {
    const long before = interruptions();
    for (size_t i = 0; i < contestants_.size(); ++i) {
        Contestant& contestant = contestants_[(number + i) % contestants_.size()];
        contestant.times.push_back(nanosecondsOf(contestant.turn) / static_cast<double>(items_));
    }
    baseline_.push_back(nanosecondsOf(knownWork));
    undisturbed_.push_back(interruptions() == before);
}

void Contest::keepQuietRounds() {
    const double limit = usualWork * quantile(baseline_, 0.5);
    for (size_t round = 0; round < baseline_.size(); ++round)
        undisturbed_[round] = undisturbed_[round] && baseline_[round] <= limit;
    for (Contestant& contestant : contestants_)
        keepMarked(contestant.times, undisturbed_);
    keepMarked(baseline_, undisturbed_);
    undisturbed_.assign(baseline_.size(), true);
}

/// Null when there is no peer.
const Contest::Contestant* Contest::bestPeer() const {
    const Contestant* best = nullptr;
    for (const Contestant& contestant : contestants_) {
        if (contestant.side == Peer && (!best || contestant.median() < best->median())) best = &contestant;
    }
    return best;
}

bool Contest::print() const {
    const Contestant* const best = bestPeer();
    bool allMet = true;
    std::printf("\n%-40s %10s %8s %8s %15s %8s\n", title_.c_str(), "ns", "spread", "ratio", "95 % interval", "target");
    for (const Contestant& contestant : contestants_) {
        const Ratio ratio = best ? ratioOf(contestant.times, best->times) : Ratio{};
        allMet &= contestant.target == 0 || !ratio.misses(contestant.target);
        printLine(contestant.name.c_str(), contestant.times, contestant.target, ratio);
        writeResult(contestant, ratio);
    }
    if (repeated_ != 0) std::printf("  %zu of %zu rounds repeated\n", repeated_, rounds_);
    std::fflush(stdout);
    return allMet;
}

void Contest::writeResult(const Contestant& contestant, const Ratio& ratio) const {
    const char* const name = std::getenv("ZANT_BENCH_RESULTS");
    std::FILE* const file = name ? std::fopen(name, "a") : nullptr;
    if (!file) return;
    std::fprintf(file, "%s\t%s\t%s\t%g\t%g\t%g\t%g\t%g\t%g\t%g\t%zu\n", title_.c_str(), contestant.name.c_str(),
                 sides[contestant.side], contestant.median(), quantile(contestant.times, 0.25),
                 quantile(contestant.times, 0.75), ratio.median, ratio.low, ratio.high, contestant.target, repeated_);
    std::fclose(file);
}
