#include "own/resizablebuffer.h"

#include <cstdint>
#include <new>

namespace Zant {

namespace {

constexpr size_t firstSize = 16;

}  // namespace

void ResizableBuffer::grow(size_t n) {
    if (n > SIZE_MAX / 2 - dataSize) throw std::bad_alloc();
    size_t size = bufferSize != 0 ? bufferSize : firstSize;
    while (size < dataSize + n)
        size *= 2;
    resize(size);
}

void ResizableBuffer::align(size_t n) {
    const size_t unpadded = dataSize;
    try {
        // A grown block may start elsewhere, which matters for n above the alignment of a block.
        while (const size_t excess = (reinterpret_cast<uintptr_t>(buffer) + dataSize) % n)
            allocBuffer(n - excess);
    } catch (...) {
        dataSize = unpadded;
        throw;
    }
}

void ResizableBuffer::resize(size_t size) {
    char* block = new char[size];
    if (buffer) std::memcpy(block, buffer, dataSize < bufferSize ? dataSize + 1 : dataSize);
    delete[] buffer;
    buffer = block;
    bufferSize = size;
}

void ResizableBuffer::freeBuffer() {
    delete[] buffer;
    buffer = nullptr;
    bufferSize = 0;
    dataSize = 0;
}

}  // namespace Zant
