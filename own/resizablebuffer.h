#ifndef ZANT_OWN_RESIZABLEBUFFER_H
#define ZANT_OWN_RESIZABLEBUFFER_H

#include <cstddef>
#include <cstring>

#include "own/cxx17.h"

namespace Zant {

/// A block of bytes that grows by doubling and never shrinks. Owns its block; cannot be copied.
///
/// Growth: when the space needed exceeds the block, its size starts from what it is (16 when there is none) and doubles
/// until it is enough. When the allocation fails, the exception of `new` leaves the buffer as it was.
/// Text that is appended must not lie in the buffer itself.
class ResizableBuffer {
public:
    ResizableBuffer() = default;
    ResizableBuffer(const ResizableBuffer&) = delete;
    ResizableBuffer& operator=(const ResizableBuffer&) = delete;
    ~ResizableBuffer() { freeBuffer(); }

    /// Reserves n more bytes at the end, which are not written.
    /// @return the offset at which they start
    size_t allocBuffer(size_t n) {
        if (n > bufferSize - dataSize) grow(n);
        const size_t offset = dataSize;
        dataSize += n;
        return offset;
    }

    /// Pads the end, with bytes that are not written, until the address after the data is a multiple of n.
    /// @param n a power of two
    void align(size_t n);

    /// Makes the block at least n bytes long.
    void fit(size_t n) {
        if (n > bufferSize) grow(n - dataSize);
    }

    /// Moves the data, and the byte after it if there is one, into a new block of exactly `size` bytes, which is more
    /// than the data.
    void resize(size_t size);

    /// @return false only if there is still no block: nothing was ever appended, and n is 0
    bool append(const char* src, size_t n) {
        const size_t offset = allocBuffer(n);
        if (n != 0) std::memcpy(buffer + offset, src, n);
        return buffer != nullptr;
    }

    bool append(char c) {
        const size_t offset = allocBuffer(1);
        buffer[offset] = c;
        return true;
    }

    /// Appends the characters of s without its terminator.
    void appendString(const char* s) { append(s, std::strlen(s)); }

    /// Overwrites n bytes that have been appended before. Does nothing when there is no block.
    void replace(size_t offset, const char* src, size_t n) {
        if (buffer && n != 0) std::memcpy(buffer + offset, src, n);
    }

    /// Releases the block; the buffer is as new.
    void freeBuffer();

    char* buffer = nullptr;
    size_t bufferSize = 0;  ///< bytes in the block
    size_t dataSize = 0;    ///< bytes in use, from its start

private:
    void grow(size_t n);
};
static_assert(offsetof(ResizableBuffer, buffer) == 0 && offsetof(ResizableBuffer, bufferSize) == 8 &&
                  offsetof(ResizableBuffer, dataSize) == 16,
              "inline operations of other builds read it");

}  // namespace Zant

#endif
