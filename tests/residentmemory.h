#ifndef ZANT_TESTS_RESIDENTMEMORY_H
#define ZANT_TESTS_RESIDENTMEMORY_H

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace Zant::Tests {

#ifdef ZANT_TEST_SANITIZED
constexpr bool judgesResidence = false;  // a sanitizer keeps freed memory back on purpose
#else
constexpr bool judgesResidence = true;
#endif

/// What of the process is in memory.
inline long residentKilobytes() {
    long pages = 0, resident = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "r");  // a stream would allocate with `new`
    if (!file || std::fscanf(file, "%ld %ld", &pages, &resident) != 2) std::abort();
    std::fclose(file);
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace Zant::Tests

#endif
