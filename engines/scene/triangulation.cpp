#include "engines/scene/triangulation.h"

#include <cmath>

namespace Zant::Engine {
namespace {

using Flat = std::array<double, 2>;

// Polygons of more corners are cut as fans: looking for ears takes time by the square of their number.
constexpr size_t mostCorners = 4096;

double cross(const Flat& a, const Flat& b, const Flat& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

// The sum over the edges is right for concave polygons too, and for those that are not quite flat.
Point normalOf(const std::vector<Facets::Corner>& points, const std::vector<uint32_t>& corners) {
    Point normal = {0, 0, 0};
    for (size_t k = 0; k < corners.size(); ++k) {
        const Facets::Corner& a = points[corners[k]];
        const Facets::Corner& b = points[corners[(k + 1) % corners.size()]];
        for (size_t axis = 0; axis < 3; ++axis) {
            const size_t u = (axis + 1) % 3, v = (axis + 2) % 3;
            normal[axis] += (double{a[u]} - double{b[u]}) * (double{a[v]} + double{b[v]});
        }
    }
    return normal;
}

// The polygon as seen along the axis that its normal is nearest to, counterclockwise.
std::vector<Flat> flattened(const std::vector<Facets::Corner>& points, const std::vector<uint32_t>& corners) {
    const Point normal = normalOf(points, corners);
    size_t axis = 0;
    for (size_t other = 1; other < 3; ++other) {
        if (std::fabs(normal[other]) > std::fabs(normal[axis])) axis = other;
    }
    const double sign = normal[axis] < 0 ? -1 : 1;
    std::vector<Flat> flat;
    flat.reserve(corners.size());
    for (const uint32_t corner : corners)
        flat.push_back({sign * double{points[corner][(axis + 1) % 3]}, double{points[corner][(axis + 2) % 3]}});
    return flat;
}

bool isInside(const Flat& point, const Flat& a, const Flat& b, const Flat& c) {
    return cross(a, b, point) >= 0 && cross(b, c, point) >= 0 && cross(c, a, point) >= 0;
}

// Corners that are left, as places in the polygon.
class Ears {
public:
    explicit Ears(const std::vector<Flat>& flat) : flat_(flat), left_(flat.size()) {
        for (size_t k = 0; k < left_.size(); ++k)
            left_[k] = k;
    }

    /// Takes out a corner that can be cut off; the first one where none can.
    std::array<size_t, 3> take() {
        size_t k = 0;
        while (k < left_.size() && !isEar(k))
            ++k;
        if (k == left_.size()) k = 0;
        const std::array<size_t, 3> ear = {before(k), left_[k], after(k)};
        left_.erase(left_.begin() + static_cast<std::ptrdiff_t>(k));
        return ear;
    }

private:
    size_t before(size_t k) const { return left_[(k + left_.size() - 1) % left_.size()]; }
    size_t after(size_t k) const { return left_[(k + 1) % left_.size()]; }

    bool isEar(size_t k) const {
        const Flat &a = flat_[before(k)], &b = flat_[left_[k]], &c = flat_[after(k)];
        if (!(cross(a, b, c) > 0)) return false;
        for (const size_t other : left_) {
            const Flat& point = flat_[other];
            if (point != a && point != b && point != c && isInside(point, a, b, c)) return false;
        }
        return true;
    }

    const std::vector<Flat>& flat_;
    std::vector<size_t> left_;
};

bool isConvex(const std::vector<Flat>& flat) {
    for (size_t k = 0; k < flat.size(); ++k) {
        if (cross(flat[k], flat[(k + 1) % flat.size()], flat[(k + 2) % flat.size()]) < 0) return false;
    }
    return flat.size() <= 4;  // more corners may wind around twice
}

}  // namespace

void triangulate(const std::vector<Facets::Corner>& points, const std::vector<uint32_t>& corners,
                 std::vector<std::array<uint32_t, 3>>& triangles) {
    const bool isSimple = corners.size() <= 3 || corners.size() > mostCorners;
    const std::vector<Flat> flat = isSimple ? std::vector<Flat>() : flattened(points, corners);
    if (isSimple || isConvex(flat)) {
        for (size_t k = 2; k < corners.size(); ++k)
            triangles.push_back({corners[0], corners[k - 1], corners[k]});
        return;
    }
    Ears ears(flat);
    for (size_t k = 2; k < corners.size(); ++k) {
        const std::array<size_t, 3> ear = ears.take();
        triangles.push_back({corners[ear[0]], corners[ear[1]], corners[ear[2]]});
    }
}

}  // namespace Zant::Engine
