#include "client/encoding/commandbinarybuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "client/encoding/blocklayout.h"
#include "client/engine/instance.h"
#include "client/symbols/symbol.h"

namespace Zant {

using namespace BlockLayout;

namespace {

/// What the longest item of a fixed size takes: a vector of four.
constexpr size_t itemWords = vectorWords(4);
constexpr size_t itemRoom = itemWords * wordSize;
/// What the longest command takes that a symbol sends of itself, in a destructor: a keyword, a name of 127 bytes with
/// its length and its terminator, the end marker. With room for all of it, it fails before its first byte or not at
/// all.
constexpr size_t symbolCommandWords = keywordWords + 1 + textWords(sizeof ZantSymbolCore::name - 1) + endWords;
constexpr ptrdiff_t symbolCommandRoom = (symbolCommandWords - itemWords) * wordSize;

template <class Word>
void put(char* out, Word word) {
    static_assert(sizeof(Word) == wordSize, "items are made of words");
    std::memcpy(out, &word, wordSize);
}

size_t rowsInUse(const ZantAxesCore& axes) {
    return static_cast<size_t>(std::clamp(axes.rows, 0, 3));
}

void putAxes(char* out, const ZantAxesCore& axes, size_t rows) {
    put(out, int64_t{std::min(axes.rows, 3)});
    std::memcpy(out + wordSize, axes.m, 3 * rows * wordSize);
}

}  // namespace

CommandBinaryBuffer::CommandBinaryBuffer(Instance* owner) : CommandBuffer(owner) {
    grow(1);
    begin();
}

CommandBinaryBuffer::~CommandBinaryBuffer() = default;

void CommandBinaryBuffer::grow(size_t words) {
    if (isBeingParsed()) return growBesideParser(words);
    const size_t used = block_.buffer ? static_cast<size_t>(position_ - block_.buffer) : firstItem;
    block_.dataSize = block_.buffer ? used : 0;
    block_.fit(used + words * wordSize);
    continueAt(used);
}

/// A command of an event: the block that is being parsed is left to parse(), which ends it.
void CommandBinaryBuffer::growBesideParser(size_t words) {
    ResizableBuffer own;
    own.fit(firstItem + words * wordSize);
    block_.buffer = std::exchange(own.buffer, nullptr);
    block_.bufferSize = own.bufferSize;
    continueAt(firstItem);
}

inline bool CommandBinaryBuffer::isBeingParsed() const {
    return block_.buffer && lastPlace_ == block_.buffer;
}

inline void CommandBinaryBuffer::continueAt(size_t used) {
    position_ = block_.buffer + used;
    lastPlace_ = block_.buffer + (block_.bufferSize > itemRoom ? block_.bufferSize - itemRoom : 1);
}

inline char* CommandBinaryBuffer::take(size_t words) {
    char* const start = position_;
    position_ += words * wordSize;
    return start;
}

inline char* CommandBinaryBuffer::takeGrowing(size_t words) {
    if (position_ > lastPlace_ || words > itemWords) grow(std::max(words, itemWords));
    return take(words);
}

/// Leaves the place of the block's length, and nothing else.
inline void CommandBinaryBuffer::begin() {
    put(block_.buffer, int64_t{0});
    continueAt(firstItem);
}

void CommandBinaryBuffer::discard() {
    if (!isBeingParsed()) begin();
}

std::string_view CommandBinaryBuffer::finish() {
    if (position_ > lastPlace_) grow(endWords);
    put(take(endWords), endMarker);
    const ptrdiff_t length = position_ - block_.buffer;
    put(block_.buffer, length);
    return {block_.buffer, static_cast<size_t>(length)};
}

void CommandBinaryBuffer::parse() {
    finish();
    if (errorCode != 0 || !instance) return begin();
    // While the parser has the block, no place is left in it for an item.
    char* const sent = block_.buffer;
    char* const place = std::exchange(lastPlace_, sent);
    position_ = sent + firstItem;
    int result;
    try {
        result = instance->parse(sent, nullptr, ParseBinary);
    } catch (...) {
        beginAfter(sent);
        throw;
    }
    if (block_.buffer != sent)
        beginAfter(sent);
    else
        lastPlace_ = place;
    error(result);
}

/// After a block that was parsed while another command got a block of its own, or that was left by an exception.
void CommandBinaryBuffer::beginAfter(const char* sent) {
    if (block_.buffer != sent) delete[] sent;
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
    if (lastPlace_ - position_ < symbolCommandRoom)
        return growAndRepeat(symbolCommandWords, [=] { CommandBinaryBuffer::addEnum(number, nullptr); });
    put(take(keywordWords), int64_t{number});
}

void CommandBinaryBuffer::addDouble(double value) {
    if (position_ > lastPlace_) return growAndRepeat(itemWords, [=] { CommandBinaryBuffer::addDouble(value); });
    char* const out = take(numberWords);
    put(out, int64_t{0});
    put(out + wordSize, value);
}

void CommandBinaryBuffer::addString(const char* string) {
    const size_t length = string ? std::strlen(string) : 0;
    char* const out = takeGrowing(1 + (string ? textWords(length) : 0));
    put(out, length);
    if (string) std::memcpy(out + wordSize, string, length + 1);
}

void CommandBinaryBuffer::addVector(const Vector& vector) {
    if (position_ > lastPlace_)
        return growAndRepeat(itemWords, [this, &vector] { CommandBinaryBuffer::addVector(vector); });
    if (static_cast<unsigned int>(vector.count) > 4) return addCutVector(vector);
    // All components are copied, so that the copy has a fixed size; only those in use count.
    char* const out = take(vectorWords(static_cast<size_t>(vector.count)));
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
    const size_t rows = rowsInUse(axes);
    putAxes(takeGrowing(axesWords(rows)), axes, rows);
}

void CommandBinaryBuffer::addAxes(const Axes& axes) {
    addAxesCore(axes);
}

void CommandBinaryBuffer::addCoordSys(const CoordSys& coordSys) {
    const size_t rows = rowsInUse(coordSys.axes);
    char* const out = takeGrowing(coordSysWords(rows));
    std::memcpy(out, coordSys.position, sizeof coordSys.position);
    putAxes(out + sizeof coordSys.position, coordSys.axes, rows);
}

void CommandBinaryBuffer::addSymbol(const Symbol& symbol) {
    if (symbol.registered == 0) return CommandBinaryBuffer::addString(symbol.name);
    if (position_ > lastPlace_)
        return growAndRepeat(itemWords, [this, &symbol] { CommandBinaryBuffer::addSymbol(symbol); });
    char* const out = take(registeredWords);
    put(out, int64_t{0});
    put(out + wordSize, symbol.registered);
}

template <class T>
void CommandBinaryBuffer::addVarLen(const VarLenTemplate<T>& list) {
    const char* const first = takeGrowing(listWords);
    const ptrdiff_t before = first - block_.buffer;
    // An allocation that fails takes the list back.
    struct Rollback {
        CommandBinaryBuffer& owner;
        ptrdiff_t start;
        ~Rollback() {
            if (start != 0) owner.position_ = owner.block_.buffer + start;
        }
    } rollback{*this, before};
    for (size_t i = 0; i < list.count; ++i) {
        addItem(list.items[i]);
    }
    put(takeGrowing(endWords), endMarker);
    rollback.start = 0;
    char* const start = block_.buffer + before;
    put(start, listMarker);
    put(start + wordSize, position_ - (start + listWords * wordSize));
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
