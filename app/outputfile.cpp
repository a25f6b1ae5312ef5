#include "app/outputfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "app/text.h"

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

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

/// Where a name leads, also when nothing is there yet. Gives up where links lead in a circle.
fs::path behindLinks(fs::path path) {
    constexpr int longestChain = 40;
    std::error_code ignored;
    for (int step = 0; step < longestChain && fs::is_symlink(fs::symlink_status(path, ignored)); ++step)
        path = path.parent_path() / fs::read_symlink(path, ignored);
    return path;
}

bool isSame(const Facts& left, const Facts& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// Names such as /dev/stdout and /proc/self/fd/1, whatever they stand for.
bool isStandardOutput(const std::string& name) {
    Facts named{}, output{};
    return stat(name.c_str(), &named) == 0 && fstat(STDOUT_FILENO, &output) == 0 && isSame(named, output);
}

/// Whether another file can take the place: nothing is there, or a regular file that the path really leads to. What
/// only /proc leads to, such as a file without a name, is not.
bool isReplaceable(const std::string& name, const fs::path& target) {
    Facts named{}, found{};
    if (stat(name.c_str(), &named) != 0) return errno == ENOENT;
    return S_ISREG(named.st_mode) && stat(target.c_str(), &found) == 0 && isSame(named, found);
}

mode_t modeOfNewFiles() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/// A file's mode, and its owner and group as far as the process may give them.
bool takeOver(int descriptor, const fs::path& target) {
    Facts old{};
    if (stat(target.c_str(), &old) != 0) return fchmod(descriptor, modeOfNewFiles()) == 0;
    if (fchown(descriptor, old.st_uid, old.st_gid) != 0 && fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0)
        errno = 0;
    return fchmod(descriptor, old.st_mode & permissionBits) == 0;
}

}  // namespace

OutputFile::OutputFile(const std::string& fileName) : name_(fileName) {
    if (fileName.empty() || fileName == "-" || isStandardOutput(fileName)) {
        name_ = "standard output";
        file_.reset(stdout);
        terminal_ = isatty(STDOUT_FILENO);
        return;
    }
    target_ = behindLinks(name_);
    if (isReplaceable(name_, target_))
        openBeside();
    else
        file_.reset(std::fopen(name_.c_str(), "wb"));
    if (!file_) fail();
    terminal_ = isatty(fileno(file_.get()));
}

void OutputFile::openBeside() {
    // A file that may not be written is not replaced either, though its folder would allow it.
    if (access(target_.c_str(), W_OK) != 0 && errno != ENOENT) return;
    std::string path = (target_.parent_path() / ".zant.XXXXXX").string();
    if (path.size() >= sizeof pending) {
        errno = ENAMETOOLONG;
        return;
    }
    sigset_t all, before;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &before);
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor >= 0) {
        temporary_ = path;
        std::memcpy(pending, path.c_str(), path.size() + 1);
        catchSignals();
    }
    const int reason = errno;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    errno = reason;
    if (descriptor < 0) return;
    if (takeOver(descriptor, target_)) file_.reset(fdopen(descriptor, "wb"));
    if (!file_) close(descriptor);
}

void OutputFile::fail() {
    const int reason = errno;
    if (!temporary_.empty()) unlink(temporary_.c_str());
    pending[0] = 0;
    temporary_.clear();
    throw OutputError(
        fmt::format("{}: cannot be written{}{}", name_, reason ? ": " : "", reason ? strerror(reason) : ""));
}

OutputFile::~OutputFile() {
    if (temporary_.empty()) return;
    unlink(temporary_.c_str());
    pending[0] = 0;
}

void OutputFile::write(std::string_view bytes) {
    const std::string escaped = terminal_ ? shown(bytes, "\n\t") : std::string();
    if (terminal_) bytes = escaped;
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) fail();
}

void OutputFile::finish() {
    if (file_.get() == stdout) {
        if (std::fflush(stdout) != 0) fail();
        return;
    }
    if (std::fclose(file_.release()) != 0) fail();
    if (temporary_.empty()) return;
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) fail();
    pending[0] = 0;
    temporary_.clear();
}

void OutputFile::giveUp() {
    if (!temporary_.empty()) complain(fmt::format("zant: {} is not written", name_));
}

bool isOneOf(const std::string& name, const std::vector<std::string>& files) {
    Facts wanted{};
    if (stat(name.c_str(), &wanted) != 0 || !S_ISREG(wanted.st_mode)) return false;
    return std::any_of(files.begin(), files.end(), [&](const std::string& other) {
        Facts facts{};
        return stat(other.c_str(), &facts) == 0 && isSame(wanted, facts);
    });
}

bool finishStandardOutput() {
    errno = 0;
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return true;
    complain(
        fmt::format("zant: standard output: cannot be written{}{}", errno ? ": " : "", errno ? strerror(errno) : ""));
    return false;
}

}  // namespace Zant::App
