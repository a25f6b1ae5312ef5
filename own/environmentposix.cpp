#include "own/environment.h"

#include <stdlib.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace Zant {
namespace Platform {

std::optional<std::string> variable(const std::string& name) {
    const char* const value = getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

bool setVariable(const std::string& name, const std::optional<std::string>& value) {
    return (value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str())) == 0;
}

std::string makeTemporaryFolder(const std::string& start) {
    std::string path = (std::filesystem::temp_directory_path() / (start + "XXXXXX")).string();
    if (!mkdtemp(path.data())) throw std::runtime_error("cannot make " + path + ": " + std::strerror(errno));
    return path;
}

}  // namespace Platform
}  // namespace Zant
