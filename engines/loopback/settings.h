#ifndef ZANT_ENGINES_LOOPBACK_SETTINGS_H
#define ZANT_ENGINES_LOOPBACK_SETTINGS_H

#include "engines/scene/settings.h"

namespace Zant::Loopback {

/// Before what the engine says on the standard error.
constexpr char errorPrefix[] = "loopback engine: ";
/// The variable that holds the list of faults.
constexpr char faultVariable[] = "ZANT_LOOPBACK_FAULT";

/// Reads the environment, variables named ZANT_LOOPBACK_... What it does not understand it says on the standard error.
Engine::Settings readSettings();

}  // namespace Zant::Loopback

#endif
