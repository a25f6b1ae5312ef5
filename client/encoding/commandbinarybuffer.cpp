#include "client/encoding/commandbinarybuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "client/engine/instance.h"
#include "client/symbols/symbol.h"

namespace Zant {

namespace {

constexpr size_t wordSize = 8;
/// What the longest item of a fixed size takes: a vector of four.
constexpr size_t itemWords = 5;
constexpr size_t itemRoom = itemWords * wordSize;
/// What the longest command takes that a symbol sends of itself, in a destructor: a keyword, a name of 127 bytes with
/// its length and its terminator, the end marker. With room for all of it, it fails before its first byte or not at
/// all.
constexpr size_t symbolCommandWords = 1 + (1 + sizeof ZantSymbolCore::name / wordSize) + 1;
constexpr ptrdiff_t symbolCommandRoom = (symbolCommandWords - itemWords) * wordSize;
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

void putAxes(char* out, const ZantAxesCore& axes, size_t words) {
    put(out, int64_t{std::min(axes.rows, 3)});
    std::memcpy(out + wordSize, axes.m, words * wordSize);
}

}  // namespace

CommandBinaryBuffer::CommandBinaryBuffer(Instance* owner) : CommandBuffer(owner) {
    grow(1);
    begin();
}

CommandBinaryBuffer::~CommandBinaryBuffer() = default;

void CommandBinaryBuffer::grow(size_t words) {
    if (isBeingParsed()) return growBesideParser(words);
    const size_t used = block.buffer ? static_cast<size_t>(position - block.buffer) : wordSize;
    block.dataSize = block.buffer ? used : 0;
    block.fit(used + words * wordSize);
    continueAt(used);
}

/// A command of an event: the block that is being parsed is left to parse(), which ends it.
void CommandBinaryBuffer::growBesideParser(size_t words) {
    ResizableBuffer own;
    own.fit(wordSize + words * wordSize);
    block.buffer = std::exchange(own.buffer, nullptr);
    block.bufferSize = own.bufferSize;
    continueAt(wordSize);
}

inline bool CommandBinaryBuffer::isBeingParsed() const {
    return block.buffer && lastPlace == block.buffer;
}

inline void CommandBinaryBuffer::continueAt(size_t used) {
    position = block.buffer + used;
    lastPlace = block.buffer + (block.bufferSize > itemRoom ? block.bufferSize - itemRoom : 1);
}

inline char* CommandBinaryBuffer::take(size_t words) {
    char* const start = position;
    position += words * wordSize;
    return start;
}

inline char* CommandBinaryBuffer::takeGrowing(size_t words) {
    if (position > lastPlace || words > itemWords) grow(std::max(words, itemWords));
    return take(words);
}

/// Leaves the place of the block's length, and nothing else.
inline void CommandBinaryBuffer::begin() {
    put(block.buffer, int64_t{0});
    continueAt(wordSize);
}

void CommandBinaryBuffer::discard() {
    if (!isBeingParsed()) begin();
}

void CommandBinaryBuffer::parse() {
    if (position > lastPlace) grow(1);
    put(take(1), endMarker);
    put(block.buffer, position - block.buffer);
    if (errorCode != 0 || !instance) return begin();
    // While the parser has the block, no place is left in it for an item.
    char* const sent = block.buffer;
    char* const place = std::exchange(lastPlace, sent);
    position = sent + wordSize;
    int result;
    try {
        result = instance->parse(sent, nullptr, ParseBinary);
    } catch (...) {
        beginAfter(sent);
        throw;
    }
    if (block.buffer != sent)
        beginAfter(sent);
    else
        lastPlace = place;
    error(result);
}

/// After a block that was parsed while another command got a block of its own, or that was left by an exception.
void CommandBinaryBuffer::beginAfter(const char* sent) {
    if (block.buffer != sent) delete[] sent;
    begin();
}

// The short items start over when they had to grow, in a function apart: the way that needs no call then needs no stack
// either. They call themselves by their full names, past what a host's subclass makes of them.

template <class Item>
void CommandBinaryBuffer::growAndRepeat(size_t words, Item item) {
    grow(words);
    item();
}

void CommandBinaryBuffer::addEnum(int number, const char*) {
    if (lastPlace - position < symbolCommandRoom)
        return growAndRepeat(symbolCommandWords, [=] { CommandBinaryBuffer::addEnum(number, nullptr); });
    put(take(1), int64_t{number});
}

void CommandBinaryBuffer::addDouble(double value) {
    if (position > lastPlace) return growAndRepeat(itemWords, [=] { CommandBinaryBuffer::addDouble(value); });
    char* const out = take(2);
    put(out, int64_t{0});
    put(out + wordSize, value);
}

void CommandBinaryBuffer::addString(const char* string) {
    const size_t length = string ? std::strlen(string) : 0;
    const size_t textWords = string ? length / wordSize + 1 : 0;
    char* const out = takeGrowing(1 + textWords);
    put(out, length);
    if (string) std::memcpy(out + wordSize, string, length + 1);
}

void CommandBinaryBuffer::addVector(const Vector& vector) {
    if (position > lastPlace)
        return growAndRepeat(itemWords, [this, &vector] { CommandBinaryBuffer::addVector(vector); });
    if (static_cast<unsigned int>(vector.count) > 4) return addCutVector(vector);
    // All components are copied, so that the copy has a fixed size; only those in use count.
    char* const out = take(1 + static_cast<size_t>(vector.count));
    put(out, int64_t{vector.count});
    std::memcpy(out + wordSize, vector.values, sizeof vector.values);
}

/// Counts above 4 are cut; negative ones have no components.
void CommandBinaryBuffer::addCutVector(Vector vector) {
    if (vector.count < 0) return put(take(1), int64_t{vector.count});
    vector.count = 4;
    CommandBinaryBuffer::addVector(vector);
}

void CommandBinaryBuffer::addAxesCore(const ZantAxesCore& axes) {
    const size_t words = 3 * rowsInUse(axes);
    putAxes(takeGrowing(1 + words), axes, words);
}

void CommandBinaryBuffer::addAxes(const Axes& axes) {
    addAxesCore(axes);
}

void CommandBinaryBuffer::addCoordSys(const CoordSys& coordSys) {
    const size_t words = 3 * rowsInUse(coordSys.axes);
    char* const out = takeGrowing(4 + words);
    std::memcpy(out, coordSys.position, sizeof coordSys.position);
    putAxes(out + sizeof coordSys.position, coordSys.axes, words);
}

void CommandBinaryBuffer::addSymbol(const Symbol& symbol) {
    if (symbol.registered == 0) return CommandBinaryBuffer::addString(symbol.name);
    if (position > lastPlace)
        return growAndRepeat(itemWords, [this, &symbol] { CommandBinaryBuffer::addSymbol(symbol); });
    char* const out = take(2);
    put(out, int64_t{0});
    put(out + wordSize, symbol.registered);
}

template <class T>
void CommandBinaryBuffer::addVarLen(const VarLenTemplate<T>& list) {
    takeGrowing(2);
    const ptrdiff_t before = position - block.buffer - 2 * static_cast<ptrdiff_t>(wordSize);
    // An allocation that fails takes the list back.
    struct Rollback {
        CommandBinaryBuffer& owner;
        ptrdiff_t start;
        ~Rollback() {
            if (start != 0) owner.position = owner.block.buffer + start;
        }
    } rollback{*this, before};
    for (size_t i = 0; i < list.count; ++i) {
        addItem(list.items[i]);
    }
    put(takeGrowing(1), endMarker);
    rollback.start = 0;
    char* const start = block.buffer + before;
    put(start, listMarker);
    put(start + wordSize, position - (start + 2 * wordSize));
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
