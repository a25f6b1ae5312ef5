#ifndef ZANT_TESTS_ALLOCATIONCOUNT_H
#define ZANT_TESTS_ALLOCATIONCOUNT_H

#include <cstddef>

/// The number of blocks that the process has taken with `new` so far. allocationcount.cpp replaces the operators.
size_t allocationCount();

#endif
