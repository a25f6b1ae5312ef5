#ifndef ZANT_OWN_ENVIRONMENT_H
#define ZANT_OWN_ENVIRONMENT_H

#include <optional>
#include <string>

#include "own/cxx17.h"

/// The variables of the process, and its folder for temporary files. Texts are UTF-8. Internal; part of the test kit.
namespace Zant {
namespace Platform {

std::optional<std::string> variable(const std::string& name);

/// Sets a variable for this process and its children; without a value it goes.
/// @return whether the environment can take it
bool setVariable(const std::string& name, const std::optional<std::string>& value);

/// Makes a folder of its own under the system's folder for temporary files, for nobody else to read.
/// @return its name, with `start` at the beginning of its last part. Throws std::runtime_error.
std::string makeTemporaryFolder(const std::string& start);

}  // namespace Platform
}  // namespace Zant

#endif
