// The loopback engine, loaded as a host loads it: what it says, serves and keeps for hosts.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

#include "client/zant.h"
#include "engines/records/rayrecords.h"
#include "loopbackhost.h"

namespace Zant::Tests {
namespace {

TEST(Loopback, SpeaksThroughTheListenerAndClosesItsStream) {
    TextCollector text;
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstanceWithListner(&text);
    ASSERT_NE(instance, nullptr) << library.getLoadError();
    EXPECT_EQ(text.opened, 0);
    EXPECT_EQ(instance->parse("echo \"one\";echo \"two\nthree\n\"; echo;", nullptr, ParseText), 0);
    EXPECT_EQ(text.take(), "one\ntwo\nthree\n\n");
    EXPECT_EQ(text.opened, 1);
    library.releaseInstance(library.createInstanceWithListner(&text));
    EXPECT_EQ(text.closed, 0) << "an instance that said nothing";
    library.releaseInstance(instance);
    EXPECT_EQ(text.closed, 1);
    EXPECT_FALSE(library.isLoaded());
}

TEST(Loopback, NamesTheMistakeAndGoesOn) {
    const struct {
        const char* commands;
        int code;
        const char* text;
    } rows[] = {
        {"lihgt;", 1, "Error: scene.txt:1:1: "},
        {"echo 1;", 1, "Error: scene.txt:1:"},
        {"\n\n  var;echo \"on\";", 1, "Error: scene.txt:3:6: "},
        {"\n delete\n  nobody;", 2, "Error: scene.txt:3:3: there is no object 'nobody'"},
        {"var v; \n bitmapOp v,show;", 3, "Error: scene.txt:2:11: 'v' is not a bitmap"},
        {"lihgt; delete nobody;", 1, "Error: scene.txt:1:1: "},
        {"parse \"lihgt;\",\"inner\";", 1, "Error: inner:1:1: "},
        {"bitmap b,charGray,(100000,4);", 4, "Error: scene.txt:1:19: a bitmap cannot have the size"},
        {"include \"no such file\";", 5, "Error: scene.txt:1:9: cannot read the file 'no such file'"},
        {"include \"/\";", 5, "Error: scene.txt:1:9: cannot read the file '/'"},
    };
    Host host;
    for (const auto& row : rows) {
        EXPECT_EQ(host.parse(row.commands, "scene.txt"), row.code) << row.commands;
        const std::string text = host.text.take();
        EXPECT_EQ(text.substr(0, std::strlen(row.text)), row.text) << row.commands;
        EXPECT_EQ(text.find("on\n") != std::string::npos, std::strstr(row.commands, "\"on\"") != nullptr);
    }
}

TEST(LoopbackCommands, SayWhatTheyKnow) {
    Host host;
    host.parse("var x,1; bitmap b,charGray,(4,2); vertexMap v,2,fixedSize,3; mesh m; surface s,black;");
    host.parse("showInfo all;");
    EXPECT_EQ(host.text.take(),
              "b: bitmap charGray 4 x 2\nm: mesh 0 polygons\ns: surface\nv: vertexMap 3 rows, dimension 2, 1 samples\n"
              "x: var x,1;\nall: 5\n");
    host.parse("showInfo bitmaps; objectInfo m;");
    EXPECT_EQ(host.text.take(), "b: bitmap charGray 4 x 2\nbitmaps: 1\nm: mesh 0 polygons\n");
    host.parse("help plain; help fg; help;");
    const std::string text = host.text.take();
    EXPECT_NE(text.find("fg gradients d d\n"), std::string::npos);
    EXPECT_NE(text.find("lightAdd\n"), std::string::npos);
    EXPECT_NE(text.find("Error: "), std::string::npos);
}

// ---- events ------------------------------------------------------------------------------------------------------

TEST(LoopbackEvents, SentBackShowTextAndKeepWindows) {
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstance();
    testing::internal::CaptureStdout();
    instance->parse("echo \"to the standard output\";", nullptr, ParseText);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "to the standard output\n");
    EXPECT_EQ(library.getInfoInt(3), 1);

