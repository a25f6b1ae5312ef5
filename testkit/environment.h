#ifndef ZANT_TESTKIT_ENVIRONMENT_H
#define ZANT_TESTKIT_ENVIRONMENT_H

#include <optional>
#include <string>

#include "own/cxx17.h"

namespace Zant::Testkit {

/// Sets a variable of the process's environment as long as it lives, and then sets it back to what it was.
class ScopedVariable {
public:
    /// Throws std::runtime_error when the environment cannot take it.
    ScopedVariable(std::string variableName, const std::string& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

/// A folder of its own under the system's folder for temporary files, removed with all that is in it.
class TemporaryFolder {
public:
    /// Throws std::runtime_error when it cannot be made.
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& name() const { return path_; }

private:
    std::string path_;
};

}  // namespace Zant::Testkit

#endif
