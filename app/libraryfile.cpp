#include "app/libraryfile.h"

#include <elf.h>
#include <fmt/core.h>
#include <fmt/ranges.h>
#include <link.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string_view>
#include <vector>

namespace Zant::App {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Section = ElfW(Shdr);

#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
constexpr unsigned char ownByteOrder = ELFDATA2LSB;
#else
constexpr unsigned char ownByteOrder = ELFDATA2MSB;
#endif
constexpr unsigned char ownClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

/// The bytes of a file from a place on, fewer where it ends.
std::string bytesOf(const std::string& name, uint64_t from, size_t count) {
    std::ifstream file(name, std::ios::binary);
    std::string bytes(count, '\0');
    file.seekg(static_cast<std::streamoff>(std::min<uint64_t>(from, INT64_MAX)));
    file.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

uint64_t addSaturated(uint64_t a, uint64_t b) {
    return a > UINT64_MAX - b ? UINT64_MAX : a + b;
}

// ---- files that are no libraries of this platform -------------------------------------------------------------------

struct Kind {
    std::string_view start;
    const char* name;
};
constexpr Kind kinds[] = {
    {"MZ", "a Windows DLL"},
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

std::string describeForeign(const std::string& start) {
    for (const Kind& kind : kinds)
        if (startsWith(start, kind.start)) return kind.name;
    if (start.find_first_not_of('\0') == std::string::npos) return "zero bytes where a library has its header";
    if (isText(start)) return fmt::format("text, not a library: \"{}\"", firstWords(start));
    return fmt::format(
        "not a library: no header that begins with 7f 45 4c 46, but with {:02x}",
        fmt::join(reinterpret_cast<const unsigned char*>(start.data()),
                  reinterpret_cast<const unsigned char*>(start.data()) + std::min<size_t>(start.size(), 4), " "));
}

// ---- the header -----------------------------------------------------------------------------------------------------

std::string machineName(unsigned machine) {
    switch (machine) {
        case EM_X86_64:
            return "x86-64";
        case EM_386:
            return "x86, 32 bits";
        case EM_AARCH64:
            return "aarch64";
        case EM_ARM:
            return "arm, 32 bits";
        case EM_RISCV:
            return "risc-v";
        case EM_PPC64:
            return "powerpc, 64 bits";
        case EM_S390:
            return "s390";
        default:
            return fmt::format("machine number {}", machine);
    }
}

/// Of a header of either class; its byte order is given in itself.
unsigned machineOf(const std::string& header) {
    const auto low = static_cast<unsigned char>(header[18]), high = static_cast<unsigned char>(header[19]);
    return header[EI_DATA] == ELFDATA2MSB ? low * 256u + high : high * 256u + low;
}

unsigned ownMachine() {
    return machineOf(bytesOf("/proc/self/exe", 0, sizeof(Header)));
}

std::string describeMachine(const std::string& header) {
    if (machineOf(header) != ownMachine())
        return fmt::format("for another processor ({}), this program is for {}", machineName(machineOf(header)),
                           machineName(ownMachine()));
    if (header[EI_CLASS] != ownClass || header[EI_DATA] != ownByteOrder)
        return fmt::format("for another processor (of {} bits), this program is for {} bits",
                           header[EI_CLASS] == ELFCLASS32 ? 32 : 64, sizeof(void*) * 8);
    return "";
}

std::string describeType(unsigned type) {
    switch (type) {
        case ET_DYN:
            return "";
        case ET_REL:
            return "an object file, not linked to a library";
        case ET_EXEC:
            return "a program, not a library";
        case ET_CORE:
            return "a memory image of a crashed program";
        default:
            return fmt::format("of type {}, not a library", type);
    }
}

// ---- sizes ----------------------------------------------------------------------------------------------------------

/// A table of the file as far as it is there.
template <class Entry>
std::vector<Entry> readTable(const std::string& name, uint64_t from, size_t count) {
    const std::string bytes = bytesOf(name, from, count * sizeof(Entry));
    std::vector<Entry> table(bytes.size() / sizeof(Entry));
    if (!table.empty()) std::memcpy(table.data(), bytes.data(), table.size() * sizeof(Entry));
    return table;
}

/// Where the last byte lies that the loader maps or reads.
uint64_t endOfSegments(const std::string& name, const Header& header) {
    uint64_t end = addSaturated(header.e_phoff, uint64_t{header.e_phnum} * sizeof(Segment));
    for (const Segment& segment : readTable<Segment>(name, header.e_phoff, header.e_phnum))
        end = std::max<uint64_t>(end, addSaturated(segment.p_offset, segment.p_filesz));
    return end;
}

/// The same of the sections, which debuggers and linkers read.
uint64_t endOfSections(const std::string& name, const Header& header) {
    if (header.e_shoff == 0) return 0;
    uint64_t end = addSaturated(header.e_shoff, uint64_t{header.e_shnum} * sizeof(Section));
    for (const Section& section : readTable<Section>(name, header.e_shoff, header.e_shnum))
        if (section.sh_type != SHT_NOBITS && section.sh_type != SHT_NULL)
            end = std::max<uint64_t>(end, addSaturated(section.sh_offset, section.sh_size));
    return end;
}

std::string cutOff(uint64_t size, uint64_t wanted) {
    return size < wanted ? fmt::format("cut off: {} bytes where its header asks for {}", size, wanted) : "";
}

LibraryFile lookAtLibrary(const std::string& name, uint64_t size, const std::string& start) {
    if (size < sizeof(Header)) return {cutOff(size, sizeof(Header))};
    if (const std::string foreign = describeMachine(start); !foreign.empty()) return {foreign};
    Header header;
    std::memcpy(&header, start.data(), sizeof header);
    if (const std::string type = describeType(header.e_type); !type.empty()) return {type};
    const uint64_t loaded = endOfSegments(name, header), whole = std::max(loaded, endOfSections(name, header));
    if (size < loaded) return {cutOff(size, whole), true};
    return {"", false, size < whole ? cutOff(size, whole) + ", though what is missing is not needed to load it" : ""};
}

std::string describeSpecial(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return status.st_size == 0 ? "an empty file" : "";
    return S_ISDIR(status.st_mode) ? "a directory" : "not a regular file";
}

}  // namespace

LibraryFile lookAtLibraryFile(const std::string& name) {
    struct stat status {};
    if (stat(name.c_str(), &status) != 0) return {};
    if (const std::string special = describeSpecial(status); !special.empty()) return {special};
    const std::string start = bytesOf(name, 0, 512);
    if (start.empty()) return {};  // unreadable
    const std::string_view magic = std::string_view(ELFMAG).substr(0, std::min<size_t>(start.size(), SELFMAG));
    if (!startsWith(start, magic)) return {describeForeign(start)};
    return lookAtLibrary(name, static_cast<uint64_t>(status.st_size), start);
}

}  // namespace Zant::App
