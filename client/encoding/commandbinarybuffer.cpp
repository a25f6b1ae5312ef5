#include "client/encoding/commandbinarybuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "client/engine/instance.h"
#include "client/symbols/symbol.h"

namespace Zant {

namespace {

constexpr size_t wordSize = 8;
constexpr int64_t endMarker = -3;
constexpr int64_t listMarker = -2;

template <class Word>
void put(char* out, Word word) {
    static_assert(sizeof(Word) == wordSize, "items are made of words");
    std::memcpy(out, &word, wordSize);
}

size_t rowsInUse(const ZantAxesCore& axes) {
    return static_cast<size_t>(std::clamp(axes.rows, 0, 3));
}

}  // namespace

CommandBinaryBuffer::CommandBinaryBuffer(Instance* owner) : CommandBuffer(owner) {
    restart();
}

CommandBinaryBuffer::~CommandBinaryBuffer() = default;

inline char* CommandBinaryBuffer::room(size_t words) {
    block.fit(block.dataSize + words * wordSize);
    return block.buffer + block.dataSize;
}

/// Leaves the place of the next block's length, and nothing else.
void CommandBinaryBuffer::restart() {
    block.dataSize = 0;
    put(room(1), int64_t{0});
    block.dataSize = wordSize;
}

void CommandBinaryBuffer::parse() {
    put(room(1), endMarker);
    put(block.buffer, block.dataSize + wordSize);
    if (errorCode != 0) return restart();
    const int result = instance->parse(block.buffer, nullptr, ParseBinary);
    restart();
    error(result);
}

void CommandBinaryBuffer::addEnum(int number, const char*) {
    put(room(1), int64_t{number});
    block.dataSize += wordSize;
}

void CommandBinaryBuffer::addDouble(double value) {
    char* const out = room(2);
    put(out, int64_t{0});
    put(out + wordSize, value);
    block.dataSize += 2 * wordSize;
}

void CommandBinaryBuffer::addString(const char* string) {
    const size_t length = string ? std::strlen(string) : 0;
    const size_t textWords = string ? length / wordSize + 1 : 0;
    char* const out = room(1 + textWords);
    put(out, length);
    if (string) std::memcpy(out + wordSize, string, length + 1);
    block.dataSize += (1 + textWords) * wordSize;
}

void CommandBinaryBuffer::addVector(const Vector& vector) {
    // The whole record is copied, so that the copy has a fixed size; only the components in use count.
    char* const out = room(1 + 4);
    put(out, int64_t{vector.count});
    std::memcpy(out + wordSize, vector.values, sizeof vector.values);
    block.dataSize += (1 + static_cast<size_t>(std::clamp(vector.count, 0, 4))) * wordSize;
}

void CommandBinaryBuffer::addAxesCore(const ZantAxesCore& axes) {
    const size_t words = 3 * rowsInUse(axes);
    char* const out = room(1 + words);
    put(out, int64_t{axes.rows});
    std::memcpy(out + wordSize, axes.m, words * wordSize);
    block.dataSize += (1 + words) * wordSize;
}

void CommandBinaryBuffer::addAxes(const Axes& axes) {
    addAxesCore(axes);
}

void CommandBinaryBuffer::addCoordSys(const CoordSys& coordSys) {
    std::memcpy(room(3), coordSys.position, sizeof coordSys.position);
    block.dataSize += sizeof coordSys.position;
    addAxesCore(coordSys.axes);
}

void CommandBinaryBuffer::addSymbol(const Symbol& symbol) {
    if (symbol.registered == 0) return addString(symbol.name);
    char* const out = room(2);
    put(out, int64_t{0});
    put(out + wordSize, symbol.registered);
    block.dataSize += 2 * wordSize;
}

template <class T>
void CommandBinaryBuffer::addVarLen(const VarLenTemplate<T>& list) {
    put(room(2), listMarker);
    block.dataSize += 2 * wordSize;
    const size_t start = block.dataSize;
    for (size_t i = 0; i < list.count; ++i) {
        addItem(list.items[i]);
    }
    put(room(1), endMarker);
    block.dataSize += wordSize;
    put(block.buffer + start - wordSize, block.dataSize - start);
}

void CommandBinaryBuffer::addVarLenDouble(const VarLenDouble& list) {
    addVarLen(list);
}

void CommandBinaryBuffer::addVarLenVector(const VarLenVector& list) {
    addVarLen(list);
}

void CommandBinaryBuffer::addVarLenAxes(const VarLenAxes& list) {
    addVarLen(list);
}

void CommandBinaryBuffer::addVarLenCoordSys(const VarLenCoordSys& list) {
    addVarLen(list);
}

void CommandBinaryBuffer::addVarLenSymbol(const VarLenSymbol& list) {
    addVarLen(list);
}

}  // namespace Zant
