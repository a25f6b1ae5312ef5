#ifndef ZANT_TESTS_ZANTPROGRAM_H
#define ZANT_TESTS_ZANTPROGRAM_H

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "testkit/environment.h"

/// The built program, run as a person runs it.
namespace ZantProgram {

struct Outcome {
    int code;            ///< -1: ended by a signal
    std::string output;  ///< both streams
};

/// Runs a line of the shell.
inline Outcome run(const std::string& command) {
    Outcome result{-1, ""};
    std::FILE* pipe = popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    std::array<char, 4096> piece;
    for (size_t count; (count = std::fread(piece.data(), 1, piece.size(), pipe)) > 0;)
        result.output.append(piece.data(), count);
    const int status = pclose(pipe);
    result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

inline Outcome zant(const std::string& arguments) {
    return run(ZANT_PROGRAM " " + arguments);
}

/// A name in a folder of this test program's own, which goes with it.
inline std::string temporary(const std::string& name) {
    static const Zant::Testkit::TemporaryFolder folder;
    return folder.name() + "/" + name;
}

inline std::string contentOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void write(const std::string& name, const std::string& content) {
    std::ofstream(name, std::ios::binary) << content;
}

inline size_t countOf(const std::string& what, const std::string& text) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size())
        ++count;
    return count;
}

}  // namespace ZantProgram

#endif
