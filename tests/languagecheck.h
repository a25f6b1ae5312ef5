#ifndef ZANT_TESTS_LANGUAGECHECK_H
#define ZANT_TESTS_LANGUAGECHECK_H

#include <cstddef>
#include <string>
#include <string_view>

#include "language/reader.h"

/// What holds for every input, well-formed or not; the tests and the fuzzers call the same functions.

struct CheckResult {
    size_t commands = 0;  ///< commands that were understood
    size_t errors = 0;
    std::string fault;  ///< empty, or what did not hold
};

/// Reads a text from memory of exactly its size, and again piece by piece through a small window: both must find the
/// same. Each command must survive being written in all three encodings and read again.
CheckResult checkText(std::string_view text);

/// Reads a block from memory of exactly its size, with the same demands on the command.
CheckResult checkBlock(std::string_view block);

/// Writes a command in all three encodings and reads each of them again.
/// @return empty, or what did not hold
std::string checkRoundTrips(const Zant::Language::Command& command);

#endif
