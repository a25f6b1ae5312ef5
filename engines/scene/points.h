#ifndef ZANT_ENGINES_SCENE_POINTS_H
#define ZANT_ENGINES_SCENE_POINTS_H

#include <algorithm>
#include <cmath>

#include "engines/scene/model.h"

/// How our engines calculate with points and vectors.
namespace Zant::Engine::Points {

inline Point operator+(const Point& a, const Point& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

inline Point operator-(const Point& a, const Point& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline Point operator*(const Point& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

inline double dot(const Point& a, const Point& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Point cross(const Point& a, const Point& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double length(const Point& a) {
    return std::sqrt(dot(a, a));
}

/// The vector with length 1; without a length it stays as it is.
inline Point unit(const Point& a) {
    const double size = length(a);
    return size > 0 ? a * (1 / size) : a;
}

/// The largest component, without its sign.
inline double size(const Point& a) {
    return std::max(std::max(std::fabs(a[0]), std::fabs(a[1])), std::fabs(a[2]));
}

inline Point placeVector(const Placement& placement, const Point& vector) {
    return placement.axes[0] * vector[0] + placement.axes[1] * vector[1] + placement.axes[2] * vector[2];
}

inline Point placePoint(const Placement& placement, const Point& point) {
    return placeVector(placement, point) + placement.origin;
}

}  // namespace Zant::Engine::Points

#endif
