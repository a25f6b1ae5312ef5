#ifndef ZANT_TESTS_REHEARSALTEST_H
#define ZANT_TESTS_REHEARSALTEST_H

#include "zantprogram.h"

namespace fs = std::filesystem;
using Zant::Testkit::ScopedVariable;
using namespace ZantProgram;

const std::string plugins = ZANT_TEST_PLUGINS;
constexpr size_t allRehearsals = 13;  // the look at the hooks included

/// Each test has a folder for temporary files of its own, which must be empty at its end.
class Rehearsal : public ZantProgram::Test {
protected:
    ~Rehearsal() override { EXPECT_EQ(filesLeft(), 0); }

    std::ptrdiff_t filesLeft() const { return std::distance(fs::directory_iterator(fs::u8path(folder)), {}); }

    Outcome rehearse(const std::string& plugin) const { return zant("rehearse " + plugins + plugin); }

    const ScopedVariable folderForFiles{"TMPDIR", folder}, onWindows{"TMP", folder};
    const ScopedVariable locales{"LOCPATH", plugins + "locales"};
};

#endif
