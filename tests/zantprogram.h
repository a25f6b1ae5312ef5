#ifndef ZANT_TESTS_ZANTPROGRAM_H
#define ZANT_TESTS_ZANTPROGRAM_H

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "own/childprocess.h"
#include "testkit/environment.h"

/// The built program, run as a person runs it. tests/shell.h has what needs a shell.
namespace ZantProgram {

struct Outcome {
    std::string line;    ///< what was run
    int code;            ///< -1, or in a shell -signal, when it died
    std::string output;  ///< both streams
};

inline std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << outcome.line.substr(0, 300) << "\n" << outcome.output.substr(0, 5000);
}

/// The words of a line, with blanks only between single quotes.
inline std::vector<std::string> wordsOf(const std::string& line) {
    std::vector<std::string> words;
    bool quoted = false, inWord = false;
    for (const char c : line) {
        if (c != ' ' || quoted) {
            if (!inWord) words.emplace_back();
            inWord = true;
        }
        if (c == '\'')
            quoted = !quoted;
        else if (c != ' ' || quoted)
            words.back() += c;
        else
            inWord = false;
    }
    return words;
}

/// Runs the program in a folder, without a shell.
inline Outcome runProgram(const std::string& arguments, const std::string& folder) {
    std::vector<std::string> command{ZANT_PROGRAM};
    for (const std::string& word : wordsOf(arguments))
        command.push_back(word);
    Outcome outcome{arguments, 0, ""};
    Zant::Platform::Child child(command, folder);
    const auto listen = [&](int milliseconds) {
        child.listen(
            milliseconds, [&](std::string_view text) { outcome.output += text; }, [](std::string_view) {});
    };
    while (!child.hasEnded())
        listen(20);
    const Zant::Platform::ChildStatus status = child.end();
    listen(0);
    outcome.code = status.death.empty() ? status.code : -1;
    return outcome;
}

inline std::string contentOf(const std::string& name) {
    std::ifstream file(std::filesystem::u8path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline size_t countOf(const std::string& what, const std::string& text) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size())
        ++count;
    return count;
}

/// Expects an exit code, and each of the texts in what was printed.
inline void expectShown(const Outcome& outcome, int code, const std::vector<std::string>& shown) {
    EXPECT_EQ(outcome.code, code) << outcome;
    for (const std::string& text : shown)
        EXPECT_NE(outcome.output.find(text), std::string::npos) << text << "\n" << outcome;
}

/// A test with a folder of its own, in which the program runs.
class Test : public testing::Test {
protected:
    Outcome zant(const std::string& arguments) const { return runProgram(arguments, folder); }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(std::filesystem::u8path(folder + "/" + name), std::ios::binary) << content;
    }
    std::string content(const std::string& name) const { return contentOf(folder + "/" + name); }

    const Zant::Testkit::TemporaryFolder temporary;
    const std::string& folder = temporary.name();
};

}  // namespace ZantProgram

#endif
