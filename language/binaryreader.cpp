// The frame of a binary block: its length and its end.

#include "language/blockparser.h"
#include "language/grammar.h"
#include "language/reader.h"

namespace Zant::Language {

using namespace BlockLayout;

namespace {

constexpr size_t longestBlock = UINT32_MAX;  // values note their place in 32 bits

}  // namespace

BinaryReader::BinaryReader(SymbolResolver* resolver) : BinaryReader(resolver, Grammar::vocabulary()) {}

BinaryReader::BinaryReader(SymbolResolver* resolver, const Grammar& vocabulary)
    : grammar_(vocabulary), symbols_(resolver) {}

size_t BinaryReader::blockLength(const void* block, size_t limit) {
    if (limit < emptyBlock) return 0;
    const uint64_t length = wordAt(block);
    return isLength(length) && length <= limit ? length : 0;
}

ReadResult BinaryReader::read(const void* block, size_t limit, Command& command) {
    const size_t length = blockLength(block, limit < longestBlock ? limit : longestBlock);
    if (length == 0) return failAt(0, "the block states a length that it cannot have");
    const size_t end = length - endWords * wordSize;
    if (wordAt(static_cast<const char*>(block) + end) != endMarker) return failAt(end, "the block has no end");
    if (length == emptyBlock) return ReadResult::End;

    BlockParser parser(grammar_, symbols_);
    command.position = {firstItem, 0, 0};
    if (parser.parse(block, length, command)) return ReadResult::Command;
    failure_.position = {firstItem + parser.mismatch().offset, 0, 0};
    explain(grammar_, parser.mismatch(), parser.found(), {}, failure_);
    return ReadResult::Error;
}

ReadResult BinaryReader::failAt(size_t offset, const char* message) {
    failure_.position = {offset, 0, 0};
    failure_.message = message;
    failure_.suggestion.clear();
    return ReadResult::Error;
}

}  // namespace Zant::Language
