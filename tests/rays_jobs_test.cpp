// Job splitting, engine mutexes and ray memory.
#include <array>
#include <atomic>
#include <memory>
#include <new>

#include "client/engine/instance.h"
#include "client/engine/jobsplit.h"
#include "client/engine/raytrace.h"
#include "enginetest.h"

using namespace Zant;

namespace {

using Triple = std::array<size_t, 3>;

class Noted : public MTJobSplit {
public:
    using MTJobSplit::MTJobSplit;
    void run(const size_t* index, int thread) override {
        EXPECT_EQ(thread, 0);
        items.push_back({index[0], index[1], index[2]});
    }
    std::vector<Triple> items;
};

TEST(JobSplit, RunsInOrderOnTheCallingThread) {
    const struct {
        Triple counts;
        std::vector<Triple> items;
    } rows[] = {
        {{0, 0, 0}, {{0, 0, 0}}},
        {{2, 3, 1}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 2, 0}, {1, 2, 0}}},
        {{2, 0, 2}, {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {1, 0, 1}}},
    };
    for (const auto& row : rows)
        for (int threads : {-1, 0, 1, 8}) {
            Noted split(nullptr);
            split.start(row.counts.data(), threads);
            EXPECT_EQ(split.items, row.items) << threads << " threads";
        }
}

class EngineJobs : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(library.load(engine("probe").c_str()));
        probe().take();
    }
    Library library{nullptr};
};

class Counted : public MTJobSplit {
public:
    using MTJobSplit::MTJobSplit;
    void run(const size_t* index, int thread) override {
        ++hits[index[0] + 3 * (index[1] + 5 * index[2])];
        if (thread < 0 || thread >= 4) ++strangers;
    }
    std::array<std::atomic<int>, 105> hits{};
    std::atomic<int> strangers{0};
};

TEST_F(EngineJobs, RunEveryItemOnceOnEngineThreads) {
    {
        Counted split(library.vtables.mt);
        const size_t counts[3] = {3, 5, 7};
        split.start(counts, 4);
        split.start(counts, 2);
        for (const auto& hits : split.hits)
            EXPECT_EQ(hits, 2);
        EXPECT_EQ(split.strangers, 0);
    }
    EXPECT_EQ(probe().take(), Calls({"createJob", "runJob 3 5 7 on 4", "runJob 3 5 7 on 2", "destroyJob"}));
}

TEST_F(EngineJobs, GoToTheEngineWithTheirZerosAndStayHereWithoutAJob) {
    const size_t counts[3] = {0, 2, 0};
    const std::pair<size_t, Calls> expected[] = {{2, {"createJob"}},
                                                 {0, {"createJob", "runJob 0 2 0 on 2", "destroyJob"}}};
    for (const bool giveJobs : {false, true}) {
        probe().giveJobs = giveJobs;
        {
            Noted split(library.vtables.mt);
            split.start(counts, 2);
            EXPECT_EQ(split.items.size(), expected[giveJobs].first);
            if (giveJobs) split.start(counts, 1);
            EXPECT_EQ(split.items.size(), 2u) << "one thread: here";
        }
        EXPECT_EQ(probe().take(), expected[giveJobs].second);
    }
}

TEST_F(EngineJobs, MutexesLockThroughTheEngine) {
    {
        Mutex mutex;
        EXPECT_EQ(mutex.trylock(), 1);
        mutex.lock();
        mutex.unlock();
        mutex.init(nullptr);
        mutex.destroy();
        EXPECT_TRUE(probe().calls.empty()) << "without a table it does nothing";

        mutex.init(library.vtables.mt);
        void* const handle = mutex.handle;
        mutex.init(nullptr);
        EXPECT_EQ(mutex.handle, handle);
        EXPECT_EQ(mutex.vt, library.vtables.mt);
        {
            const MutexLocker locker(mutex);
            EXPECT_EQ(mutex.trylock(), 0);
        }
        probe().mutexAnswer = 0x1280 - 1;
        EXPECT_EQ(mutex.trylock(), -128) << "the low byte, with its sign";
        probe().mutexAnswer = 0x1200 - 1;
        mutex.unlock();
        EXPECT_EQ(mutex.trylock(), 0) << "nothing above the low byte";
        mutex.unlock();
        mutex.destroy();
        EXPECT_EQ(mutex.vt, nullptr);
        EXPECT_EQ(mutex.handle, nullptr);
        mutex.init(library.vtables.mt);
    }
    EXPECT_EQ(probe().take(), Calls({"createMutex", "destroyMutex", "createMutex", "destroyMutex"}));
}

