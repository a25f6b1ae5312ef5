#ifndef ZANT_TESTKIT_TRANSCRIPT_H
#define ZANT_TESTKIT_TRANSCRIPT_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "own/cxx17.h"

namespace Zant::Testkit {

/// What a check found: true when all is as expected, otherwise with a message that says what is not.
/// Works with any test framework, for example as EXPECT_TRUE(result) << result.message().
class [[nodiscard]] Result {
public:
    static Result success() { return Result({}); }
    /// @param message not empty
    static Result failure(std::string message) { return Result(std::move(message)); }

    explicit operator bool() const { return text_.empty(); }
    /// Several lines; empty for a success.
    const std::string& message() const { return text_; }

private:
    explicit Result(std::string message) : text_(std::move(message)) {}

    std::string text_;
};

/// Commands as canonical plain text, the way the loopback engine writes them down: one command to a line, except
/// that a string with newlines in it goes on over several lines. Each line remembers its number in what it was taken
/// from.
class Transcript {
public:
    struct Line {
        std::string text;
        size_t number;  ///< from 1
    };

    Transcript() = default;

    /// Commands written down in a test. So that they may stand in a raw string, indented like the code around it, blank
    /// lines are left out and the indentation that all lines have in common does not count.
    /// @param source what messages call it
    static Transcript fromText(const std::string& text, std::string source = "expected");

    /// The lines of a file from a byte offset on, as they are; the first of them has number 1. Messages call it by the
    /// file's name. Throws std::runtime_error with that name when it cannot be read.
    static Transcript fromFile(const std::string& file, size_t offset = 0);

    /// Writes the lines to a file, to be compared with later. Throws std::runtime_error when it cannot be written.
    void save(const std::string& file) const;

    const std::vector<Line>& lines() const { return lineList_; }
    /// What messages call it.
    const std::string& source() const { return sourceName_; }
    void setSource(std::string source) { sourceName_ = std::move(source); }
    /// All lines, each with a newline.
    std::string text() const;

private:
    void addLines(const std::string& text);

    std::vector<Line> lineList_;
    std::string sourceName_;
};

/// Compares two transcripts byte by byte. The message shows the first line that differs: where it stands on both sides,
/// the line itself with a caret under the first byte that differs, and the lines before it. Long lines are cut around
/// that byte.
Result compare(const Transcript& expected, const Transcript& sent);

}  // namespace Zant::Testkit

#endif
