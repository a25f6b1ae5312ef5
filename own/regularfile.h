#ifndef ZANT_OWN_REGULARFILE_H
#define ZANT_OWN_REGULARFILE_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "own/cxx17.h"

namespace Zant {
namespace Platform {

/// A regular file, open for reading. It always has an end: devices, pipes and folders are not opened, and of a file
/// that grows meanwhile only what was there at first is read. Names are UTF-8.
class RegularFile {
public:
    /// Throws std::system_error, here and when reading, when the file cannot be read.
    explicit RegularFile(const std::string& name);
    ~RegularFile();
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    /// @return the number of bytes read, 0 at the end
    size_t read(char* into, size_t room);

private:
    intptr_t file_;
    uint64_t left_;
};

}  // namespace Platform
}  // namespace Zant

#endif
