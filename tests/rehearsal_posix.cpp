// zant rehearse in global symbol scope, and what it leaves behind when it is stopped: nothing.

#include <csignal>

#include "rehearsaltest.h"
#include "shell.h"

namespace {

using RehearsalStopped = Rehearsal;
using RehearsalInGlobalScope = Rehearsal;

TEST_F(RehearsalInGlobalScope, FindsPluginsThatUseEachOthersCode) {
    const Outcome result = rehearse("plugin_exporting.so");
    expectShown(result, 1, {"build it with -fvisibility=hidden"});
    EXPECT_EQ(countOf(" ended\n", result.output) + countOf("left out", result.output), allRehearsals - 1) << result;
}

TEST_F(RehearsalStopped, TidiesUpWhenItIsStopped) {
    const ScopedVariable mistake("ZANT_TEST_MISTAKE", "hangs");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Running program(lineOf("rehearse --time-limit 600 " + plugins + "plugin_mistaken.so"));
        EXPECT_TRUE(program.waitFor("it hangs"));
        ASSERT_EQ(filesLeft(), 1);
        const fs::directory_entry own = *fs::directory_iterator(folder);
        EXPECT_TRUE(own.is_directory() && !own.is_symlink());
        EXPECT_EQ(own.status().permissions(), fs::perms::owner_all);
        EXPECT_EQ(program.end(signal).code, -signal);
        EXPECT_EQ(filesLeft(), 0);
    }
}

}  // namespace
