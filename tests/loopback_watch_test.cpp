// What the loopback engine notes of a host's mistakes, and what else a test may ask it to follow.

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <thread>

#include "client/zant.h"
#include "loopbackhost.h"
#include "testkit/commandlog.h"

namespace Zant::Tests {
namespace {

using Testkit::ContractWatch;

TEST(LoopbackWatch, NotesCallsOnWhatIsGone) {
    const TemporaryFile file;
    const Environment environment{{"ZANT_LOOPBACK_WATCH", file.name()}};
    Host host;
    Instance* const second = host.library.createInstance();
    const Vtables tables = host.library.vtables;
    void* const parser = second->parserContext;
    ZantLibraryInstance* const engine = second->engineInstance;
    host.library.releaseInstance(second);
    EXPECT_EQ(file.content(), "");

    ZantParserExchangeBuffer record{};
    EXPECT_EQ(tables.parser->parse(parser, "echo;", nullptr, ParseText), 9);
    EXPECT_EQ(tables.parser->parse(engine, "echo;", nullptr, ParseText), 9);
    EXPECT_EQ(tables.parser->getValue(parser, nullptr, &record), 0);
    tables.library->destroyInstance(engine);
    tables.library->destroyInstance(static_cast<ZantLibraryInstance*>(host.instance->parserContext));
    EXPECT_EQ(tables.raytrace->createContext(engine), nullptr);
    EXPECT_EQ(tables.mt->mutexOp(&record, 1, 0), 0);
    tables.mt->destroyJob(&record);
    unsigned char description[80];
    std::memset(description, 1, sizeof description);
    tables.raytrace->describeBuffer(nullptr, description);
    EXPECT_EQ(description[71], 0) << "of no rays";
    EXPECT_EQ(description[72], 1) << "the client's";
    EXPECT_EQ(file.content(),
              "parse: the parser context is no longer alive\nparse: the parser context does not belong to this engine\n"
              "getValue: the parser context is no longer alive\ndestroyInstance: the instance is no longer alive\n"
              "destroyInstance: the instance does not belong to this engine\n"
              "createContext: the instance is no longer alive\nmutexOp: the mutex does not belong to this engine\n"
              "destroyJob: the job context does not belong to this engine\n"
              "describeBuffer: the ray context does not belong to this engine\n");
}

// An address would be used again at once: the old handle would reach what came after it.
TEST(LoopbackWatch, TellsWhatIsGoneFromWhatCameAfterIt) {
    const TemporaryFile file;
    const Environment environment{{"ZANT_LOOPBACK_WATCH", file.name()}};
    Host host;
    const Vtables& tables = host.library.vtables;
    const size_t dims[3] = {1, 1, 1};
    const struct {
        int count;
        std::function<void*()> create;
        void (*destroy)(void*);
        std::function<void(void*)> use;
        const char* complaints;
    } rows[] = {
        {5, [&] { return tables.mt->createJob(nullptr); }, tables.mt->destroyJob,
         [&](void* job) {
             tables.mt->runJob(
                 job, dims, 1, [](const size_t*, int, void*) {}, nullptr);
         },
         "runJob: the job context is no longer alive\ndestroyJob: the job context is no longer alive\n"},
        {6, [&] { return tables.mt->createMutex(nullptr, nullptr, nullptr); }, tables.mt->destroyMutex,
         [&](void* mutex) { tables.mt->mutexOp(mutex, 1, 0) && tables.mt->mutexOp(mutex, -1, 0); },
         "mutexOp: the mutex is no longer alive\ndestroyMutex: the mutex is no longer alive\n"},
        {7, [&] { return tables.raytrace->createContext(host.instance->engineInstance); },
         tables.raytrace->destroyContext, [&](void* rays) { tables.raytrace->setupBuffers(rays, dims); },
         "setupBuffers: the ray context is no longer alive\ndestroyContext: the ray context is no longer alive\n"},
    };
    std::string complaints;
    for (const auto& row : rows) {
        void* const gone = row.create();
        row.destroy(gone);
        void* const next = row.create();
        row.use(gone);
        row.destroy(gone);
        row.use(next);
        row.destroy(nullptr);
        EXPECT_EQ(host.library.getInfoInt(row.count), 1) << row.complaints;
        row.destroy(next);
        EXPECT_EQ(file.content(), complaints += row.complaints);
    }
}

TEST(LoopbackWatch, NotesCallsAfterTheEngineHasExited) {
    const TemporaryFile file;
    const Environment environment{{"ZANT_LOOPBACK_WATCH", file.name()}};
    Library library(ZANT_LOOPBACK_DIR);
    Instance* const instance = library.createInstance();
    const Vtables tables = library.vtables;
    void* const job = tables.mt->createJob(nullptr);
    void* const mutex = tables.mt->createMutex(nullptr, nullptr, nullptr);
    void* const rays = tables.raytrace->createContext(instance->engineInstance);
    ZantEventData event{};
    event.kind = EventCreateWindow;
    tables.library->sendBackEvent(instance->engineInstance, &event);
    library.unload();  // with an instance and more alive
    EXPECT_EQ(tables.library->getInfoInt(4), 0) << "open windows";
    EXPECT_EQ(tables.parser->parse(instance->parserContext, "echo;", nullptr, ParseText), 9);
    tables.library->exit();
    library.releaseInstance(instance);
    tables.mt->destroyJob(job);
    tables.mt->destroyMutex(mutex);
    tables.raytrace->destroyContext(rays);
    EXPECT_EQ(file.content(),
              "exit: an instance is still alive\nparse: the parser context is no longer alive\n"
              "exit: the engine has exited already\ndestroyInstance: the instance is no longer alive\n"
              "destroyJob: the job context is no longer alive\ndestroyMutex: the mutex is no longer alive\n"
              "destroyContext: the ray context is no longer alive\n");
}

TEST(LoopbackWatch, NotesTwoThreadsInOneParserContext) {
    const TemporaryFile file;
    const Environment environment{{"ZANT_LOOPBACK_WATCH", file.name()}, {"ZANT_LOOPBACK_FAULT", "slow-command=100"}};
    Host host;
    std::thread other([&] { host.parse("var x;"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    host.parse("var y;");
    other.join();
    EXPECT_EQ(file.content(), "parse: another thread is inside the same parser context\n");
}

TEST(LoopbackWatch, NotesMutexesInTheWrongHands) {
    const TemporaryFile file;
    const Environment environment{{"ZANT_LOOPBACK_WATCH", file.name()}};
    const Host host;
    Mutex mutex;
    mutex.init(host.library.vtables.mt);
    mutex.lock();
    mutex.lock();
    EXPECT_EQ(mutex.trylock(), 0);
    mutex.unlock();
    mutex.unlock();
    EXPECT_EQ(file.content(), "mutexOp: locked twice by one thread\nmutexOp: unlocked by a stranger\n");
}

// ---- what a test may ask for as well --------------------------------------------------------------------------------

TEST(LoopbackSymbols, AreFollowedWhenAsked) {
    const TemporaryFile transcript;
    const Environment environment{{"ZANT_LOOPBACK_SYMBOLS", "1"}, {"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}};
    Host host;
    const struct {
        const char* commands;
        int code;
        const char* said;
    } rows[] = {
        {"surface s,black; clear t;", 2, "Error: f:1:24: 't' is not declared, did you mean 's'?\n"},
        {"texture s,color,(1,1,1);", 3,
         "Error: f:1:9: 's' is another kind of object already, declared by 'surface' in f, line 1\n"},
        {"parse \"delete s;\";\n clear s;", 2, "Error: f:2:8: 's' was deleted in parse, line 1\n"},
        {"clear u; bitmap b; bitmapOp b,clear;", 2, "Error: f:1:7: 'u' is not declared\n"},
        {"bitmap c,charGray,(-1,4); clear c;", 4,
         "Error: f:1:19: a bitmap cannot have the size -1 x 4\nError: f:1:33: 'c' is not declared, did you mean "
         "'b'?\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(host.parse(row.commands, "f"), row.code) << row.commands;
        EXPECT_EQ(host.text.take(), row.said) << row.commands;
    }
    EXPECT_EQ(transcript.content(), "surface s,black;\ndelete s;\nbitmap b;\nbitmapOp b,clear;\n");
}

TEST(LoopbackSummary, CountsWhatHadNoEffect) {
    const TemporaryFile file;
    const Environment environment{{"ZANT_LOOPBACK_SUMMARY", file.name()}};
    {
        Host host;
        host.parse("fg render; fg gradients,0.5,2; fg gradients,1,2; var x; echo \"x\"; surface s,black; mesh m;");
        host.parse("meshOp m,points; meshOp m,removeUnusedTags; bitmap b; bitmapOp b,clear; lihgt; delete y;");
        Instance* const other = host.library.createInstanceWithListner(&host.text);
        other->parse("var x;", nullptr, ParseText);
        host.library.releaseInstance(other);
    }
    std::string text = file.content();  // instances are numbered through the process
    for (size_t at = 0; (at = text.find("instance ", at)) != std::string::npos; ++at)
        text.erase(at + 8, text.find(':', at) - at - 8);
    EXPECT_EQ(text,
              "instance: taken without effect: 0\n"
              "instance: taken without effect: 4\n"
              "  2  fg gradients d d\n  1  meshOp M removeUnusedTags\n  1  fg render\n");
}

// ---- hosts ---------------------------------------------------------------------------------------------------------

TEST(LoopbackHosts, ShareTheEngineAndNothingElse) {
    const ContractWatch watch;
    Host first;
    Mutex mutex;
    mutex.init(first.library.vtables.mt);
    {
        Host second;
        EXPECT_EQ(first.library.getInfoInt(2), 2);
        EXPECT_EQ(second.parse("var x,1;"), 0);
        EXPECT_EQ(first.instance->findObject("x", HandleObject), nullptr);
    }
    EXPECT_EQ(first.library.getInfoInt(2), 1);
    EXPECT_EQ(first.parse("var x,2;"), 0);
    EXPECT_NE(mutex.trylock(), 0);
    mutex.unlock();
    const auto seen = watch.check();
    EXPECT_TRUE(seen) << seen.message();
}

}  // namespace
}  // namespace Zant::Tests
