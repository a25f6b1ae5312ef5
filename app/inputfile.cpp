#include "app/inputfile.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "app/text.h"
#include "client/encoding/blocklayout.h"
#include "own/streams.h"

namespace Zant::App {

using namespace BlockLayout;

namespace {

constexpr uint64_t largestBlock = uint64_t{1} << 32;

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
    : shownName_(fileName == "-" ? "standard input" : fileName),
      file_(fileName == "-" ? stdin : std::fopen(fileName.c_str(), "rb")) {
    if (!file_) throw InputError(fmt::format("{}: {}", shownName_, std::strerror(errno)));
    head_.resize(wordSize);
    head_.resize(std::fread(head_.data(), 1, wordSize, file_.get()));
    if (std::ferror(file_.get())) throw InputError(fmt::format("{}: {}", shownName_, std::strerror(errno)));
    wideName_ = wideNameOf(head_);
    found_ = wideName_ ? Encoding::Wide : isBlock(head_) ? Encoding::Blocks : Encoding::Text;
    progress_.start(shown(shownName_), Platform::regularSize(file_.get()));
}

InputFile::~InputFile() {
    progress_.finish();
}

Diagnostic InputFile::wideText() const {
    return {{0, 1, 1}, fmt::format("this is text in {}; command text is UTF-8", wideName_), ""};
}

size_t InputFile::read(char* into, size_t room) {
    if (!head_.empty()) {
        const size_t given = std::min(room, head_.size());
        std::memcpy(into, head_.data(), given);
        head_.erase(0, given);
        return given;
    }
    const size_t count = std::fread(into, 1, room, file_.get());
    progress_.advance(count);
    if (count == 0 && std::ferror(file_.get())) throw InputError(shownName_ + ": cannot be read to its end");
    return count;
}

ReadResult BlockFile::fail(const char* message) {
    failure_ = {{blockStart_, 0, 0}, message, ""};
    return ReadResult::Error;
}

ReadResult BlockFile::next() {
    if (ended_) return ReadResult::End;
    blockStart_ = blockEnd_;
    bytes_.resize(wordSize);
    bytes_.resize(input_.read(bytes_.data(), wordSize));
    if (bytes_.empty()) return ReadResult::End;
    const uint64_t length = bytes_.size() == wordSize ? wordAt(bytes_.data()) : 0;
    ended_ = !isLength(length) || length > largestBlock;
    if (ended_) return fail("no block begins here: its first word is not a length");
    // Grown by what is really there, so that a false length asks for no memory.
    while (bytes_.size() < length) {
        const size_t old = bytes_.size();
        bytes_.resize(old + std::min<size_t>(static_cast<size_t>(length) - old, 1 << 20));
        const size_t count = input_.read(bytes_.data() + old, bytes_.size() - old);
        bytes_.resize(old + count);
        ended_ = count == 0;
        if (ended_) return fail("the block is cut off");
    }
    blockEnd_ = blockStart_ + bytes_.size();
    const bool whole = wordAt(bytes_.data() + bytes_.size() - wordSize) == endMarker;
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
