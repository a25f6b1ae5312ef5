#ifndef ZANT_ENGINES_PREVIEW_AFFINE_H
#define ZANT_ENGINES_PREVIEW_AFFINE_H

#include <cmath>
#include <optional>

#include "engines/scene/points.h"

/// Vectors and normals between coordinate systems.
namespace Zant::Preview {

using Engine::Placement;
using Engine::Point;
using namespace Engine::Points;

/// Not less than the length, and less than twice of it.
inline double roughLength(const Point& a) {
    return std::fabs(a[0]) + std::fabs(a[1]) + std::fabs(a[2]);
}

/// A normal on its way out of a coordinate system, from the inverse of its placement. Its length changes.
inline Point placeNormal(const Placement& inverse, const Point& normal) {
    return {dot(inverse.axes[0], normal), dot(inverse.axes[1], normal), dot(inverse.axes[2], normal)};
}

inline bool isIdentity(const Placement& placement) {
    const Placement identity;
    return placement.axes == identity.axes && placement.origin == identity.origin;
}

/// How much a vector can grow.
inline double stretch(const Placement& placement) {
    return size(placement.axes[0]) + size(placement.axes[1]) + size(placement.axes[2]);
}

/// Nothing for a placement that flattens what is in it, holds a NaN, or is larger or smaller than float numbers can be
/// worked with.
inline std::optional<Placement> inverseOf(const Placement& placement) {
    constexpr double flat = 1e-12;  // far below what a float holds of a flattened direction
    const auto& [x, y, z] = placement.axes;
    const double volume = dot(x, cross(y, z));
    const bool isSolid = std::fabs(volume) > flat * length(x) * length(y) * length(z) && std::fabs(volume) > 1e-36;
    const bool isSmall = stretch(placement) < 1e12 && size(placement.origin) < 1e18;  // both false for a NaN
    if (!isSolid || !isSmall) return std::nullopt;
    const Point rows[3] = {cross(y, z) * (1 / volume), cross(z, x) * (1 / volume), cross(x, y) * (1 / volume)};
    Placement inverse;
    for (size_t axis = 0; axis < 3; ++axis)
        inverse.axes[axis] = {rows[0][axis], rows[1][axis], rows[2][axis]};
    inverse.origin = placeVector(inverse, placement.origin) * -1;
    return inverse;
}

}  // namespace Zant::Preview

#endif
