// zant rehearse, on good plug-ins and on plug-ins with a mistake each.

#include "rehearsaltest.h"

namespace {

TEST_F(Rehearsal, FindsNothingOnAGoodPlugin) {
    for (const char* plugin : {"plugin_one.so", "plugin_two.so"}) {
        const Outcome result = rehearse(plugin);
        expectShown(result, 0, {"nothing found"});
        EXPECT_EQ(countOf("  found\n", result.output), 3u) << result;
        EXPECT_EQ(countOf(" ended\n", result.output) + countOf("left out", result.output), allRehearsals) << result;
    }
}

TEST_F(Rehearsal, FindsPlantedMistakes) {
    const struct {
        const char* mistake;
        const char* seen;
        size_t times;  // at least: how often the rehearsals come by the mistake
        const char* fault = "";
        const char* limit = "30";
    } rows[] = {
        {"does-not-start", "the plug-in's start hook answered 0", 10},
        {"after-release", "the engine saw: parse: the parser context is no longer alive", 8},
        {"after-unload", "the engine saw: parse: the parser context is no longer alive", 8},
        {"static-destructor", "the engine saw: parse: the parser context is no longer alive", 9},
        {"two-threads", "the engine saw: parse: another thread is inside the same parser context", 3,
         "slow-command=60"},
        {"ends-process", "ended the process, with exit code 0, while zantPluginWork ran", 11},
        {"hangs", "did not come back within 2 s, while zantPluginWork ran", 9, "", "2"},
    };
    for (const auto& row : rows) {
        const ScopedVariable mistake("ZANT_TEST_MISTAKE", row.mistake), fault("ZANT_LOOPBACK_FAULT", row.fault);
        const Outcome result = rehearse("plugin_mistaken.so --time-limit " + std::string(row.limit));
        expectShown(result, 1, {"see above"});
        EXPECT_GE(countOf(row.seen, result.output) + countOf("left out: ", result.output), row.times)
            << row.mistake << result;
    }
}

TEST_F(Rehearsal, WantsTheHooksThatItIsTold) {
    const struct {
        std::string arguments;
        int code;
        std::vector<std::string> shown;
    } rows[] = {
        {"plugin_one.so --work zantPluginStop", 0, {"nothing found"}},
        {"plugin_one.so --work zantPluginWorks", 1, {"zantPluginStart", " found\n", "zantPluginWorks", "MISSING"}},
        {"../engines/no_entry/zant3" ZANT_ENGINE_SUFFIX " --stop zant3_initialise", 0, {"not there", "nothing found"}},
        {"../engines/probe/zant3" ZANT_ENGINE_SUFFIX, 1, {"zantPluginWork ", "not there", "not as named"}},
        {"CTestTestfile.cmake", 1, {"text, not a library"}},
        {"nothing.so", 1, {"the plug-in cannot be opened"}},
    };
    for (const auto& row : rows) {
        const Outcome result = rehearse(row.arguments);
        expectShown(result, row.code, row.shown);
        EXPECT_EQ(countOf("open and close", result.output), row.code == 0 ? 1u : 0u) << result;
    }
}

}  // namespace
