#include <windows.h>

#include <algorithm>
#include <cstring>

#include "own/libraryheader.h"
#include "own/regularfile.h"

namespace Zant {
namespace Platform {
namespace {

struct Headers {
    DWORD signature;
    IMAGE_FILE_HEADER file;
    IMAGE_OPTIONAL_HEADER64 optional;
};

std::string machineName(unsigned machine) {
    switch (machine) {
        case IMAGE_FILE_MACHINE_AMD64:
            return "x86-64";
        case IMAGE_FILE_MACHINE_I386:
            return "x86, 32 bits";
        case IMAGE_FILE_MACHINE_ARM64:
            return "aarch64";
        case IMAGE_FILE_MACHINE_ARMNT:
            return "arm, 32 bits";
        default:
            return "machine number " + std::to_string(machine);
    }
}

/// What is at a place of the file; false where it ends before.
template <class Record>
bool readAt(const std::string& bytes, uint64_t at, Record& record) {
    if (at > bytes.size() || bytes.size() - at < sizeof record) return false;
    std::memcpy(&record, bytes.data() + at, sizeof record);
    return true;
}

/// The first bytes of a file: all its headers.
std::string headerBytes(const std::string& name) {
    std::string bytes(65536, '\0');
    RegularFile file(name);
    bytes.resize(file.read(bytes.data(), bytes.size()));
    return bytes;
}

/// Where the last byte lies that a section takes from the file.
uint64_t endOfSections(const std::string& bytes, uint64_t at, unsigned count) {
    uint64_t end = at + count * sizeof(IMAGE_SECTION_HEADER);
    IMAGE_SECTION_HEADER section;
    for (unsigned i = 0; i < count && readAt(bytes, at + i * sizeof section, section); ++i)
        end = std::max(end, uint64_t{section.PointerToRawData} + section.SizeOfRawData);
    return end;
}

}  // namespace

std::string_view libraryStart() {
    return "MZ";
}

// The loader refuses a file that ends early: it does not end its host.
LibraryFile lookAtHeader(const std::string& name, uint64_t size, const std::string& start) {
    IMAGE_DOS_HEADER first;
    Headers headers;
    if (!readAt(start, 0, first)) return {cutOff(size, sizeof first)};
    const std::string bytes = headerBytes(name);
    const auto at = static_cast<uint64_t>(std::max<LONG>(first.e_lfanew, 0));
    if (!readAt(bytes, at, headers)) return {cutOff(size, at + sizeof headers)};
    if (headers.signature != IMAGE_NT_SIGNATURE) return {"a program for DOS, not a library"};
    if (headers.file.Machine != IMAGE_FILE_MACHINE_AMD64)
        return {"for another processor (" + machineName(headers.file.Machine) + "), this program is for x86-64"};
    if (!(headers.file.Characteristics & IMAGE_FILE_DLL)) return {"a program, not a library"};
    const uint64_t sections = at + offsetof(Headers, optional) + headers.file.SizeOfOptionalHeader;
    return {cutOff(size, endOfSections(bytes, sections, headers.file.NumberOfSections))};
}

}  // namespace Platform
}  // namespace Zant
