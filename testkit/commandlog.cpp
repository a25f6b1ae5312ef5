#include "testkit/commandlog.h"

#include <filesystem>
#include <stdexcept>

#include "client/host.h"

namespace Zant::Testkit {
namespace {

bool logInUse = false;

std::string existing(const std::string& directory) {
    if (!std::filesystem::is_directory(directory)) {
        throw std::runtime_error("no folder of the loopback engine at \"" + directory + "\"");
    }
    return directory;
}

}  // namespace

CommandLog::CommandLog(const std::string& engineDirectory)
    : directory_(withSeparator(existing(engineDirectory))),
      file_(folder_.name() + "/transcript.zant"),
      variable_("ZANT_LOOPBACK_TRANSCRIPT", file_),
      numbers_("ZANT_LOOPBACK_NUMBERS", "client") {
    if (logInUse) throw std::runtime_error("there is a command log already: the engine writes to one only");
    logInUse = true;
}

CommandLog::~CommandLog() {
    logInUse = false;
}

bool CommandLog::isRecording() const {
    return std::filesystem::exists(file_);
}

Transcript CommandLog::sent() const {
    Transcript transcript;
    if (isRecording()) transcript = Transcript::fromFile(file_, forgotten_);
    transcript.setSource("sent");
    return transcript;
}

void CommandLog::forget() {
    if (isRecording()) forgotten_ = static_cast<size_t>(std::filesystem::file_size(file_));
}

Result CommandLog::check(const std::string& expectedCommands) const {
    return check(Transcript::fromText(expectedCommands));
}

Result CommandLog::checkFile(const std::string& expectedFile) const {
    return check(Transcript::fromFile(expectedFile));
}

Result CommandLog::check(const Transcript& expected) const {
    if (isRecording()) return compare(expected, sent());
    return Result::failure(
        "no loopback engine has been loaded since this command log began.\n"
        "  Begin the log before the engine is loaded, and load it from " +
        directory_);
}

ContractWatch::ContractWatch() : file_(folder_.name() + "/watch.txt"), variable_("ZANT_LOOPBACK_WATCH", file_) {}

Result ContractWatch::check() const {
    if (!std::filesystem::exists(file_)) {
        return Result::failure("no loopback engine has been loaded since this watch began");
    }
    const std::string calls = Transcript::fromFile(file_).text();
    return calls.empty() ? Result::success() : Result::failure("calls that the contract forbids:\n" + calls);
}

}  // namespace Zant::Testkit