    BounceBackListener bounce;
    bounce.activate(instance);
    void* const first = bounce.createWindow();
    void* const second = bounce.createWindow();
    bounce.setWindowFlags(first, 3);
    EXPECT_EQ(bounce.getWindowFlags(first), 3);
    EXPECT_EQ(bounce.getWindowFlags(second), 0);
    _ZantEventMousePosition position{{7, 7}, {}};
    bounce.getWindowMousePosition(first, position);
    EXPECT_EQ(position.position[0], 0);
    _ZantEventKey key{};
    key.present = 1;
    bounce.getWindowKeyEvent(first, key);
    EXPECT_EQ(key.present, 0);
    for (void* const window : {first, first, static_cast<void*>(&library)})
        bounce.destroyWindow(window);
    EXPECT_EQ(library.getInfoInt(4), 1) << "the second one";
    EXPECT_EQ(bounce.recognizeEventString("Error: text:1:1"), 100);

    library.createInstance();  // keeps the engine
    library.releaseInstance(instance);
    EXPECT_EQ(library.getInfoInt(3), 0);
}

TEST(LoopbackEvents, SentBackAnswerWithALineOfInput) {
    const TemporaryFile input("first\r\n\nlast");
    ASSERT_NE(std::freopen(input.name().c_str(), "r", stdin), nullptr);
    Library library(ZANT_LOOPBACK_DIR);
    BounceBackListener bounce;
    Instance* const instance = library.createInstance();
    bounce.activate(instance);
    _ZantEventTextBufferData answer{};
    for (const char* line : {"first", "", "last", static_cast<const char*>(nullptr)}) {
        bounce.getTextLine(nullptr, "", &answer);
        EXPECT_STREQ(answer.text, line);
    }
    answer.size = 3;
    ZantEventData event{};
    event.value = reinterpret_cast<int64_t>(&answer);
    for (const _ZantEventKind kind : {EventAllocTextBuffer, EventFreeTextBuffer}) {
        event.kind = kind;
        EXPECT_EQ(library.vtables.library->sendBackEvent(instance->engineInstance, &event), 1);
        EXPECT_EQ(answer.buffer != nullptr, kind == EventAllocTextBuffer);
    }
    event.kind = EventGetWindowFlags;
    event.text = reinterpret_cast<const char*>(1);  // the selector
    library.vtables.library->sendBackEvent(instance->engineInstance, &event);
    EXPECT_EQ(event.value, 0);
}

TEST(LoopbackEvents, MayCallTheEngine) {
    Host host;
    host.text.atText = [&] { host.parse("echo \"inner\";"); };
    EXPECT_EQ(host.parse("echo \"outer\"; echo \"last\";"), 0);
    EXPECT_EQ(host.text.take(), "inner\nouter\nlast\n");
}

TEST(LoopbackEvents, CarryTheUserDataOfAHandler) {
    std::string said;
    Library library(ZANT_LOOPBACK_DIR);
    const auto collect = [](ZantEventData* event) {
        if (event->kind == EventTextLine) *static_cast<std::string*>(event->reserved) += event->text;
    };
    library.createInstanceWithHandler(collect, &said)->parse("echo \"hello\";", nullptr, ParseText);
    EXPECT_EQ(said, "hello");
}

// ---- jobs and rays -----------------------------------------------------------------------------------------------

// Work items that note who does them, take a moment, and may start the job again.
class Noting : public MTJobSplit {
public:
    using MTJobSplit::MTJobSplit;
    void run(const size_t* index, int thread) override {
        const bool isInside = index[0] < dims[0] && index[1] < dims[1] && index[2] < dims[2];
        ++(isInside ? calls[index[0] + dims[0] * (index[1] + dims[1] * index[2])] : outside);
        threads |= 1U << thread;
        if (index[0] == 0 && index[1] == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (startedAgain && thread != 0) ++strangers;
        if (thread == 0 || !startAgain.exchange(false)) return;  // one that the outer job waits for
        const size_t fewer[3] = {2, 2, 2};
        startedAgain = true;
        start(fewer, 4);
        startedAgain = false;
    }
    static constexpr size_t dims[3] = {10, 20, 30};
    static inline thread_local bool startedAgain = false;  // here: what follows on this thread calls itself thread 0
    std::atomic<int> calls[10 * 20 * 30] = {};
    std::atomic<int> outside{0};
    std::atomic<int> strangers{0};
    std::atomic<unsigned> threads{0};
    std::atomic<bool> startAgain{false};
};

// A worker too many would not fail a check, it would let the run wait until its time is up.
TEST(LoopbackJobs, AreDoneOnceByNoMoreThreadsThanAskedFor) {
    Host host;
    {
        Noting job(host.library.vtables.mt);
        int rounds = 0;
        for (const int threads : {8, 2, 1, 0}) {  // those of the first round stay, and have to keep out
            job.threads = 0;
            job.start(Noting::dims, threads);
            ++rounds;
            for (const auto& calls : job.calls)
                ASSERT_EQ(calls, rounds) << threads;
            EXPECT_LT(job.threads, 1U << std::max(threads, 1));
            EXPECT_GE(job.threads, threads > 1 ? 2U : 1U) << "the caller's thread alone";
        }
        job.startAgain = true;
        job.start(Noting::dims, 4);
        EXPECT_EQ(job.calls[0], rounds + 2);
        EXPECT_EQ(job.strangers, 0) << "a job within an item has the item's thread, and the number 0 again";
        const size_t none[3] = {0, 0, 0};
        job.start(none, 4);
        EXPECT_EQ(job.calls[0], rounds + 3) << "counts of 0 are 1";
        EXPECT_EQ(job.outside, 0);
    }
    EXPECT_EQ(host.library.getInfoInt(5), 0) << "job contexts left";
}

TEST(LoopbackJobs, SurviveWorkItemsThatThrow) {
    const Host host;
    const MTFunctionsVtable& mt = *host.library.vtables.mt;
    void* const job = mt.createJob(nullptr);
    const size_t dims[3] = {3, 1, 1};
    int calls = 0;
    testing::internal::CaptureStderr();
    mt.runJob(
        job, dims, 1, [](const size_t*, int, void* count) { throw ++*static_cast<int*>(count); }, &calls);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("loopback engine: a work item ended with an exception\n"),
              std::string::npos);
    EXPECT_EQ(calls, 3);
    mt.destroyJob(job);
}

TEST(LoopbackRays, LieInBlocksOfTheEngine) {
    Host host;
    const std::unique_ptr<RaytraceAccess> rays(host.instance->createRaytraceAccess());
    const size_t dims[3] = {100, 3, 2};
    ASSERT_TRUE(rays->allocBuffer(dims));
    ASSERT_EQ(rays->input.blockCount(), 2U * 3 * 2);
    Engine::RayBufferDescription description;
    std::memcpy(&description, &rays->input, sizeof description);
    EXPECT_EQ(description.raysPerBlock, 64U);
    for (size_t block = 0; block < rays->input.blockCount(); ++block) {
        for (size_t ray = 0; ray < description.raysPerBlock; ++ray) {
            rays->input.blocks[block][ray].direction[2] = 1;
            EXPECT_EQ(rays->output.blocks[block][ray].hit, 0);
        }
    }
    const RaytraceFunctionsVtable& table = *host.library.vtables.raytrace;
    EXPECT_NE(table.getBlock(rays->context, 11, 1), nullptr);
    EXPECT_EQ(table.getBlock(rays->context, 12, 1), nullptr);
    EXPECT_EQ(table.getBlock(rays->context, 0, 2), nullptr);
    const size_t refused[][3] = {
        {SIZE_MAX, SIZE_MAX, 2}, {SIZE_MAX, 1, 1}, {1 << 20, 1 << 10, 1}, {1, SIZE_MAX, SIZE_MAX}};
    for (const auto& dimensions : refused)
        EXPECT_FALSE(rays->allocBuffer(dimensions));
    EXPECT_EQ(rays->input.blocks[11][63].direction[2], 1) << "the layout before a refusal stays";
    const size_t whole[3] = {128, 1, 1};
    EXPECT_TRUE(rays->allocBuffer(whole));
    EXPECT_EQ(rays->input.blockCount(), 2U);
    const size_t none[3] = {5, 0, 5};
    EXPECT_TRUE(rays->allocBuffer(none));
    EXPECT_EQ(rays->input.blockCount(), 0U);
}

TEST(LoopbackHosts, MayBeMoreThanHaveAPlaceOfTheirOwn) {
    std::vector<std::unique_ptr<Host>> many;
    for (int host = 0; host < 40; ++host)
        many.push_back(std::make_unique<Host>());
    for (const auto& host : many)
        EXPECT_EQ(host->parse("var x,1;"), 0);
}

}  // namespace
}  // namespace Zant::Tests
