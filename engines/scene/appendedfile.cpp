#include "engines/scene/appendedfile.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace Zant::Engine {

void AppendedFile::open(const std::string& name) {
    close();
    if (name.empty()) return;
    const std::lock_guard lock(mutex_);
    name_ = name;
    file_ = std::fopen(name.c_str(), "ab");
    if (!file_) complain();
}

void AppendedFile::close() {
    const std::lock_guard lock(mutex_);
    if (file_) std::fclose(file_);
    file_ = nullptr;
    std::exchange(name_, {});  // plain assignment would keep its memory
}

bool AppendedFile::line(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (!file_) return true;
    std::fwrite(text.data(), 1, text.size(), file_);
    std::fputc('\n', file_);
    if (std::fflush(file_) == 0 && !std::ferror(file_)) return true;
    complain();
    std::fclose(file_);
    file_ = nullptr;
    return false;
}

void AppendedFile::complain() {
    std::fprintf(stderr, "%scannot write %s: %s\n", errorPrefix_, name_.c_str(), std::strerror(errno));
}

}  // namespace Zant::Engine
