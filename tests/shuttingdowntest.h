#ifndef ZANT_TESTS_SHUTTINGDOWNTEST_H
#define ZANT_TESTS_SHUTTINGDOWNTEST_H

#include <gtest/gtest.h>

#include <atomic>

#include "client/zant.h"
#include "loopbackhost.h"

#ifdef __has_feature
#if __has_feature(thread_sanitizer)
#define ZANT_TEST_TSAN 1
#endif
#endif
#ifdef __SANITIZE_THREAD__
#define ZANT_TEST_TSAN 1
#endif

namespace Zant::Tests {

constexpr size_t eightItems[3] = {2, 2, 2};

struct Counter final : MTJobSplit {
    using MTJobSplit::MTJobSplit;
    void run(const size_t*, int) override { ++items; }
    std::atomic<int> items{0};
};

/// An engine that stays to the end.
struct Loaded : Host {
    Loaded() { library.loadExplicitly(nullptr); }
    ~Loaded() { library.unloadExplicitly(); }
};

}  // namespace Zant::Tests

#endif
