#include "testkit/environment.h"

#include <stdlib.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace Zant::Testkit {

ScopedVariable::ScopedVariable(std::string variableName, const std::string& value) : name(std::move(variableName)) {
    if (const char* old = getenv(name.c_str())) before = old;
    if (setenv(name.c_str(), value.c_str(), 1) != 0) throw std::runtime_error("cannot set the variable " + name);
}

ScopedVariable::~ScopedVariable() {
    if (before) {
        setenv(name.c_str(), before->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

TemporaryFolder::TemporaryFolder() : path((std::filesystem::temp_directory_path() / "zant-testkit-XXXXXX").string()) {
    if (!mkdtemp(path.data())) throw std::runtime_error("cannot make " + path + ": " + std::strerror(errno));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

}  // namespace Zant::Testkit
