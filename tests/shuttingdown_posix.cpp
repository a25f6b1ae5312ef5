// A job and a fork of its process.

#include <unistd.h>

#include <csignal>

#include "shuttingdowntest.h"

#ifndef ZANT_TEST_TSAN  // it reports what these processes die of in its own way

namespace Zant::Tests {
namespace {

// A death test's process is a fork of this one.
TEST(ForkDeathTest, LeavesAUsedJobWithoutItsThreads) {
    const auto workInAFork = [] {
        const Loaded host;
        Counter job(host.library.vtables.mt);
        job.start(eightItems, 2);
        _exit(job.items);
    };
    EXPECT_EXIT(workInAFork(), testing::ExitedWithCode(8), "") << "an engine that is loaded after the fork works";
    const Loaded host;
    Counter used(host.library.vtables.mt);
    used.start(eightItems, 2);
    EXPECT_EXIT((alarm(2), used.start(eightItems, 2)), testing::KilledBySignal(SIGALRM), "")
        << "it waits for threads of the parent";
    EXPECT_EQ(used.items, 8);
}

}  // namespace
}  // namespace Zant::Tests

#endif
