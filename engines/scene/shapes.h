#ifndef ZANT_ENGINES_SCENE_SHAPES_H
#define ZANT_ENGINES_SCENE_SHAPES_H

#include <optional>

#include "engines/scene/execution.h"
#include "engines/scene/model.h"

namespace Zant::Engine {

/// The shape that a command describes, from the keyword at a place on.
/// @return nothing for a shape that the engine does not show
std::optional<Shape> readShape(const Execution& execution, size_t keyword);

}  // namespace Zant::Engine

#endif
