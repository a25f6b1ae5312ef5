#ifndef ZANT_ENGINES_SCENE_DECLARATIONS_H
#define ZANT_ENGINES_SCENE_DECLARATIONS_H

#include <string>

#include "engines/scene/objects.h"

namespace Zant::Engine {

/// The commands that would declare an object with its content, one per line: a bitmap with its pixels, a vertex map
/// with its rows, a mesh with its polygons. An object whose content the engine does not keep gives the command that
/// declared it.
std::string textOf(const Object& object);

/// What an object is, in a few words: "bitmap charGray 4 x 4".
std::string summaryOf(const Object& object);

}  // namespace Zant::Engine

#endif
