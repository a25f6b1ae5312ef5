#ifndef ZANT_OWN_LIBRARYHEADER_H
#define ZANT_OWN_LIBRARYHEADER_H

#include <cstdint>
#include <string>
#include <string_view>

#include "own/cxx17.h"

/// The format of the platform's libraries. Internal.
namespace Zant {
namespace Platform {

/// What the header and the size of a file say about loading it, without loading it. Linux's loader maps what the header
/// promises and dies with SIGBUS where the file ends early; its messages for files of another kind mislead.
struct LibraryFile {
    /// Why it cannot be loaded, "cut off: 10 bytes where ..."; empty when nothing is against it.
    std::string fault = {};
    /// The loader does not refuse it all the same: it dies on what is not there.
    bool endsHost = false;
    /// What is wrong with it and does not matter to the loader; empty when there is nothing.
    std::string remark = {};
};

/// The bytes that a library of the platform begins with.
std::string_view libraryStart();

/// What is said of a file that ends before what its header promises; empty for one that does not.
inline std::string cutOff(uint64_t size, uint64_t wanted) {
    if (size >= wanted) return "";
    return "cut off: " + std::to_string(size) + " bytes where its header asks for " + std::to_string(wanted);
}

/// Looks at a file that begins like one.
/// @param start its first 512 bytes, fewer where it ends
LibraryFile lookAtHeader(const std::string& name, uint64_t size, const std::string& start);

}  // namespace Platform
}  // namespace Zant

#endif
