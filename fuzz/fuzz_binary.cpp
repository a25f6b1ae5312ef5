// Any bytes as a binary block: first as they are, then with the length and the end marker set right.

#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string block(reinterpret_cast<const char*>(data), size);
    Zant::demand(checkBlock(block));
    if (size < 16) return 0;
    block.resize(size / 8 * 8);
    const uint64_t length = block.size(), endMark = static_cast<uint64_t>(-3);
    std::memcpy(&block[0], &length, 8);
    std::memcpy(&block[length - 8], &endMark, 8);
    Zant::demand(checkBlock(block));
    return 0;
}
