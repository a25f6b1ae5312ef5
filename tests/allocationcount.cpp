// Replaces the global allocation operators by ones that count. In a file of its own, so that the compiler does not see
// both sides of a pair at once.
#include "tests/allocationcount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> count{0};

}  // namespace

size_t allocationCount() {
    return count;
}

void* operator new(size_t size) {
    ++count;
    if (void* block = std::malloc(size)) return block;
    throw std::bad_alloc();
}

void* operator new[](size_t size) {
    return operator new(size);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block, size_t) noexcept {
    std::free(block);
}
