#ifndef ZANT_CLIENT_ENCODING_BLOCKLAYOUT_H
#define ZANT_CLIENT_ENCODING_BLOCKLAYOUT_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "own/cxx17.h"

/// A command as one block of 64-bit little-endian words.
///
/// A block is its own length in bytes, the items, and the end marker. Every item starts at a multiple of 8 from the
/// start of the block; the padding after a text is not written and has no meaning.
///
/// | item             | words                                                                          |
/// |------------------|--------------------------------------------------------------------------------|
/// | keyword          | its number                                                                     |
/// | number           | 0, the double                                                                  |
/// | string           | its length, then the bytes and a zero byte; null is the length 0 alone         |
/// | vector           | count, its components                                                          |
/// | axes             | rows, three doubles per row                                                    |
/// | coordinate system| three doubles, the axes                                                        |
/// | symbol           | 0 and its registered word; as a string, its name, when it is not registered    |
/// | list             | the list marker, the length of what follows in bytes, the items, the end marker|
///
/// Threads: any, at any time.
namespace Zant::BlockLayout {

constexpr size_t wordSize = 8;
constexpr uint64_t endMarker = static_cast<uint64_t>(-3);
constexpr uint64_t listMarker = static_cast<uint64_t>(-2);

constexpr size_t firstItem = wordSize;  ///< its place, after the length
constexpr size_t endWords = 1;          ///< of a block and of a list
constexpr size_t keywordWords = 1;
constexpr size_t numberWords = 2;
constexpr size_t registeredWords = 2;
constexpr size_t listWords = 2;  ///< in front of its items

/// The words of a text of so many bytes, without its length.
constexpr size_t textWords(size_t length) {
    return length / wordSize + 1;
}
constexpr size_t vectorWords(size_t count) {
    return 1 + count;
}
constexpr size_t axesWords(size_t rows) {
    return 1 + 3 * rows;
}
constexpr size_t coordSysWords(size_t rows) {
    return 3 + axesWords(rows);
}

constexpr size_t emptyBlock = firstItem + endWords * wordSize;

/// @return whether a block can have this length in bytes
constexpr bool isLength(uint64_t length) {
    return length >= emptyBlock && length % wordSize == 0;
}

inline uint64_t wordAt(const void* place) {
    uint64_t word = 0;
    std::memcpy(&word, place, wordSize);
    return word;
}

}  // namespace Zant::BlockLayout

#endif
