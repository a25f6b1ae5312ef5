// What people are shown: names, texts and counts.

#include "app/text.h"

#include <fmt/core.h>

#include <cstdint>

#include "own/streams.h"

namespace Zant::App {
namespace {

bool isPrintable(uint32_t point, size_t length) {
    constexpr uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool control = point < 0x20 || (point >= 0x7F && point < 0xA0);
    const bool surrogate = point >= 0xD800 && point < 0xE000;
    return !control && !surrogate && point >= smallest[length] && point <= 0x10FFFF;
}

/// The length of the printable character that the bytes begin with; 0 when they begin with none.
size_t characterLength(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const size_t length = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : lead >> 3 == 30 ? 4 : 0;
    if (length == 0 || length > bytes.size()) return 0;
    uint32_t point = length == 1 ? lead : lead & (0xFFu >> (length + 1));
    for (const char byte : bytes.substr(1, length - 1)) {
        if ((byte & 0xC0) != 0x80) return 0;
        point = point << 6 | (static_cast<unsigned char>(byte) & 0x3Fu);
    }
    return isPrintable(point, length) ? length : 0;
}

}  // namespace

std::string shown(std::string_view bytes, std::string_view kept) {
    std::string text;
    while (!bytes.empty()) {
        const size_t length = kept.find(bytes[0]) != std::string_view::npos ? 1 : characterLength(bytes);
        if (length > 0)
            text += bytes.substr(0, length);
        else
            text += fmt::format("\\x{:02X}", static_cast<unsigned char>(bytes[0]));
        bytes.remove_prefix(length > 0 ? length : 1);
    }
    return text;
}

std::string shownOnTerminal(std::string_view bytes) {
    return Platform::isTerminal(stdout) ? shown(bytes, "\n\t") : std::string(bytes);
}

std::string counted(size_t count, const char* noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

void complain(std::string_view message) {
    std::fputs((shown(message) + "\n").c_str(), stderr);
}

}  // namespace Zant::App
