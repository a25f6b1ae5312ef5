// Compares number text with its definition over as many cases as one asks for, on every core.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/number_cases.h"

namespace {

constexpr unsigned long long shownDifferences = 20;

struct Settings {
    unsigned long long count = 1000000;
    int decimals = 8;  // negative: decimals, limit and room change from case to case
    int maxExp = 5;
    unsigned long long seed = 1;
};

class Check {
public:
    explicit Check(const Settings& settings) : settings_(settings) {}

    // Returns the number of differences.
    unsigned long long run() {
        const unsigned workers = std::max(1u, std::thread::hardware_concurrency());
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < workers; ++i) {
            const unsigned long long share = settings_.count / workers + (i < settings_.count % workers);
            threads.emplace_back([this, i, share] { work(settings_.seed * 1000 + i, share); });
        }
        for (std::thread& thread : threads)
            thread.join();
        return differences_;
    }

    unsigned long long compared() const { return compared_; }

private:
    void work(unsigned long long seed, unsigned long long count) {
        NumberCases cases(seed);
        std::mt19937_64 varied(seed);
        for (unsigned long long i = 0; i < count; ++i) {
            const double x = cases.next();
            const bool vary = settings_.decimals < 0;
            const int decimals = vary ? static_cast<int>(varied() % 12) : settings_.decimals;
            const int maxExp = vary ? static_cast<int>(varied() % 16) : settings_.maxExp;
            // Mostly plenty of room, but each text is also cut at every place.
            const size_t room = vary && varied() % 4 == 0 ? varied() % 24 : 40;
            report(differenceToOracle(x, room, decimals, maxExp));
        }
        compared_ += count;
    }

    void report(const std::string& difference) {
        if (difference.empty() || ++differences_ > shownDifferences) return;
        const std::lock_guard<std::mutex> lock(output_);
        std::printf("%s\n", difference.c_str());
    }

    const Settings settings_;
    std::atomic<unsigned long long> compared_{0};
    std::atomic<unsigned long long> differences_{0};
    std::mutex output_;
};

}  // namespace

int main(int argc, char** argv) {
    Settings settings;
    if (argc > 1 && argv[1][0] == '-') {
        std::printf(
            "number_oracle_check [COUNT [DECIMALS [LIMIT [SEED]]]]; DECIMALS -1 changes all settings from case to "
            "case\n");
        return 2;
    }
    if (argc > 1) settings.count = std::strtoull(argv[1], nullptr, 10);
    if (argc > 2) settings.decimals = std::atoi(argv[2]);
    if (argc > 3) settings.maxExp = std::atoi(argv[3]);
    if (argc > 4) settings.seed = std::strtoull(argv[4], nullptr, 10);
    Check check(settings);
    const unsigned long long differences = check.run();
    std::printf("%llu numbers compared (decimals %d, limit %d), %llu differ\n", check.compared(), settings.decimals,
                settings.maxExp, differences);
    return differences == 0 ? 0 : 1;
}
