#include "engines/preview/quadrics.h"

#include <limits>

namespace Zant::Preview {
namespace {

using Engine::Quadric;

constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();

// A sphere of radius 1, from the place of the line that is nearest to its middle: exact also from far away.
std::array<double, 2> throughBall(const Point& origin, const Point& direction) {
    const double square = dot(direction, direction);
    const double middle = -dot(origin, direction) / square;
    const Point nearest = origin + direction * middle;
    const double half = std::sqrt((1 - dot(nearest, nearest)) / square);  // a NaN beside the ball
    return {middle - half, middle + half};
}

double radiusAt(const Quadric& cone, double z) {
    return cone.first + (cone.second - cone.first) * z;
}

// x^2 + y^2 = radius(z)^2, again from a place near the surface.
std::array<double, 2> throughCone(const Quadric& cone, const Point& origin, const Point& direction) {
    const double shift = -dot(origin - Point{0, 0, 0.5}, direction) / dot(direction, direction);
    const Point start = origin + direction * shift;
    const double growth = (cone.second - cone.first) * direction[2];
    const double radius = radiusAt(cone, start[2]);
    const double a = direction[0] * direction[0] + direction[1] * direction[1] - growth * growth;
    const double b = start[0] * direction[0] + start[1] * direction[1] - growth * radius;
    const double c = start[0] * start[0] + start[1] * start[1] - radius * radius;
    const double root = -(b + std::copysign(std::sqrt(b * b - a * c), b));
    std::array<double, 2> found = {root / a, c / root};
    for (double& distance : found) {
        const double z = start[2] + direction[2] * distance;
        distance = z >= 0 && z <= 1 ? distance + shift : nowhere;
    }
    return found;
}

std::array<double, 2> throughDisc(const Point& origin, const Point& direction) {
    const double distance = -origin[2] / direction[2];
    const double x = origin[0] + direction[0] * distance, y = origin[1] + direction[1] * distance;
    return {x * x + y * y <= 1 ? distance : nowhere, nowhere};
}

// The half sides of the box around a circle of radius 1 in the plane of x and y.
Point aroundCircle(const Placement& placement) {
    Point half;
    for (size_t i = 0; i < 3; ++i)
        half[i] = std::hypot(placement.axes[0][i], placement.axes[1][i]);
    return half;
}

void include(Box& box, const Point& middle, const Point& half) {
    for (size_t i = 0; i < 3; ++i) {
        box.low[i] = std::min(box.low[i], middle[i] - half[i]);
        box.high[i] = std::max(box.high[i], middle[i] + half[i]);
    }
}

}  // namespace

std::optional<PlacedQuadric> placed(const Quadric& quadric, uint32_t part) {
    const auto inverse = inverseOf(quadric.placement);
    if (!inverse || !std::isfinite(quadric.first) || !std::isfinite(quadric.second)) return std::nullopt;
    return PlacedQuadric{quadric, *inverse, part, 0};
}

Box boxAround(const Quadric& quadric) {
    const Placement& placement = quadric.placement;
    const Point circle = aroundCircle(placement);
    Box box = {placement.origin, placement.origin};
    if (quadric.kind == Quadric::Kind::Cone) {
        include(box, placement.origin, circle * std::fabs(quadric.first));
        include(box, placement.origin + placement.axes[2], circle * std::fabs(quadric.second));
    } else if (quadric.kind == Quadric::Kind::Ball) {
        const Point& z = placement.axes[2];
        include(box, placement.origin,
                {std::hypot(circle[0], z[0]), std::hypot(circle[1], z[1]), std::hypot(circle[2], z[2])});
    } else {
        include(box, placement.origin, circle);
    }
    // Trees hold floats: what is flat or far away must not fall out by their rounding.
    const double room = 1e-6 * (size(box.low) + size(box.high));
    include(box, box.low, {room, room, room});
    include(box, box.high, {room, room, room});
    return box;
}

std::array<double, 2> crossings(const Quadric& quadric, const Point& origin, const Point& direction) {
    switch (quadric.kind) {
        case Quadric::Kind::Ball:
            return throughBall(origin, direction);
        case Quadric::Kind::Cone:
            return throughCone(quadric, origin, direction);
        case Quadric::Kind::Disc:
            return throughDisc(origin, direction);
        case Quadric::Kind::Plane:
            return {-origin[2] / direction[2], nowhere};
    }
    return {nowhere, nowhere};
}

Point normalAt(const Quadric& quadric, const Point& point) {
    switch (quadric.kind) {
        case Quadric::Kind::Ball:
            return point;
        case Quadric::Kind::Cone:
            return {point[0], point[1], (quadric.first - quadric.second) * radiusAt(quadric, point[2])};
        default:
            return {0, 0, 1};
    }
}

}  // namespace Zant::Preview
