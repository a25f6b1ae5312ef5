#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "own/regularfile.h"

namespace Zant {
namespace Platform {
namespace {

[[noreturn]] void fail(int reason) {
    throw std::system_error(reason, std::generic_category());
}

void demandRegular(const struct stat& facts) {
    if (!S_ISREG(facts.st_mode)) fail(S_ISDIR(facts.st_mode) ? EISDIR : ENOTSUP);
}

// Asked before opening, which some devices take as an order, and after it, since names can change hands.
int openRegular(const std::string& name, struct stat& facts) {
    if (stat(name.c_str(), &facts) != 0) fail(errno);
    demandRegular(facts);
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) fail(errno);
    if (fstat(file, &facts) == 0 && S_ISREG(facts.st_mode)) return file;
    close(file);
    fail(ENOTSUP);
}

}  // namespace

RegularFile::RegularFile(const std::string& name) {
    struct stat facts {};
    file_ = openRegular(name, facts);
    // Files that the system makes up say that they are empty; they are read to their end.
    left_ = facts.st_size > 0 ? static_cast<uint64_t>(facts.st_size) : UINT64_MAX;
}

RegularFile::~RegularFile() {
    close(static_cast<int>(file_));
}

size_t RegularFile::read(char* into, size_t room) {
    const ssize_t count = ::read(static_cast<int>(file_), into, std::min<uint64_t>(room, left_));
    if (count < 0 && errno == EINTR) return read(into, room);
    if (count < 0) fail(errno);
    left_ -= static_cast<uint64_t>(count);
    return static_cast<size_t>(count);
}

}  // namespace Platform
}  // namespace Zant
