#include <malloc.h>

#include <cstddef>

size_t allocatedSize(void* block);

size_t allocatedSize(void* block) {
    return _msize(block);
}
