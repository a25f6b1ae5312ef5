// The comforts of client/host.h, against the loopback engine.

#include <gtest/gtest.h>

#include <filesystem>

#include "client/host.h"
#include "client/listeners/linkedlisteners.h"

namespace {

using namespace Zant;

const std::string engineFile = ZANT_LOOPBACK_DIR "zant3" ZANT_ENGINE_SUFFIX;

bool isMapped() {
    void* handle = dlopen(engineFile.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}

TEST(HostHeader, SessionKeepsTheEngineUntilItsEnd) {
    Session session(ZANT_LOOPBACK_DIR);
    ASSERT_TRUE(session) << session.library().getLoadError();
    session.createInstance().reset();
    EXPECT_TRUE(session.library().isLoaded()) << "the last instance does not take the engine along";
    DispatchLinkedListener listener;
    UniqueInstance instance = session.createInstance(listener);
    ASSERT_TRUE(instance);
    { const UniqueRaytraceAccess rays(instance->createRaytraceAccess()); }
    instance.reset();
    session.end();
    EXPECT_FALSE(session.library().isLoaded());
    EXPECT_FALSE(isMapped());
    session.end();
}

TEST(HostHeader, SessionWithoutAnEngineSaysWhy) {
    const Session session("/nonexistent/");
    EXPECT_FALSE(session);
    EXPECT_FALSE(session.createInstance());
    EXPECT_NE(std::string(session.library().getLoadError()).find("/nonexistent/zant3"), std::string::npos);
}

TEST(HostHeader, DirectoryOfAModuleEndsWithItsSeparator) {
    const std::string directory = moduleDirectory(&engineFile);
    ASSERT_FALSE(directory.empty());
    EXPECT_EQ(directory.back(), '/');
    EXPECT_TRUE(std::filesystem::exists(directory + "host_header_test"));
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
