#include "engines/scene/includedfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace Zant::Engine {
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

IncludedFile::IncludedFile(const std::string& name) {
    struct stat facts {};
    file_ = openRegular(name, facts);
    // Files that the system makes up say that they are empty; they are read to their end.
    left_ = facts.st_size > 0 ? static_cast<size_t>(facts.st_size) : SIZE_MAX;
}

IncludedFile::~IncludedFile() {
    close(file_);
}

size_t IncludedFile::read(char* into, size_t room) {
    const ssize_t count = ::read(file_, into, std::min(room, left_));
    if (count < 0 && errno == EINTR) return read(into, room);
    if (count < 0) fail(errno);
    left_ -= static_cast<size_t>(count);
    return static_cast<size_t>(count);
}

}  // namespace Zant::Engine
