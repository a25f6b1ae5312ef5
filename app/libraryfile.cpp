#include "app/libraryfile.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

std::string startOf(const fs::path& path) {
    std::string bytes(512, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

struct Kind {
    std::string_view start;
    const char* name;
};
constexpr Kind kinds[] = {
    {"MZ", "a Windows DLL"},
    {"\x7F"
     "ELF",
     "a library for Linux"},
    {"\xFE\xED\xFA\xCE", "a Mach-O file, for macOS"},
    {"\xFE\xED\xFA\xCF", "a Mach-O file, for macOS"},
    {"\xCE\xFA\xED\xFE", "a Mach-O file, for macOS"},
    {"\xCF\xFA\xED\xFE", "a Mach-O file, for macOS"},
    {"\xCA\xFE\xBA\xBE", "a Mach-O file, for macOS"},
    {"!<arch>\n", "a static library"},
    {"PK\x03\x04", "a zip archive"},
    {"\x1F\x8B", "a gzip archive"},
};

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool isText(const std::string& bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && !std::strchr("\t\n\r\f", c)) || byte == 0 || byte == 0x7F;
    });
}

/// Plain characters of the first line, to recognise the file by.
std::string firstWords(const std::string& bytes) {
    const std::string line = bytes.substr(0, std::min<size_t>(bytes.find_first_of("\r\n"), 40));
    std::string shown;
    for (const char c : line)
        shown += c >= 0x20 && c < 0x7F ? c : '?';
    return shown;
}

std::string inHex(std::string_view bytes) {
    const auto* const numbers = reinterpret_cast<const unsigned char*>(bytes.data());
    return fmt::format("{:02x}", fmt::join(numbers, numbers + bytes.size(), " "));
}

std::string describeForeign(const std::string& start) {
    for (const Kind& kind : kinds)
        if (startsWith(start, kind.start)) return kind.name;
    if (start.find_first_not_of('\0') == std::string::npos) return "zero bytes where a library has its header";
    if (isText(start)) return fmt::format("text, not a library: \"{}\"", firstWords(start));
    return fmt::format("not a library: no header that begins with {}, but with {}", inHex(Platform::libraryStart()),
                       inHex(start.substr(0, 4)));
}

std::string describeSpecial(const fs::path& path, uint64_t size) {
    std::error_code ignored;
    if (fs::is_regular_file(path, ignored)) return size == 0 ? "an empty file" : "";
    return fs::is_directory(path, ignored) ? "a directory" : "not a regular file";
}

}  // namespace

LibraryFile lookAtLibraryFile(const std::string& name) {
    std::error_code ignored;
    const fs::path path = fs::u8path(name);
    if (!fs::exists(path, ignored)) return {};
    const uint64_t size = fs::is_regular_file(path, ignored) ? fs::file_size(path, ignored) : 0;
    if (const std::string special = describeSpecial(path, size); !special.empty()) return {special};
    const std::string start = startOf(path);
    if (start.empty()) return {};  // unreadable
    const std::string_view magic = Platform::libraryStart().substr(0, start.size());
    if (!startsWith(start, magic)) return {describeForeign(start)};
    return Platform::lookAtHeader(name, size, start);
}

}  // namespace Zant::App
