#include "app/inputfile.h"

#include <fmt/core.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "app/text.h"
#include "client/encoding/blocklayout.h"

namespace Zant::App {

using namespace BlockLayout;

namespace {

constexpr uint64_t largestBlock = uint64_t{1} << 32;

size_t fileSize(std::FILE* file) {
    struct stat facts {};
    return fstat(fileno(file), &facts) == 0 && S_ISREG(facts.st_mode) ? static_cast<size_t>(facts.st_size) : 0;
}

/// How text begins whose characters have two or four bytes: with its mark, or with ASCII, 'x' for each byte of it.
struct WideText {
    const char* name;
    std::string_view mark;
    std::string_view ascii;
};
constexpr WideText wideTexts[] = {
    {"UTF-32", {"\xFF\xFE\0\0", 4}, {"x\0\0\0", 4}},
    {"UTF-32", {"\0\0\xFE\xFF", 4}, {"\0\0\0x", 4}},
    {"UTF-16", "\xFF\xFE", {"x\0", 2}},
    {"UTF-16", "\xFE\xFF", {"\0x", 2}},
};

bool repeats(std::string_view pattern, std::string_view head) {
    if (head.empty() || head.size() % pattern.size() != 0) return false;
    for (size_t at = 0; at < head.size(); ++at)
        if ((head[at] != 0) != (pattern[at % pattern.size()] != 0)) return false;
    return true;
}

const char* wideNameOf(std::string_view head) {
    for (const WideText& text : wideTexts)
        if (head.substr(0, text.mark.size()) == text.mark || repeats(text.ascii, head)) return text.name;
    return nullptr;
}

/// Text holds no zero byte, while the upper bytes of a length always are zero.
bool isBlock(std::string_view head) {
    return head.size() == wordSize && wordAt(head.data()) <= largestBlock;
}

}  // namespace

InputFile::InputFile(const std::string& fileName)
    : shownName(fileName == "-" ? "standard input" : fileName),
      file(fileName == "-" ? stdin : std::fopen(fileName.c_str(), "rb")) {
    if (!file) throw InputError(fmt::format("{}: {}", shownName, std::strerror(errno)));
    head.resize(wordSize);
    head.resize(std::fread(head.data(), 1, wordSize, file.get()));
    if (std::ferror(file.get())) throw InputError(fmt::format("{}: {}", shownName, std::strerror(errno)));
    wideName = wideNameOf(head);
    found = wideName ? Encoding::Wide : isBlock(head) ? Encoding::Blocks : Encoding::Text;
    progress.start(shown(shownName), fileSize(file.get()));
}

InputFile::~InputFile() {
    progress.finish();
}

Diagnostic InputFile::wideText() const {
    return {{0, 1, 1}, fmt::format("this is text in {}; command text is UTF-8", wideName), ""};
}

size_t InputFile::read(char* into, size_t room) {
    if (!head.empty()) {
        const size_t given = std::min(room, head.size());
        std::memcpy(into, head.data(), given);
        head.erase(0, given);
        return given;
    }
    const size_t count = std::fread(into, 1, room, file.get());
    progress.advance(count);
    if (count == 0 && std::ferror(file.get())) throw InputError(shownName + ": cannot be read to its end");
    return count;
}

ReadResult BlockFile::fail(const char* message) {
    failure = {{blockStart, 0, 0}, message, ""};
    return ReadResult::Error;
}

ReadResult BlockFile::next() {
    if (ended) return ReadResult::End;
    blockStart = blockEnd;
    bytes.resize(wordSize);
    bytes.resize(input.read(bytes.data(), wordSize));
    if (bytes.empty()) return ReadResult::End;
    const uint64_t length = bytes.size() == wordSize ? wordAt(bytes.data()) : 0;
    ended = !isLength(length) || length > largestBlock;
    if (ended) return fail("no block begins here: its first word is not a length");
    // Grown by what is really there, so that a false length asks for no memory.
    while (bytes.size() < length) {
        const size_t old = bytes.size();
        bytes.resize(old + std::min<size_t>(static_cast<size_t>(length) - old, 1 << 20));
        const size_t count = input.read(bytes.data() + old, bytes.size() - old);
        bytes.resize(old + count);
        ended = count == 0;
        if (ended) return fail("the block is cut off");
    }
    blockEnd = blockStart + bytes.size();
    const bool whole = wordAt(bytes.data() + bytes.size() - wordSize) == endMarker;
    return whole ? ReadResult::Command : fail("the block has no end");
}

Outcome readAll(const std::vector<std::string>& names, const std::function<bool(const std::string&)>& read) {
    Outcome worst = Outcome::Fine;
    for (const std::string& name : names) {
        Outcome outcome = Outcome::Unreadable;
        try {
            outcome = read(name) ? Outcome::Fine : Outcome::HasMistakes;
        } catch (const InputError& error) {
            complain(error.what());
        }
        worst = std::max(worst, outcome);
    }
    return worst;
}

}  // namespace Zant::App
