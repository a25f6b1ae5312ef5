#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <csignal>

#include "own/streams.h"

namespace Zant {
namespace Platform {

void prepareStandardStreams() {
    std::signal(SIGXFSZ, SIG_IGN);
}

bool isTerminal(std::FILE* stream) {
    return isatty(fileno(stream));
}

uint64_t regularSize(std::FILE* stream) {
    struct stat facts {};
    return fstat(fileno(stream), &facts) == 0 && S_ISREG(facts.st_mode) ? static_cast<uint64_t>(facts.st_size) : 0;
}

bool isStandardOutput(const std::string& name) {
    struct stat named {
    }, output{};
    return stat(name.c_str(), &named) == 0 && fstat(STDOUT_FILENO, &output) == 0 && named.st_dev == output.st_dev &&
           named.st_ino == output.st_ino;
}

std::string systemName() {
    utsname system{};
    uname(&system);
    return std::string(system.sysname) + " " + system.release + " " + system.machine;
}

}  // namespace Platform
}  // namespace Zant
