#include "app/outputfile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "app/text.h"
#include "own/streams.h"

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

/// Where a name leads, also when nothing is there yet. Gives up where links lead in a circle.
fs::path behindLinks(fs::path path) {
    constexpr int longestChain = 40;
    std::error_code ignored;
    for (int step = 0; step < longestChain && fs::is_symlink(fs::symlink_status(path, ignored)); ++step)
        path = path.parent_path() / fs::read_symlink(path, ignored);
    return path;
}

}  // namespace

OutputFile::OutputFile(const std::string& fileName) : name_(fileName) {
    if (fileName.empty() || fileName == "-" || Platform::isStandardOutput(fileName)) {
        name_ = "standard output";
        file_.reset(stdout);
        terminal_ = Platform::isTerminal(stdout);
        return;
    }
    const fs::path target = behindLinks(fs::u8path(name_));
    const bool replaces = Platform::Replacement::isPossible(name_, target);
    file_.reset(replaces ? replacement_.begin(target) : std::fopen(name_.c_str(), "wb"));
    if (!file_) fail();
    terminal_ = Platform::isTerminal(file_.get());
}

void OutputFile::fail() {
    const int reason = errno;
    replacement_.abandon();
    throw OutputError(
        fmt::format("{}: cannot be written{}{}", name_, reason ? ": " : "", reason ? strerror(reason) : ""));
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
    std::FILE* const file = file_.release();
    if (replacement_.isBegun() ? !replacement_.finish(file) : std::fclose(file) != 0) fail();
}

void OutputFile::giveUp() {
    if (replacement_.isBegun()) complain(fmt::format("zant: {} is not written", name_));
}

bool isOneOf(const std::string& name, const std::vector<std::string>& files) {
    std::error_code ignored;
    const fs::path wanted = fs::u8path(name);
    if (!fs::is_regular_file(wanted, ignored)) return false;
    return std::any_of(files.begin(), files.end(),
                       [&](const std::string& other) { return fs::equivalent(wanted, fs::u8path(other), ignored); });
}

bool finishStandardOutput() {
    errno = 0;
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return true;
    complain(
        fmt::format("zant: standard output: cannot be written{}{}", errno ? ": " : "", errno ? strerror(errno) : ""));
    return false;
}

}  // namespace Zant::App
