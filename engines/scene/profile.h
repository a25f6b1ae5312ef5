#ifndef ZANT_ENGINES_SCENE_PROFILE_H
#define ZANT_ENGINES_SCENE_PROFILE_H

#include <memory>

#include "engines/scene/rays.h"
#include "engines/scene/settings.h"

namespace Zant::Engine {

/// What makes one engine different from another that is made of the same parts. It lives as long as the module.
struct Profile {
    const char* name;         ///< as hosts show it
    const char* version;      ///< "3.0.0"
    const char* purpose;      ///< one line on what it does with commands
    const char* errorPrefix;  ///< before what it says on the standard error, with its colon and blank
    const char* faultSource;  ///< where faults are asked for, as the message of a failing command names it

    /// Reads what is asked of the engine. Called for the first host, and again once the last one has left.
    Settings (*readSettings)();
    /// Makes the ray memory of a context.
    std::unique_ptr<RayContext> (*createRays)();
};

}  // namespace Zant::Engine

#endif
