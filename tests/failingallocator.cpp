#include "failingallocator.h"

#include <cstdint>
#include <cstdlib>
#include <new>

// The linker's marks around the program's own code.
extern "C" const char __executable_start, etext;

namespace {

size_t countdown = 0;  // allocations until the one that fails; 0 for none
size_t live = 0;

/// In front of each block: whether it counts. As long as an alignment, so that the block keeps its own.
struct alignas(16) Header {
    bool counted;
};

bool isOwnCode(const void* caller) {
    const auto place = reinterpret_cast<uintptr_t>(caller);
    return place >= reinterpret_cast<uintptr_t>(&__executable_start) && place < reinterpret_cast<uintptr_t>(&etext);
}

void* allocate(size_t size, bool counted) {
    if (counted && countdown != 0 && --countdown == 0) throw std::bad_alloc();
    if (size > SIZE_MAX - sizeof(Header)) throw std::bad_alloc();
    void* const block = std::malloc(size + sizeof(Header));
    if (!block) throw std::bad_alloc();
    live += counted;
    return new (block) Header{counted} + 1;
}

void release(void* block) {
    if (!block) return;
    auto* const header = static_cast<Header*>(block) - 1;
    live -= header->counted;
    std::free(header);
}

}  // namespace

void FailingAllocator::failAt(size_t n) {
    countdown = n;
}

size_t FailingAllocator::liveBlocks() {
    return live;
}

void* operator new(size_t size) {
    return allocate(size, isOwnCode(__builtin_return_address(0)));
}

void* operator new[](size_t size) {
    return allocate(size, isOwnCode(__builtin_return_address(0)));
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete[](void* block) noexcept {
    release(block);
}

void operator delete(void* block, size_t) noexcept {
    release(block);
}

void operator delete[](void* block, size_t) noexcept {
    release(block);
}
