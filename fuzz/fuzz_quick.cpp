// Any bytes as quick text; both texts have one reader, the corpora differ.

#include <cstdint>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Zant::demand(checkText({reinterpret_cast<const char*>(data), size}));
    return 0;
}
