// What a host sees of the loopback engine's faults, and what the engine notes of a host's.

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <thread>
#include <vector>

#include "client/zant.h"
#include "loopbackhost.h"
#include "testkit/commandlog.h"

namespace Zant::Tests {
namespace {

using Testkit::CommandLog;
using Testkit::ContractWatch;
using Testkit::LoopbackFault;

TEST(LoopbackFaults, KeepTheEngineFromLoading) {
    for (const char* list : {"init-refused", "version-0", " version-0 , init-refused "}) {
        const LoopbackFault fault(list);
        Library library(ZANT_LOOPBACK_DIR);
        EXPECT_FALSE(library.load(nullptr)) << list;
        EXPECT_STRNE(library.getLoadError(), "");
        EXPECT_EQ(library.createInstance(), nullptr);
        EXPECT_FALSE(library.loadExplicitly(nullptr)) << list;
        EXPECT_FALSE(library.loadExplicitly(nullptr)) << list;
    }
    Host host;
    EXPECT_NE(host.instance, nullptr) << "the environment is read again";
}

TEST(LoopbackFaults, RefuseInstances) {
    const LoopbackFault fault("null-instance,events-at-creation,events-at-destruction");
    Host host;
    EXPECT_EQ(host.instance, nullptr);
    EXPECT_EQ(host.text.take(), "");
    EXPECT_FALSE(host.library.isLoaded());
}

TEST(LoopbackFaults, RaiseEventsAtBothEndsOfAnInstance) {
    const LoopbackFault fault("events-at-creation,events-at-destruction");
    Host host;
    EXPECT_EQ(host.text.take(), "the instance is being created\n");
    host.library.releaseInstance(host.instance);
    EXPECT_EQ(host.text.take(), "the instance is being destroyed\n");
    EXPECT_EQ(host.text.closed, 1);

    Library library(ZANT_LOOPBACK_DIR);  // and with the events sent back
    testing::internal::CaptureStdout();
    library.releaseInstance(library.createInstance());
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "the instance is being created\nthe instance is being destroyed\n");
}

TEST(LoopbackFaults, FailOneCommand) {
    const LoopbackFault fault("fail-command=3");
    Host host;
    CommandTextBuffer buffer(host.instance);
    int codes[5];
    for (int& code : codes)
        code = host.parse("var x,1;");
    const int expected[5] = {0, 0, 8, 0, 0};
    EXPECT_TRUE(std::equal(codes, codes + 5, expected));
    EXPECT_NE(host.text.take().find("this command fails because"), std::string::npos);
}

TEST(LoopbackFaults, SlowDownCommands) {
    const LoopbackFault fault("slow-command=30");
    Host host;
    const auto begin = std::chrono::steady_clock::now();
    host.parse("var x,1;");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(30));
}

class ThreadListener : public TextCollector {
public:
    void textLine(void*, const char*) override { thread = std::this_thread::get_id(); }
    std::thread::id thread;
};

TEST(LoopbackFaults, RaiseEventsFromAnotherThread) {
    for (const char* list : {"", "foreign-event"}) {
        const LoopbackFault fault(list);
        ThreadListener listener;
        Library library(ZANT_LOOPBACK_DIR);
        library.createInstanceWithListner(&listener)->parse("echo \"x\";", nullptr, ParseText);
        EXPECT_NE(listener.thread, std::thread::id());
        EXPECT_EQ(listener.thread == std::this_thread::get_id(), list[0] == 0);
    }
}

TEST(LoopbackFaults, HideObjectsAndValuesAndPixels) {
    {
        const LoopbackFault fault("lookup-nothing");
        Host host;
        CommandTextBuffer buffer(host.instance);
        DoubleSymbol number(buffer, "x");
        number.registerSymbol();
        EXPECT_EQ(number.handle, 0U);
        EXPECT_FALSE(number.isRegistered());
    }
    {
        const LoopbackFault fault("wrong-type");
        Host host;
        CommandTextBuffer buffer(host.instance);
        DoubleSymbol number(buffer, "x");
        StringSymbol string(buffer, "s");
        number.registerSymbol();
        string.registerSymbol();
        Double value{5};
        String text;
        EXPECT_FALSE(number.directGet(value));
        EXPECT_EQ(value.value, 0);
        EXPECT_EQ(buffer.errorCode, 2);
        EXPECT_FALSE(string.directGet(text));
        buffer.error(0);
    }
    const LoopbackFault fault("bitmap-without-memory");
    Host host;
    CommandTextBuffer buffer(host.instance);
    const BitmapSymbol bitmap(buffer, 4, 4, PixelCharRgba);
    EXPECT_EQ(bitmap.bitmap.data, nullptr);
    EXPECT_EQ(bitmap.bitmap.width, 4);
}

TEST(LoopbackFaults, OfAnUnknownNameAreSaid) {
    const LoopbackFault fault("null-instanze,fail-command=0,fail-command=x,slow-command");
    testing::internal::CaptureStderr();
    const Host host;
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_NE(host.instance, nullptr);
    for (const char* entry : {"\"null-instanze\"", "\"fail-command=0\"", "\"fail-command=x\"", "\"slow-command\""}) {
        EXPECT_NE(text.find(entry), std::string::npos) << entry;
    }
    EXPECT_NE(text.find("known are init-refused, "), std::string::npos);
}

// ---- the watch -----------------------------------------------------------------------------------------------------

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
    EXPECT_EQ(tables.raytrace->createContext(engine), nullptr);
    EXPECT_EQ(tables.mt->mutexOp(&record, 1, 0), 0);
    tables.mt->destroyJob(&record);
    EXPECT_EQ(file.content(),
              "parse: the parser context is no longer alive\nparse: the parser context does not belong to this engine\n"
              "getValue: the parser context is no longer alive\ndestroyInstance: the instance is no longer alive\n"
              "createContext: the instance is no longer alive\nmutexOp: the mutex does not belong to this engine\n"
              "destroyJob: the job context does not belong to this engine\n");
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
    library.unload();  // with an instance alive
    EXPECT_EQ(tables.parser->parse(instance->parserContext, "echo;", nullptr, ParseText), 9);
    tables.library->exit();
    library.releaseInstance(instance);
    EXPECT_EQ(file.content(),
              "exit: an instance is still alive\nparse: the parser context is no longer alive\n"
              "exit: the engine has exited already\ndestroyInstance: the instance is no longer alive\n");
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

// ---- what a test may ask for as well
// ---------------------------------------------------------------------------------

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

TEST(LoopbackHosts, ShareTheEngineAndLeaveItInAnyOrder) {
    const ContractWatch watch;
    const CommandLog log(ZANT_LOOPBACK_DIR);
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
    mutex.destroy();
    {
        Host third;
        first.library.releaseInstance(first.instance);
        EXPECT_EQ(third.parse("var x,3;"), 0) << "the older host has gone first";
    }
    const auto seen = watch.check();
    EXPECT_TRUE(seen) << seen.message();
    const auto sent = log.check("var x,1;\nvar x,2;\nvar x,3;");
    EXPECT_TRUE(sent) << sent.message();
}

}  // namespace
}  // namespace Zant::Tests
