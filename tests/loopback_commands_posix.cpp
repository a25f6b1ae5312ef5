// The loopback engine and files that are none: devices and pipes.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "client/zant.h"
#include "loopbackhost.h"

namespace Zant::Tests {
namespace {

TEST(LoopbackFiles, ThatCannotBeWrittenToTheTranscriptAreSaidOnce) {
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", "/dev/full"}};
    Host host;
    testing::internal::CaptureStderr();
    EXPECT_EQ(host.parse("var x,1; var y,2;", "scene.txt"), 10);
    EXPECT_EQ(host.text.take(), "Error: scene.txt:1:1: the transcript '/dev/full' cannot be written and ends here\n");
    EXPECT_EQ(host.parse("delete x; delete y;"), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot write /dev/full: No space left"), std::string::npos);
}

TEST(LoopbackFiles, ThatHaveNoEndAreNotIncluded) {
    Host host;
    const TemporaryFile pipe;
    ASSERT_EQ(mkfifo(pipe.name().c_str(), 0600), 0);
    for (const std::string odd : {"/dev/zero", pipe.name().c_str(), "/proc/self/mem"}) {  // where reading fails
        EXPECT_EQ(host.parse("include \"" + odd + "\";"), 5) << odd;
        EXPECT_NE(host.text.take().find("cannot read the file"), std::string::npos) << odd;
    }
}

}  // namespace
}  // namespace Zant::Tests
