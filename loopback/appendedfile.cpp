#include "loopback/appendedfile.h"

#include <cerrno>
#include <cstring>

namespace Zant::Loopback {

void AppendedFile::open(const std::string& name) {
    close();
    if (name.empty()) return;
    const std::lock_guard lock(mutex_);
    file_ = std::fopen(name.c_str(), "ab");
    if (!file_) std::fprintf(stderr, "loopback engine: cannot write %s: %s\n", name.c_str(), std::strerror(errno));
}

void AppendedFile::close() {
    const std::lock_guard lock(mutex_);
    if (file_) std::fclose(file_);
    file_ = nullptr;
}

void AppendedFile::line(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (!file_) return;
    std::fwrite(text.data(), 1, text.size(), file_);
    std::fputc('\n', file_);
    std::fflush(file_);
}

}  // namespace Zant::Loopback
