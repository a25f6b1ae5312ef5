#include <algorithm>

#include "testkit/transcript.h"

namespace Zant::Testkit {
namespace {

const size_t contextLines = 3;
const size_t bytesBeforeDifference = 60;  // of a long line, shown before the first byte that differs
const size_t bytesShown = 100;

using Lines = std::vector<Transcript::Line>;

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The part of a line that is shown, cut between characters.
struct Window {
    size_t begin;
    size_t end;

    Window(const std::string& line, size_t difference) {
        begin =
            line.size() <= bytesShown || difference <= bytesBeforeDifference ? 0 : difference - bytesBeforeDifference;
        end = std::min(line.size(), begin + bytesShown);
        while (begin > 0 && begin < line.size() && continuesCharacter(line[begin]))
            --begin;
        while (end < line.size() && continuesCharacter(line[end]))
            ++end;
    }
    std::string of(const std::string& line) const {
        return (begin > 0 ? "..." : "") + line.substr(begin, end - begin) + (end < line.size() ? "..." : "");
    }
};

size_t charactersIn(const std::string& text) {
    return text.size() - static_cast<size_t>(std::count_if(text.begin(), text.end(), continuesCharacter));
}

/// Where the caret goes: the number of characters shown before the byte that differs.
size_t caretColumn(const std::string& line, const Window& window, size_t difference) {
    while (difference > window.begin && difference < line.size() && continuesCharacter(line[difference]))
        --difference;
    return (window.begin > 0 ? 3 : 0) + charactersIn(line.substr(window.begin, difference - window.begin));
}

std::string label(const Transcript& side, size_t number) {
    return "  " + side.source() + ", line " + std::to_string(number) + ": ";
}

std::string aligned(const std::string& text, size_t width) {
    return text + std::string(width - std::min(width, text.size()), ' ');
}

std::string context(const Lines& lines, size_t index) {
    if (index == 0) return {};
    std::string text = "\n  before that, the same on both sides:";
    for (size_t i = index - std::min(index, contextLines); i < index; ++i) {
        text += "\n    " + Window(lines[i].text, 0).of(lines[i].text);
    }
    return text;
}

std::string differingLines(const Transcript& expected, const Transcript& sent, size_t index) {
    const std::string& left = expected.lines()[index].text;
    const std::string& right = sent.lines()[index].text;
    const auto ends = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    const size_t difference = static_cast<size_t>(ends.first - left.begin());
    const std::string leftLabel = label(expected, expected.lines()[index].number);
    const std::string rightLabel = label(sent, sent.lines()[index].number);
    const size_t width = std::max(leftLabel.size(), rightLabel.size());
    const Window window(right, difference);
    return aligned(leftLabel, width) + Window(left, difference).of(left) + '\n' + aligned(rightLabel, width) +
           window.of(right) + '\n' + std::string(width + caretColumn(right, window, difference), ' ') + "^ byte " +
           std::to_string(difference + 1);
}

std::string onlyLine(const Transcript& transcript, size_t index) {
    const Transcript::Line& line = transcript.lines()[index];
    return label(transcript, line.number) + Window(line.text, 0).of(line.text);
}

std::string nothingMore(const Transcript& transcript) {
    return "  " + transcript.source() + ": nothing more";
}

std::string difference(const Transcript& expected, const Transcript& sent, size_t index) {
    if (index == expected.lines().size()) return nothingMore(expected) + '\n' + onlyLine(sent, index);
    if (index == sent.lines().size()) return onlyLine(expected, index) + '\n' + nothingMore(sent);
    return differingLines(expected, sent, index);
}

}  // namespace

Result compare(const Transcript& expected, const Transcript& sent) {
    const Lines& left = expected.lines();
    const Lines& right = sent.lines();
    const auto same = [](const Transcript::Line& a, const Transcript::Line& b) { return a.text == b.text; };
    const auto ends = std::mismatch(left.begin(), left.end(), right.begin(), right.end(), same);
    if (ends.first == left.end() && ends.second == right.end()) return Result::success();
    const size_t index = static_cast<size_t>(ends.first - left.begin());
    return Result::failure("the commands differ (" + std::to_string(left.size()) + " lines expected, " +
                           std::to_string(right.size()) + " sent):\n" + difference(expected, sent, index) +
                           context(left, index));
}

}  // namespace Zant::Testkit
