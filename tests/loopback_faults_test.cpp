// What a host sees of the faults that the loopback engine was asked for.

#include <gtest/gtest.h>

#include <thread>

#include "client/zant.h"
#include "loopbackhost.h"
#include "testkit/commandlog.h"

namespace Zant::Tests {
namespace {

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
    for (const int code : {0, 0, 8, 0, 0})
        EXPECT_EQ(host.parse("var x,1;"), code);
    EXPECT_NE(host.text.take().find("this command fails because"), std::string::npos);
}

TEST(LoopbackFaults, RaiseEventsFromAnotherThread) {
    for (const char* list : {"", "foreign-event"}) {
        const LoopbackFault fault(list);
        Host host;
        std::thread::id thread;
        host.text.atText = [&] { thread = std::this_thread::get_id(); };
        host.parse("echo \"x\";");
        EXPECT_NE(thread, std::thread::id());
        EXPECT_EQ(thread == std::this_thread::get_id(), list[0] == 0);
    }
}

TEST(LoopbackFaults, HideObjectsAndValuesAndPixels) {
    for (const char* list : {"lookup-nothing", "wrong-type"}) {
        const LoopbackFault fault(list);
        Host host;
        CommandTextBuffer buffer(host.instance);
        DoubleSymbol number(buffer, "x");
        StringSymbol string(buffer, "s");
        number.registerSymbol();
        string.registerSymbol();
        EXPECT_EQ(number.isRegistered(), std::string(list) == "wrong-type");
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
    const LoopbackFault fault("null-instanze,fail-command=0,fail-command=x,fail-command=3x,slow-command");
    testing::internal::CaptureStderr();
    const Host host;
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_NE(host.instance, nullptr);
    for (const char* entry :
         {"\"null-instanze\"", "\"fail-command=0\"", "\"fail-command=x\"", "\"fail-command=3x\"", "\"slow-command\""}) {
        EXPECT_NE(text.find(entry), std::string::npos) << entry;
    }
    EXPECT_NE(text.find("known are init-refused, "), std::string::npos);
}

}  // namespace
}  // namespace Zant::Tests
