// Any bytes as a number: the first eight as a double, which is written, and all of them as text, which is read.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/numbercheck.h"

namespace {

void demand(const std::string& fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    demand(checkReading({reinterpret_cast<const char*>(data), size}));
    double number = 0;
    unsigned choice = 0;
    if (size < sizeof number + sizeof choice) return 0;
    std::memcpy(&number, data, sizeof number);
    std::memcpy(&choice, data + sizeof number, sizeof choice);
    demand(checkWriting(number, choice));
    return 0;
}
