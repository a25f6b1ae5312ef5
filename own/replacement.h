#ifndef ZANT_OWN_REPLACEMENT_H
#define ZANT_OWN_REPLACEMENT_H

#include <cstdio>
#include <filesystem>
#include <string>

#include "own/cxx17.h"

namespace Zant {
namespace Platform {

/// A new file that takes the place of another one all at once: it is written beside that place under another name, with
/// the old file's mode where the platform has one. Until finish() the old file is as it was; without finish() nothing
/// is left of the new one, also when a signal ends the process. Internal. Threads: one at a time in a process.
class Replacement {
public:
    Replacement() = default;
    ~Replacement() { abandon(); }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Whether another file can take the place: nothing is there, or a regular file that the path really leads to.
    /// @param target where the links of the name lead
    static bool isPossible(const std::string& name, const std::filesystem::path& target);

    /// @return the stream to write to, which the caller closes unless finish() has; null with errno
    std::FILE* begin(const std::filesystem::path& target);

    bool isBegun() const { return !temporary_.empty(); }

    /// Closes the stream, which begin() opened, and puts the file in its place. @return false with errno
    bool finish(std::FILE* stream);

    /// Lets the file go, before or after its stream is closed.
    void abandon();

private:
    std::filesystem::path target_, temporary_;
};

}  // namespace Platform
}  // namespace Zant

#endif
