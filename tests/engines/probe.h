#ifndef ZANT_TESTS_ENGINES_PROBE_H
#define ZANT_TESTS_ENGINES_PROBE_H

#include <atomic>
#include <cstdio>
#include <functional>
#include <mutex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "client/records/zant_records.h"
#include "own/compiler.h"

/// What a test tells the test engines, and what it learns from them. It lives in the test program, which exports
/// zantTestProbe() for the engines to find, and so outlives every engine: also the calls of unloading are seen.
struct Probe {
    /// Every call that reached an engine, in order. Instances are numbered by their creation, from 1.
    std::vector<std::string> calls;
    /// Records that were sent back, as they arrived, and the instance that they were sent back on.
    std::vector<ZantEventData> sentBack;
    std::vector<int> sentBackOn;
    int instances = 0;
    /// Whether calls are written to the standard error stream as well, for a process that does not live to be asked.
    bool toStandardError = false;

    /// What the engine saw of the client's record when it was told to exit.
    struct AtExit {
        bool libraryTable, otherTables, file, mutex;
    };
    std::vector<AtExit> exits;

    // The script: what the engine answers.
    std::function<void(ZantEventData&)> onSendBack;
    std::function<void*(const std::string& name, void* record)> onFindObject;
    std::function<int(const std::string& command)> onParse;
    std::function<int(void* handle, ZantParserExchangeBuffer&)> onGetValue;
    std::function<int(void* handle, const ZantParserExchangeBuffer&)> onSetValue;
    const char* eventStrings[3] = {nullptr, nullptr, nullptr};
    uint64_t inputCounts[3] = {0, 0, 0};
    uint64_t outputCounts[3] = {0, 0, 0};
    bool acceptRays = true;
    bool giveJobs = true;
    int mutexAnswer = 0;  ///< added to what a try of a mutex answers
    int version = -1;     ///< the API version, -1 for the engine's own
    std::atomic<int> versionAsked{0};
    std::function<void()> onUnlock;  ///< called after the next unlocking of a mutex, once

    std::mutex guard;  ///< of calls and instances: engines are called on many threads

    /// Notes a call that is put together from its parts.
    template <class... Parts>
    void note(const Parts&... parts) {
        std::ostringstream call;
        ((call << parts), ...);
        const std::lock_guard<std::mutex> lock(guard);
        calls.push_back(call.str());
        if (toStandardError) std::fprintf(stderr, "%s\n", calls.back().c_str());
    }

    /// The calls since the last time.
    std::vector<std::string> take() { return std::exchange(calls, {}); }
};

/// The test program's probe.
extern "C" ZANT_EXPORTED Probe* zantTestProbe();

/// @return what the program exports under a name, or on Linux any module that shows its names; null for nothing
void* procedureOfAnyone(const char* name);

/// A new probe for the next test. The engine must be unloaded.
void renewProbe();

#endif
