#include "app/commandfile.h"

#include <fmt/core.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace Zant::App {
namespace {

constexpr size_t lengthWord = 8;
constexpr uint64_t largestBlock = uint64_t{1} << 32;

size_t fileSize(std::FILE* file) {
    struct stat facts {};
    return fstat(fileno(file), &facts) == 0 && S_ISREG(facts.st_mode) ? static_cast<size_t>(facts.st_size) : 0;
}

bool isDirectory(std::FILE* file) {
    struct stat facts {};
    return fstat(fileno(file), &facts) == 0 && S_ISDIR(facts.st_mode);
}

}  // namespace

CommandFile::CommandFile(const std::string& fileName)
    : name(fileName == "-" ? "standard input" : fileName),
      file(fileName == "-" ? stdin : std::fopen(fileName.c_str(), "rb")) {
    if (!file) throw std::runtime_error(fmt::format("{}: {}", name, std::strerror(errno)));
    if (isDirectory(file)) throw std::runtime_error(name + ": is a directory");
    head.resize(lengthWord);
    head.resize(std::fread(head.data(), 1, lengthWord, file));
    binary = head.find('\0') != std::string::npos;
    progress.start(name, fileSize(file));
    if (!binary) text = std::make_unique<TextReader>(static_cast<TextSource&>(*this));
}

CommandFile::~CommandFile() {
    progress.finish();
    if (file != stdin) std::fclose(file);
}

size_t CommandFile::read(char* into, size_t room) {
    if (!head.empty()) {
        const size_t given = std::min(room, head.size());
        std::memcpy(into, head.data(), given);
        head.erase(0, given);
        return given;
    }
    const size_t count = std::fread(into, 1, room, file);
    progress.advance(count);
    if (count == 0 && std::ferror(file)) throw std::runtime_error(name + ": cannot be read to its end");
    return count;
}

ReadResult CommandFile::next(Command& command) {
    if (binary) return nextBlock(command);
    const ReadResult result = text->next(command);
    if (result == ReadResult::Error) failure = text->diagnostic();
    return result;
}

/// Nothing behind a block of unknown length can be found again: the file ends there.
ReadResult CommandFile::fail(const char* message) {
    failure = {};
    failure.position.offset = blockStart;
    failure.message = message;
    blockEnd = SIZE_MAX;
    return ReadResult::Error;
}

ReadResult CommandFile::nextBlock(Command& command) {
    if (blockEnd == SIZE_MAX) return ReadResult::End;
    blockStart = blockEnd;
    block.resize(lengthWord);
    const size_t got = read(block.data(), lengthWord);
    if (got == 0) return ReadResult::End;
    uint64_t length = 0;
    std::memcpy(&length, block.data(), lengthWord);
    if (got < lengthWord || length < 2 * lengthWord || length % lengthWord != 0 || length > largestBlock)
        return fail("no block begins here: its first word is not a length");
    // Grown by what is really there, so that a false length asks for no memory.
    while (block.size() < length) {
        const size_t old = block.size();
        block.resize(old + std::min<size_t>(static_cast<size_t>(length) - old, 1 << 20));
        const size_t count = read(block.data() + old, block.size() - old);
        block.resize(old + count);
        if (count == 0) return fail("the block is cut off");
    }
    blockEnd = blockStart + block.size();
    const ReadResult result = blocks.read(block.data(), block.size(), command);
    if (result == ReadResult::End) return fail("the block holds no command");
    if (result == ReadResult::Error) {
        failure = blocks.diagnostic();
        failure.position.offset += blockStart;
    }
    return result;
}

std::string CommandFile::whereIs(const Command& command) const {
    return binary ? fmt::format("byte {}", blockStart) : fmt::format("line {}", command.position.line);
}

}  // namespace Zant::App
