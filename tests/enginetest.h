#ifndef ZANT_TESTS_ENGINETEST_H
#define ZANT_TESTS_ENGINETEST_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engines/probe.h"
#include "own/dlplatform.h"

using Calls = std::vector<std::string>;

/// The folder of a test engine, with its final separator.
inline std::string engine(const char* fault) {
    return ZANT_TEST_ENGINES + std::string(fault) + '/';
}

/// Whether this process has the engine's file open.
inline bool isOpen(const std::string& directory, const char* name = "zant3") {
    return Zant::Platform::isOpen((directory + name + ZANT_ENGINE_SUFFIX).c_str());
}

/// A test with a new probe.
class EngineTest : public testing::Test {
protected:
    void SetUp() override { renewProbe(); }
    static Probe& probe() { return *zantTestProbe(); }
};

#endif
