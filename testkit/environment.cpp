#include "testkit/environment.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "own/environment.h"

namespace Zant::Testkit {

ScopedVariable::ScopedVariable(std::string variableName, const std::string& value)
    : name_(std::move(variableName)), before_(Platform::variable(name_)) {
    if (!Platform::setVariable(name_, value)) throw std::runtime_error("cannot set the variable " + name_);
}

ScopedVariable::~ScopedVariable() {
    Platform::setVariable(name_, before_);
}

TemporaryFolder::TemporaryFolder() : path_(Platform::makeTemporaryFolder("zant-testkit-")) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(std::filesystem::u8path(path_), ignored);
}

}  // namespace Zant::Testkit
