#include "testkit/environment.h"

#include <stdlib.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace Zant::Testkit {

ScopedVariable::ScopedVariable(std::string variableName, const std::string& value) : name_(std::move(variableName)) {
    if (const char* old = getenv(name_.c_str())) before_ = old;
    if (setenv(name_.c_str(), value.c_str(), 1) != 0) throw std::runtime_error("cannot set the variable " + name_);
}

ScopedVariable::~ScopedVariable() {
    if (before_) {
        setenv(name_.c_str(), before_->c_str(), 1);
    } else {
        unsetenv(name_.c_str());
    }
}

TemporaryFolder::TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "zant-testkit-XXXXXX").string()) {
    if (!mkdtemp(path_.data())) throw std::runtime_error("cannot make " + path_ + ": " + std::strerror(errno));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace Zant::Testkit
