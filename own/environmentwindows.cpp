#include "own/environment.h"

#include <windows.h>

#include <stdexcept>

#include "own/dlplatform.h"
#include "own/wide.h"

namespace Zant {
namespace Platform {

std::optional<std::string> variable(const std::string& name) {
    const wchar_t* const value = _wgetenv(wide(name).c_str());
    return value ? std::optional<std::string>(narrow(value)) : std::nullopt;
}

// Through the run-time library, whose copy of the environment is the one that is asked. An empty value is none here.
bool setVariable(const std::string& name, const std::optional<std::string>& value) {
    return _wputenv_s(wide(name).c_str(), wide(value.value_or("")).c_str()) == 0;
}

// Folders below the user's own for temporary files are the user's alone.
std::string makeTemporaryFolder(const std::string& start) {
    static unsigned long long count = 0;
    wchar_t parent[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH + 1, parent) == 0) throw std::runtime_error("there is no folder for temporary files");
    const std::string first = narrow(parent) + start + std::to_string(GetCurrentProcessId()) + "-";
    for (int tries = 0; tries < 100; ++tries) {
        const std::string path = first + std::to_string(GetTickCount64() + ++count);
        if (CreateDirectoryW(wide(path).c_str(), nullptr)) return path;
    }
    throw std::runtime_error("cannot make " + first + ": " + lastReason());
}

}  // namespace Platform
}  // namespace Zant
