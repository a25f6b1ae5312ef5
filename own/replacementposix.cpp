#include "own/replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace Zant {
namespace Platform {
namespace {

using Facts = struct stat;

constexpr mode_t permissionBits = 07777;

// The file that a signal has to take away; empty when there is none.
char pending[PATH_MAX];

extern "C" void removePending(int signal) {
    unlink(pending);
    raise(signal);  // the handler is gone by now: the signal does what it always does
}

/// Signals that are ignored, as under nohup, stay so.
void catchSignals() {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE}) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
        action.sa_handler = removePending;
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
        sigaction(signal, &action, nullptr);
    }
}

mode_t modeOfNewFiles() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/// A file's mode, and its owner and group as far as the process may give them.
bool takeOver(int descriptor, const std::filesystem::path& target) {
    Facts old{};
    if (stat(target.c_str(), &old) != 0) return fchmod(descriptor, modeOfNewFiles()) == 0;
    if (fchown(descriptor, old.st_uid, old.st_gid) != 0 && fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0)
        errno = 0;
    return fchmod(descriptor, old.st_mode & permissionBits) == 0;
}

/// Makes a file of its own by a pattern, noted for the signals before one can come. @return below 0 with errno
int makePending(std::string& pattern) {
    sigset_t all, before;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &before);
    const int descriptor = mkostemp(pattern.data(), O_CLOEXEC);
    if (descriptor >= 0) {
        std::memcpy(pending, pattern.c_str(), pattern.size() + 1);
        catchSignals();
    }
    const int reason = errno;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    errno = reason;
    return descriptor;
}

}  // namespace

// What only /proc leads to, such as a file without a name, cannot be replaced.
bool Replacement::isPossible(const std::string& name, const std::filesystem::path& target) {
    Facts named{}, found{};
    if (stat(name.c_str(), &named) != 0) return errno == ENOENT;
    return S_ISREG(named.st_mode) && stat(target.c_str(), &found) == 0 && named.st_dev == found.st_dev &&
           named.st_ino == found.st_ino;
}

std::FILE* Replacement::begin(const std::filesystem::path& target) {
    // A file that may not be written is not replaced either, though its folder would allow it.
    if (access(target.c_str(), W_OK) != 0 && errno != ENOENT) return nullptr;
    std::string path = (target.parent_path() / ".zant.XXXXXX").string();
    if (path.size() >= sizeof pending) {
        errno = ENAMETOOLONG;
        return nullptr;
    }
    const int descriptor = makePending(path);
    if (descriptor < 0) return nullptr;
    target_ = target;
    temporary_ = path;
    std::FILE* const stream = takeOver(descriptor, target) ? fdopen(descriptor, "wb") : nullptr;
    const int reason = errno;
    if (!stream) close(descriptor);
    errno = reason;
    return stream;
}

bool Replacement::finish(std::FILE* stream) {
    if (std::fclose(stream) != 0 || std::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
    pending[0] = 0;
    temporary_.clear();
    return true;
}

void Replacement::abandon() {
    if (!isBegun()) return;
    unlink(temporary_.c_str());
    pending[0] = 0;
    temporary_.clear();
}

}  // namespace Platform
}  // namespace Zant
