#ifndef ZANT_ENGINES_SCENE_PROFILE_H
#define ZANT_ENGINES_SCENE_PROFILE_H

#include <memory>
#include <string>

#include "engines/scene/picture.h"
#include "engines/scene/settings.h"
#include "engines/scene/tracer.h"

namespace Zant::Engine {

/// What makes one engine different from another that is made of the same parts. It lives as long as the module.
struct Profile {
    const char* name;         ///< as hosts show it
    const char* version;      ///< "3.0.0"
    const char* purpose;      ///< one line on what it does with commands
    const char* errorPrefix;  ///< before what it says on the standard error, with its colon and blank
    const char* variables;    ///< how the names of its environment variables begin; read for the first host, and again
                              ///< once the last one has left
    const char* faultSource;  ///< where faults are asked for, as the message of a failing command names it

    /// Makes what finds the hits of rays; null for an engine without pictures, whose rays hit nothing.
    std::unique_ptr<Tracer> (*createTracer)() = nullptr;
    /// Writes a picture file, which is there as a whole or as it was before; null for an engine that writes none.
    /// @return what went wrong; empty for nothing
    std::string (*writePicture)(const Picture& picture, const std::string& file) = nullptr;
};

}  // namespace Zant::Engine

#endif
