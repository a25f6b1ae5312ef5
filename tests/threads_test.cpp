// What the headers say about threads, done on eight of them: meant for the thread sanitizer, short everywhere else.

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "client/zant.h"
#include "loopbackhost.h"

#if defined(__SANITIZE_THREAD__)
#define ZANT_TEST_TSAN 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ZANT_TEST_TSAN 1
#endif
#endif

namespace Zant::Tests {
namespace {

constexpr size_t threadCount = 8;
#ifdef ZANT_TEST_TSAN
constexpr int rounds = 2000;
#else
constexpr int rounds = 40;
#endif

/// Runs work(0) to work(7), all begun at the same moment.
void onEightThreads(const std::function<void(size_t)>& work) {
    std::promise<void> start;
    const std::shared_future<void> started = start.get_future().share();
    std::vector<std::thread> threads;
    for (size_t i = 0; i < threadCount; ++i)
        threads.emplace_back([&work, started, i] {
            started.wait();
            work(i);
        });
    start.set_value();
    for (std::thread& thread : threads)
        thread.join();
}

/// An engine that stays loaded, watched: the complaints must stay empty.
class Threads : public testing::Test {
protected:
    Threads() {
        EXPECT_TRUE(library.loadExplicitly(nullptr)) << library.getLoadError();
        library.setupInstanceMutex();
    }
    ~Threads() override {
        library.unloadExplicitly();
        EXPECT_EQ(watch.content(), "");
    }

    const TemporaryFile watch;
    const Environment environment{{"ZANT_LOOPBACK_WATCH", watch.name()}, {"ZANT_LOOPBACK_FAULT", "foreign-event"}};
    Library library{ZANT_LOOPBACK_DIR};
};

TEST(ThreadsWithoutEngine, HearTheirOwnReasonsForAFailedLoad) {
    onEightThreads([](size_t i) {
        const std::string directory = "/nowhere" + std::to_string(i) + "/";
        for (int round = 0; round < rounds; ++round) {
            Library library(directory.c_str());
            EXPECT_FALSE(library.load(nullptr));
            EXPECT_EQ(std::string(library.getLoadError()).rfind(directory, 0), 0u) << library.getLoadError();
        }
    });
}

TEST_F(Threads, CreateAndReleaseInstances) {
    std::atomic<int> created{0};
    onEightThreads([&](size_t i) {
        TextCollector text;
        for (int round = 0; round < rounds; ++round) {
            Instance* instance = (i + static_cast<size_t>(round)) % 2 ? library.createInstanceWithListner(&text)
                                                                      : library.createInstanceWithListner(nullptr);
            if (!instance || instance->parse("var x,1;", nullptr, ParseText) != 0) continue;
            library.releaseInstance(instance);
            ++created;
        }
    });
    EXPECT_EQ(created, static_cast<int>(threadCount) * rounds);
    EXPECT_FALSE(library.hasInstances());
    EXPECT_EQ(library.getInfoInt(2), 0);
}

TEST_F(Threads, WriteThroughAPrototyperEach) {
    onEightThreads([&](size_t i) {
        TextCollector text;
        Instance* instance = library.createInstanceWithListner(&text);
        {
            Prototyper quick(instance);
            DirectPrototyper binary(instance);
            DoubleSymbol number(*binary.buffer, "n");
            number.registerSymbol();
            for (int round = 0; round < rounds; ++round) {
                const double value = static_cast<double>(i) + 0.5;
                fg2_gradients(quick.protos(), value, round);
                fg2_gradients(binary.protos(), value, round);
                number.directSet(value);
                Double back;
                EXPECT_TRUE(number.directGet(back));
                EXPECT_EQ(back.value, value);
            }
            echo1(quick.protos(), std::to_string(i).c_str());
            EXPECT_EQ(quick.buffer->errorCode, 0);
            EXPECT_EQ(binary.buffer->errorCode, 0);
        }
        EXPECT_EQ(text.take(), std::to_string(i) + "\n") << "each listener hears its own instance";
        library.releaseInstance(instance);
    });
}

TEST_F(Threads, ServeEventsFromThreadsOfTheEngine) {
    struct Listener : TextCollector {
        void textLine(void* stream, const char* line) override {
            fromElsewhere += std::this_thread::get_id() != host;
            TextCollector::textLine(stream, line);
        }
        std::thread::id host = std::this_thread::get_id();
        std::atomic<int> fromElsewhere{0};
    };
    Listener shared;
    onEightThreads([&](size_t) {
        Listener own;
        Instance* const instances[] = {library.createInstanceWithListner(&own),
                                       library.createInstanceWithListner(&shared)};
        for (int round = 0; round < rounds / 4; ++round)
            for (const Instance* instance : instances)
                instance->parse("echo \"x\";", nullptr, ParseText);
        EXPECT_EQ(own.fromElsewhere, rounds / 4);
        for (Instance* instance : instances)
            library.releaseInstance(instance);
    });
    EXPECT_EQ(shared.fromElsewhere, static_cast<int>(threadCount) * (rounds / 4));
}

TEST_F(Threads, SplitJobsAndShareAMutex) {
    struct Job : MTJobSplit {
        Job(const MTFunctionsVtable* table, Mutex& lock) : MTJobSplit(table), mutex(lock) {}
        void run(const size_t* index, int) override {
            const MutexLocker locker(mutex);
            sum += index[0] + index[1] + index[2];
        }
        Mutex& mutex;
        size_t sum = 0;  // guarded
    };
    Mutex mutex;
    mutex.init(library.vtables.mt);
    onEightThreads([&](size_t) {
        Job job(library.vtables.mt, mutex);
        const size_t dims[3] = {5, 4, 3};
        for (int round = 0; round < rounds / 10; ++round)
            job.start(dims, 4);
        EXPECT_EQ(job.sum, 270u * static_cast<size_t>(rounds / 10));
    });
    mutex.destroy();
    EXPECT_EQ(library.getInfoInt(5) + library.getInfoInt(6), 1) << "the instance mutex alone";
}

TEST_F(Threads, CastRaysFromSeveralContextsOfOneInstance) {
    const Instance* instance = library.createInstanceWithListner(nullptr);
    onEightThreads([&](size_t i) {
        for (int round = 0; round < rounds / 4; ++round) {
            const std::unique_ptr<RaytraceAccess> access(instance->createRaytraceAccess());
            const size_t dims[3] = {100 + i, 2, 1};
            ASSERT_TRUE(access->allocBuffer(dims));
            EXPECT_NE(access->input.blocks[0], nullptr);
        }
    });
}

TEST(ThreadsOfHeaders, AreStatedInEachOne) {
    size_t checked = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ZANT_SOURCE_DIR "/client")) {
        const std::string name = entry.path().generic_string();
        if (entry.path().extension() != ".h" || name.find("/generator/") != std::string::npos) continue;
        if (entry.path().filename() == "zant.h") continue;  // includes the others, and no more
        std::ostringstream text;
        text << std::ifstream(name).rdbuf();
        EXPECT_NE(text.str().find("Threads: "), std::string::npos) << name;
        ++checked;
    }
    EXPECT_GE(checked, 31u);
}

}  // namespace
}  // namespace Zant::Tests
