#ifndef ZANT_ENGINES_SCENE_TRIANGULATION_H
#define ZANT_ENGINES_SCENE_TRIANGULATION_H

#include <array>
#include <cstdint>
#include <vector>

#include "engines/scene/model.h"

namespace Zant::Engine {

/// Cuts a polygon into triangles, with the winding of the polygon. Concave ones are cut along their own diagonals; what
/// crosses itself is filled somehow.
/// @param points all points of the mesh
/// @param corners indices of the polygon's points, all of them there
/// @param triangles receives corners.size() - 2 triangles; none for fewer than three corners
void triangulate(const std::vector<Facets::Corner>& points, const std::vector<uint32_t>& corners,
                 std::vector<std::array<uint32_t, 3>>& triangles);

}  // namespace Zant::Engine

#endif
