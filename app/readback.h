#ifndef ZANT_APP_READBACK_H
#define ZANT_APP_READBACK_H

#include <optional>
#include <string>

#include "client/engine/instance.h"

namespace Zant::App {

/// Reads a declared value back, whatever its type is, and describes it for a person.
/// @return nothing when the engine knows no value of that name
std::optional<std::string> readBack(const Instance& instance, const std::string& name);

}  // namespace Zant::App

#endif
