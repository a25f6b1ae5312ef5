#ifndef ZANT_ENGINES_SCENE_SHADING_H
#define ZANT_ENGINES_SCENE_SHADING_H

#include "engines/scene/picture.h"
#include "engines/scene/tracer.h"

namespace Zant::Engine {

/// The ray through a place of the picture, in pixels from its upper left corner; (0.5, 0.5) is the middle of the first.
/// Its direction is of length 1.
Ray cameraRay(const Model& model, double x, double y);

/// Makes the pixels of a tile. The same pixels come out whatever the tiles and the threads are.
void shade(const Model& model, const Tracer& tracer, const Tile& tile, Picture& picture);

}  // namespace Zant::Engine

#endif
