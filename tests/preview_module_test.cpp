// The preview engine as a module that is loaded and unloaded.

#include <gtest/gtest.h>

#include "loopbackhost.h"
#include "own/dlplatform.h"
#include "residentmemory.h"

namespace Zant::Tests {
namespace {

TEST(PreviewModule, IsAnEngineWithSettingsOfItsOwn) {
    const TemporaryFile transcript;
    const Environment asked{{"ZANT_PREVIEW_FAULT", "fail-command=2,nonsense"},
                            {"ZANT_PREVIEW_TRANSCRIPT", transcript.name()},
                            {"ZANT_LOOPBACK_FAULT", "init-refused"}};
    testing::internal::CaptureStderr();
    Host host;
    ASSERT_NE(host.instance, nullptr) << host.library.getLoadError();
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("preview engine: unknown fault \"nonsense\"; known are "),
              0U);
    EXPECT_STREQ(host.library.getInfoString(0), "Zant preview engine");
    EXPECT_EQ(host.parse("var x,1;"), 0);
    EXPECT_NE(host.parse("var x,2;"), 0);
    EXPECT_NE(host.text.take().find("because ZANT_PREVIEW_FAULT asks for it"), std::string::npos);
    EXPECT_EQ(transcript.content(), "var x,1;\n");
}

// The C library may still move about some megabytes for its threads; what stayed of each cycle would be a hundred.
template <class Cycle>
void expectFlatMemory(Cycle cycle) {
    for (int i = 0; i < 10; ++i)
        cycle();
    const long before = residentKilobytes();
    for (int i = 0; i < 100; ++i)
        cycle();
    const long grown = residentKilobytes() - before;
    EXPECT_LE(judgesResidence ? grown : 0, 4096);
}

TEST(PreviewModule, LeavesAHundredTimesWithoutATrace) {
    expectFlatMemory([] {
        Host host;
        ASSERT_EQ(host.parse("view size,(64,48); vertexMap map,3; vertex3d map,0,(-1,0,5); vertex3d map,1,(1,0,5);"
                             "vertex3d map,2,(0,1,5); mesh mesh; meshOp mesh,points,map; meshAddPoly mesh,0,{0,1,2};"
                             "render;"),
                  0);
    });
    EXPECT_FALSE(Platform::isOpen(ZANT_LOOPBACK_DIR "zant3" ZANT_ENGINE_SUFFIX));
}

// Its threads are still there when it has left.
TEST(PreviewModule, KeepsEmbreeWhenTheTracerLeaves) {
    expectFlatMemory([] {
        void* const module = Platform::openFile(ZANT_TRACER_MODULE);
        ASSERT_NE(module, nullptr) << Platform::lastReason();
        const auto buildAndTrace = reinterpret_cast<int (*)()>(Platform::findProcedure(module, "buildAndTrace"));
        EXPECT_EQ(buildAndTrace(), 400);
        Platform::closeFile(module);
        ASSERT_FALSE(Platform::isOpen(ZANT_TRACER_MODULE));
    });
    EXPECT_TRUE(Platform::isOpen("libembree3.so.3"));
    EXPECT_TRUE(Platform::isOpen("libtbb.so.12"));
}

}  // namespace
}  // namespace Zant::Tests
