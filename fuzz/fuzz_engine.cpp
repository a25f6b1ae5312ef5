// Any bytes as commands for an engine of ours, loaded as a host loads it: the first byte chooses the encoding.

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "client/encoding/blocklayout.h"
#include "client/engine/instance.h"
#include "client/engine/library.h"

namespace {

Zant::Instance* instance() {
    static Zant::Library library(ZANT_ENGINE_DIR);
    static Zant::Instance* const instance = library.createInstanceWithListner(nullptr);
    return instance;
}

// The length word is set right: the engine has to trust it.
void parseBlock(const uint8_t* data, size_t size) {
    std::vector<uint64_t> block(size / 8 + 2);
    std::memcpy(block.data() + 1, data, size);
    block.front() = block.size() * 8;
    block.back() = Zant::BlockLayout::endMarker;
    instance()->parse(block.data(), nullptr, Zant::ParseBinary);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Objects that the commands can work on; small ones, since a bitmap may take a gigabyte.
    instance()->parse(
        "symbolsDelete; bitmap b,charRgba,(3,2); vertexMap v,3,fixedSize,3; mesh m; var x,1;"
        "group removeAll; view size,(4,3); sett imageSampler,none;",
        nullptr, Zant::ParseText);
    // A pause is a minute at most, which is long for a fuzzer.
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (size == 0 || bytes.find("pause") != std::string_view::npos) return 0;
    if (data[0] % 2 == 0) {
        parseBlock(data + 1, size - 1);
    } else {
        const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
        instance()->parse(text.c_str(), nullptr, Zant::ParseText);
    }
    instance()->parse("pv stop; view size,(4,3); sett imageSampler,none; render;", nullptr, Zant::ParseText);
    return 0;
}
