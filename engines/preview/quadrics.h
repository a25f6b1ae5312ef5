#ifndef ZANT_ENGINES_PREVIEW_QUADRICS_H
#define ZANT_ENGINES_PREVIEW_QUADRICS_H

#include <array>
#include <optional>

#include "engines/preview/affine.h"

namespace Zant::Preview {

/// A curved surface of a group, ready for rays in the group's coordinates.
struct PlacedQuadric {
    Engine::Quadric quadric{};
    Placement inverse{};  ///< of its placement
    uint32_t part = 0;    ///< its index in the group
    uint32_t single = 0;  ///< see Group::single
};

/// Nothing for a surface that no ray can hit: its placement cannot be inverted, or a radius is not finite.
std::optional<PlacedQuadric> placed(const Engine::Quadric& quadric, uint32_t part);

struct Box {
    Point low{}, high{};
};

/// Holds all of it, in the group's coordinates, with some room around. A plane has none.
Box boxAround(const Engine::Quadric& quadric);

/// Where a line crosses it: factors of the direction, in any order. What is not there is a NaN.
/// @param origin and direction in the surface's own coordinates
std::array<double, 2> crossings(const Engine::Quadric& quadric, const Point& origin, const Point& direction);

/// Of any length, in the surface's own coordinates; zero at the tip of a cone.
Point normalAt(const Engine::Quadric& quadric, const Point& point);

}  // namespace Zant::Preview

#endif
