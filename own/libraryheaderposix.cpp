#include "own/libraryheader.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <vector>

namespace Zant {
namespace Platform {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Section = ElfW(Shdr);

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
            return "machine number " + std::to_string(machine);
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
        return "for another processor (" + machineName(machineOf(header)) + "), this program is for " +
               machineName(ownMachine());
    // own/compiler.h has asserted what this program itself is.
    if (header[EI_CLASS] != ELFCLASS64 || header[EI_DATA] != ELFDATA2LSB)
        return std::string("for another processor (of ") + (header[EI_CLASS] == ELFCLASS32 ? "32" : "64") +
               " bits), this program is for 64 bits";
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
            return "of type " + std::to_string(type) + ", not a library";
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

}  // namespace

std::string_view libraryStart() {
    return {ELFMAG, SELFMAG};
}

LibraryFile lookAtHeader(const std::string& name, uint64_t size, const std::string& start) {
    if (size < sizeof(Header)) return {cutOff(size, sizeof(Header))};
    if (const std::string foreign = describeMachine(start); !foreign.empty()) return {foreign};
    Header header;
    std::memcpy(&header, start.data(), sizeof header);
    if (const std::string type = describeType(header.e_type); !type.empty()) return {type};
    const uint64_t loaded = endOfSegments(name, header), whole = std::max(loaded, endOfSections(name, header));
    if (size < loaded) return {cutOff(size, whole), true};
    return {"", false, size < whole ? cutOff(size, whole) + ", though what is missing is not needed to load it" : ""};
}

}  // namespace Platform
}  // namespace Zant
