// Any bytes as a binary block: first as they are, then with the length and the end marker set right.

#include <cstdint>
#include <cstring>
#include <string>

#include "client/encoding/blocklayout.h"
#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string block(reinterpret_cast<const char*>(data), size);
    Zant::demand(checkBlock(block));
    using namespace Zant::BlockLayout;
    if (size < emptyBlock) return 0;
    block.resize(size / wordSize * wordSize);
    const uint64_t length = block.size();
    std::memcpy(&block[0], &length, wordSize);
    std::memcpy(&block[length - wordSize], &endMarker, wordSize);
    Zant::demand(checkBlock(block));
    return 0;
}
