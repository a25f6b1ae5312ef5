// The comforts of client/host.h, against the loopback engine.

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <utility>
#include <vector>

#include "client/host.h"
#include "client/listeners/linkedlisteners.h"
#include "own/dlplatform.h"

namespace {

using namespace Zant;

const std::string engineFile = ZANT_LOOPBACK_DIR "zant3" ZANT_ENGINE_SUFFIX;

bool isMapped() {
    return Platform::isOpen(engineFile.c_str());
}

TEST(HostHeader, SessionKeepsTheEngineUntilItsEnd) {
    Session session(ZANT_LOOPBACK_DIR);
    ASSERT_TRUE(session) << session.reason();
    session.createInstance().reset();
    EXPECT_TRUE(session.library().isLoaded()) << "the last instance does not take the engine along";
    EXPECT_NE(session.library().instanceMutex.handle, nullptr) << "handles may go to other threads";
    session.end();
    EXPECT_FALSE(session.library().isLoaded());
    EXPECT_FALSE(isMapped());
    session.end();
    EXPECT_FALSE(session.createInstance());
}

TEST(HostHeader, HandlesMayEndInAnyOrder) {
    DispatchLinkedListener listener;
    UniqueInstance late;
    UniqueRaytraceAccess lateRays;
    Session session(ZANT_LOOPBACK_DIR);
    for (const bool instanceFirst : {true, false}) {
        UniqueInstance instance = session.createInstance(listener);
        UniqueRaytraceAccess rays(instance);
        ASSERT_TRUE(instance && rays && instance->parserContext && rays->context);
        if (instanceFirst) instance.reset();
        EXPECT_EQ(bool(rays), !instanceFirst);
        rays.reset();
    }
    late = session.createInstance();
    lateRays = UniqueRaytraceAccess(late);
    UniqueInstance moved = session.createInstance();
    moved = session.createInstance();
    late = std::move(moved);
    EXPECT_FALSE(moved || lateRays) << "what was assigned over has ended";
    lateRays = UniqueRaytraceAccess(late);
    EXPECT_EQ(session.library().instanceList, late.get());
    EXPECT_EQ(late->next, nullptr);
    session.end();
    EXPECT_FALSE(late || lateRays) << "empty, and they say so";
    EXPECT_EQ(UniqueRaytraceAccess(late).get(), nullptr);
}

TEST(HostHeader, SessionsAreCounted) {
    Session first(ZANT_LOOPBACK_DIR);
    UniqueInstance ofFirst = first.createInstance();
    {
        Session second("/nonexistent/");
        ASSERT_TRUE(second) << "the engine is there already";
        UniqueInstance ofSecond = second.createInstance();
        second.end();
        EXPECT_FALSE(ofSecond);
    }
    EXPECT_TRUE(ofFirst);
    EXPECT_EQ(ofFirst->parse("echo \"still here\";", nullptr, ParseText), 0);
    first.end();
    EXPECT_FALSE(isMapped());
}

TEST(HostHeader, HandlesMayBeReleasedOnOtherThreads) {
    Session session(ZANT_LOOPBACK_DIR);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([handle = session.createInstance()]() mutable {
            handle->parse("fg reset;", nullptr, ParseText);
            handle.reset();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_FALSE(session.library().hasInstances());
}

TEST(HostHeader, SessionWithoutAnEngineSaysWhy) {
    Session session("/nonexistent/");
    EXPECT_FALSE(session);
    EXPECT_FALSE(session.createInstance());
    EXPECT_NE(std::string(session.reason()).find("/nonexistent/zant3"), std::string::npos);
}

TEST(HostHeader, DirectoryOfAModuleEndsWithItsSeparator) {
    const std::string directory = moduleDirectory(&engineFile);
    ASSERT_FALSE(directory.empty());
    EXPECT_EQ(directory.back(), std::filesystem::path::preferred_separator);
    EXPECT_TRUE(std::filesystem::exists(directory + "host_header_test" ZANT_PROGRAM_SUFFIX));
    int local = 0;
    EXPECT_EQ(moduleDirectory(&local), "") << "the stack belongs to no module";
}

TEST(HostHeader, Utf16PairsItsSurrogates) {
    EXPECT_EQ(utf8(u"a\u00e9\u20ac\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(utf8(nullptr), "");
}

// Last: from here on the file stays.
TEST(HostHeader, EngineFileIsKeptWhenAskedFor) {
    Session session(ZANT_LOOPBACK_DIR);
    ASSERT_TRUE(session);
    EXPECT_TRUE(keepEngineFile(session.library()));
    session.end();
    EXPECT_FALSE(session.library().isLoaded());
    EXPECT_TRUE(isMapped());
    EXPECT_FALSE(keepEngineFile(session.library())) << "nothing is loaded any more";
}

}  // namespace