class Rays : public EngineJobs {
protected:
    void SetUp() override {
        EngineJobs::SetUp();
        Instance* const instance = library.createInstance();
        ASSERT_NE(instance, nullptr);
        access.reset(instance->createRaytraceAccess());
        EXPECT_EQ(probe().take(), Calls({"createInstance 1", "createContext 1"}));
    }
    void TearDown() override { access.reset(); }

    void describe(const Triple& inputs, const Triple& outputs) {
        std::copy(inputs.begin(), inputs.end(), probe().inputCounts);
        std::copy(outputs.begin(), outputs.end(), probe().outputCounts);
    }
    bool alloc() {
        const size_t dims[3] = {7, 8, 9};
        return access->allocBuffer(dims);
    }
    // The test engine's address of a block.
    static void* block(size_t index, size_t side) { return reinterpret_cast<void*>((index + 1) * 16 + side); }

    std::unique_ptr<RaytraceAccess> access;
};

TEST_F(Rays, AskForInputAndOutputBlocksInTurnUpToTheirOwnSize) {
    const struct {
        Triple inputs, outputs;
        Calls blocks;
    } rows[] = {
        {{}, {}, {}},
        {{5, 1, 1}, {2, 1, 2}, {"0 0", "0 1", "1 0", "1 1", "2 0", "2 1", "3 0", "3 1", "4 0"}},
        {{1, 2, 1}, {2, 1, 2}, {"0 0", "0 1", "1 0", "1 1"}},  // the rest of a table as long as the last one is null
    };
    for (const auto& row : rows) {
        describe(row.inputs, row.outputs);
        ASSERT_TRUE(alloc());
        Calls expected = {"setupBuffers 7 8 9"};
        for (const std::string& asked : row.blocks)
            expected.push_back("getBlock " + asked);
        EXPECT_EQ(probe().take(), expected);
        ASSERT_TRUE(access->input.blocks && access->output.blocks);
        for (size_t i = 0; i < access->input.blockCount(); ++i)
            EXPECT_EQ(access->input.blocks[i], block(i, 0));
        for (size_t i = 0; i < access->output.blockCount(); ++i)
            EXPECT_EQ(access->output.blocks[i], i < access->input.blockCount() ? block(i, 1) : nullptr);
    }
    EXPECT_EQ(access->input.engineBefore[23], 0xEE);
    EXPECT_EQ(access->input.engineAfter[0], 0xEE);
    EXPECT_EQ(access->output.counts[2], 2u);
}

TEST_F(Rays, KeepTheirTablesWhenTheEngineRefuses) {
    describe({1, 1, 1}, {1, 1, 1});
    ASSERT_TRUE(alloc());
    probe().acceptRays = false;
    describe({4, 4, 4}, {4, 4, 4});
    EXPECT_FALSE(alloc());
    EXPECT_EQ(access->input.blockCount(), 1u);
    EXPECT_EQ(access->output.blocks[0], block(0, 1));
}

TEST_F(Rays, ThrowRatherThanAllocateAShortTable) {
    const Triple tooMany[] = {{size_t{1} << 61, 1, 1}, {size_t{1} << 40, size_t{1} << 40, 1}, {SIZE_MAX, SIZE_MAX, 1}};
    for (const Triple& counts : tooMany) {
        describe({1, 1, 1}, {1, 1, 1});
        ASSERT_TRUE(alloc());
        describe(counts, counts);
        EXPECT_THROW(alloc(), std::bad_alloc);
        EXPECT_TRUE(!access->input.blocks && !access->output.blocks);
    }
    describe({SIZE_MAX, SIZE_MAX, 0}, {0, SIZE_MAX, SIZE_MAX});
    EXPECT_TRUE(alloc()) << "a count of 0 leaves no block, whatever the others are";
}

TEST_F(Rays, EndTheirContextWithoutEverHavingBuffers) {
    access.reset();
    EXPECT_EQ(probe().take(), Calls({"destroyContext"}));
}

}  // namespace
