// The order of docs/shutting-down-inside-a-host.md, followed literally, and what its warnings and those of
// docs/threads-and-ownership.md say of who does not follow it.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>

#include "shuttingdowntest.h"

namespace Zant::Tests {
namespace {

/// The page's order, with every kind of thing that a plug-in may hold.
void liveAndShutDown(Library& library, TextCollector& listener) {
    ASSERT_TRUE(library.loadExplicitly(nullptr)) << library.getLoadError();
    library.setupInstanceMutex();
    Instance* const first = library.createInstanceWithListner(&listener);
    Instance* const second = library.createInstance();
    auto proto = std::make_unique<Prototyper>(first);
    auto direct = std::make_unique<DirectPrototyper>(second);
    auto number = std::make_unique<DoubleSymbol>(*proto->buffer, "number");
    auto picture = std::make_unique<BitmapSymbol>(*direct->buffer, 4, 2, PixelCharRgba, "picture");
    auto rays = std::unique_ptr<RaytraceAccess>(first->createRaytraceAccess());
    auto job = std::make_unique<Counter>(library.vtables.mt);
    auto mutex = std::make_unique<Mutex>();
    number->registerSymbol();
    mutex->init(library.vtables.mt);
    EXPECT_TRUE(rays->allocBuffer(eightItems));
    job->start(eightItems, 2);
    EXPECT_EQ(job->items, 8);

    // 1. What still talks to the engine when it ends.
    number.reset(), picture.reset();
    proto.reset(), direct.reset();
    rays.reset();
    job.reset();
    mutex.reset();
    // 2. Instances; the listener still hears the engine's last line.
    listener.take();
    library.releaseInstance(first);
    EXPECT_NE(listener.take(), "") << "the listener must outlive this call";
    library.releaseInstance(second);
    EXPECT_EQ(library.getInfoInt(2) + library.getInfoInt(5) + library.getInfoInt(7), 0);
    EXPECT_EQ(library.getInfoInt(6), 1) << "the mutex of the instance list, which the library ends";
    // 3. The engine.
    library.unloadExplicitly();
    EXPECT_FALSE(library.isLoaded());
    // 4. The listener, by the caller.
}

TEST(ShuttingDown, InTheOrderOfThePageLeavesNothing) {
    const TemporaryFile complaints;
    for (const bool watched : {true, false}) {  // a watched engine stays mapped, the other one is gone
        const Environment events{{"ZANT_LOOPBACK_FAULT", "events-at-destruction"}};
        std::unique_ptr<const Environment> watch;
        if (watched) watch.reset(new Environment{{"ZANT_LOOPBACK_WATCH", complaints.name()}});
        Library library(ZANT_LOOPBACK_DIR);
        TextCollector listener;
        for (int round = 0; round < 2; ++round)
            liveAndShutDown(library, listener);
    }
    EXPECT_EQ(complaints.content(), "");
}

// ---- What the pages warn of -----------------------------------------------------------------------------------------
// Each action runs in a process of its own, forked before it has loaded anything.

#ifndef ZANT_TEST_TSAN  // it reports what these processes die of in its own way

/// Lets the listener do it from within an event.
void inAnEvent(Host& host, std::function<void()> action) {
    host.text.atText = std::move(action);
    host.parse("echo \"a line\";");
}

void exitDuringAJob() {
    struct Slow final : MTJobSplit {
        using MTJobSplit::MTJobSplit;
        void run(const size_t*, int) override { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }
    };
    std::atexit([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
    });  // runs after the library of the process has ended
    Library& library = *getLibrary(ZANT_LOOPBACK_DIR);
    library.createInstance();
    auto* job = new Slow(library.vtables.mt);
    std::thread([job] {
        const size_t many[3] = {1000, 1, 1};
        job->start(many, 2);
    }).detach();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::exit(0);
}

TEST(ShuttingDownDeathTest, InAnotherOrderCrashes) {
    const struct {
        const char* warning;
        void (*breach)();
    } rows[] = {
        {"a job split ends before the engine",
         [] {
             Loaded host;
             const Counter held(host.library.vtables.mt);
             host.library.unloadExplicitly();
         }},
        {"a mutex ends before the engine",
         [] {
             Loaded host;
             Mutex held;
             held.init(host.library.vtables.mt);
             host.library.unloadExplicitly();
         }},
        {"no event unloads the engine",
         [] {
             Loaded host;
             inAnEvent(host, [&] { host.library.unloadExplicitly(); });
         }},
        {"no event releases the last instance, which takes the engine along",
         [] {
             Host host;
             inAnEvent(host, [&] { host.library.releaseInstance(host.instance); });
         }},
        {"no exit during a job: the engine's file is closed under its threads", exitDuringAJob},
    };
    for (const auto& row : rows)
        EXPECT_DEATH(row.breach(), "") << row.warning;
}

#endif

TEST(Listeners, LetNoExceptionOut) {
    Loaded host;
    host.text.atText = [] { throw std::runtime_error("lost in the engine"); };
    EXPECT_EQ(host.parse("echo \"one\"; echo \"two\";"), 0) << "this engine catches it, and nobody hears of it";
    EXPECT_EQ(host.text.take(), "\ntwo\n");
}

}  // namespace
}  // namespace Zant::Tests
