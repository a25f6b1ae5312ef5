#ifndef ZANT_TESTS_FAILINGALLOCATOR_H
#define ZANT_TESTS_FAILINGALLOCATOR_H

#include <cstddef>

/// Allocations that fail when a test says so. failingallocator.cpp replaces the global operators.
///
/// Only what the program's own code allocates is counted and can fail: engines that it loads, and the run-time library,
/// go on undisturbed.
namespace FailingAllocator {

/// Lets the n-th allocation from now on, counted from 1, throw std::bad_alloc, and only that one; 0 for none.
void failAt(size_t n);

/// @return the blocks that the program has allocated and not yet freed
size_t liveBlocks();

}  // namespace FailingAllocator

#endif
