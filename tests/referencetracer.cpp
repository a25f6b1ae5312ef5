#include "referencetracer.h"

#include <cmath>
#include <utility>

namespace Zant::Tests {
namespace {

using namespace Engine;

struct Vec {
    double x = 0, y = 0, z = 0;

    Vec() = default;
    Vec(double a, double b, double c) : x(a), y(b), z(c) {}
    template <class Number>
    explicit Vec(const std::array<Number, 3>& from) : x(from[0]), y(from[1]), z(from[2]) {}
    Vec operator+(Vec b) const { return {x + b.x, y + b.y, z + b.z}; }
    Vec operator-(Vec b) const { return {x - b.x, y - b.y, z - b.z}; }
    Vec operator*(double f) const { return {x * f, y * f, z * f}; }
    double operator*(Vec b) const { return x * b.x + y * b.y + z * b.z; }
    Vec operator%(Vec b) const { return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x}; }
    Vec unit() const { return *this * (1 / std::sqrt(*this * *this)); }
    explicit operator Point() const { return {x, y, z}; }
};

/// A coordinate system and all outside of it.
struct Frame {
    Vec x, y, z, origin;

    Frame(const Placement& from) : x(from.axes[0]), y(from.axes[1]), z(from.axes[2]), origin(from.origin) {}
    Vec out(Vec p) const { return vectorOut(p) + origin; }
    Vec vectorOut(Vec p) const { return x * p.x + y * p.y + z * p.z; }
    double volume() const { return x * (y % z); }
    // By Cramer's rule.
    Vec vectorIn(Vec p) const { return Vec(p * (y % z), p * (z % x), p * (x % y)) * (1 / volume()); }
    Vec in(Vec p) const { return vectorIn(p - origin); }
    Vec normalOut(Vec n) const { return ((y % z) * n.x + (z % x) * n.y + (x % y) * n.z) * (1 / volume()); }
};

struct Search {
    Vec origin, direction;
    Ray ray;
    Hit best{};

    explicit Search(const Ray& asked) : origin(asked.origin), direction(asked.direction), ray(asked) {}

    bool isNearer(double distance) const {
        return distance > ray.nearest && distance < ray.farthest && distance < best.distance;
    }
    Point towardsEye(Vec normal) const { return Point((normal * direction > 0 ? normal * -1 : normal).unit()); }
};

// Moeller and Trumbore.
void tryTriangle(Search& search, const Frame& frame, const Facets& facets, size_t index, const Part& part,
                 uint32_t object) {
    Vec corner[3];
    for (size_t i = 0; i < 3; ++i)
        corner[i] = frame.out(Vec(facets.points[facets.triangles[index][i]]));
    const Vec first = corner[1] - corner[0], second = corner[2] - corner[0];
    const Vec p = search.direction % second;
    const double determinant = first * p;
    const Vec toOrigin = search.origin - corner[0];
    const double u = toOrigin * p / determinant;
    const Vec q = toOrigin % first;
    const double v = search.direction * q / determinant;
    const double distance = second * q / determinant;
    if (!(u >= 0 && v >= 0 && u + v <= 1 && search.isNearer(distance))) return;
    search.best.distance = distance;
    search.best.object = object;
    search.best.faceted = search.best.normal = search.towardsEye(first % second);
    const size_t look = index < facets.looks.size() ? facets.looks[index] : 0;
    search.best.colour = part.looks[look < part.looks.size() ? look : 0];
    if (facets.normals.empty()) return;
    const auto& [a, b, c] = facets.triangles[index];
    Vec smooth =
        frame.normalOut(Vec(facets.normals[a]) * (1 - u - v) + Vec(facets.normals[b]) * u + Vec(facets.normals[c]) * v)
            .unit();
    if (smooth * Vec(search.best.faceted) < 0) smooth = smooth * -1;
    const Vec along = search.direction.unit();
    if (smooth * along > 0) smooth = (smooth - along * (smooth * along)).unit();
    search.best.normal = Point(smooth);
}

// Zero on the surface: of the second degree in the point, so that three values of it give the equation along a ray.
double equation(const Quadric& quadric, Vec p) {
    switch (quadric.kind) {
        case Quadric::Kind::Ball:
            return p * p - 1;
        case Quadric::Kind::Cone:
            return p.x * p.x + p.y * p.y - std::pow(quadric.first * (1 - p.z) + quadric.second * p.z, 2);
        default:
            return p.z;
    }
}

bool holds(const Quadric& quadric, Vec p) {
    if (quadric.kind == Quadric::Kind::Cone) return p.z >= 0 && p.z <= 1;
    return quadric.kind != Quadric::Kind::Disc || p.x * p.x + p.y * p.y <= 1;
}

// By differences: the equation is at most quadratic.
Vec gradient(const Quadric& quadric, Vec p) {
    const auto along = [&](Vec step) { return equation(quadric, p + step) - equation(quadric, p - step); };
    return {along({1, 0, 0}), along({0, 1, 0}), along({0, 0, 1})};
}

void tryQuadric(Search& search, const Frame& frame, const Quadric& quadric, const Part& part, uint32_t object) {
    const Frame own(quadric.placement);
    const Vec eye = own.in(frame.in(search.origin)), direction = own.vectorIn(frame.vectorIn(search.direction));
    const double step = 1 / std::sqrt(direction * direction);
    const double skipped = -(eye * direction) * step * step;  // far away the differences would be lost
    const Vec origin = eye + direction * skipped;
    const double before = equation(quadric, origin - direction * step), here = equation(quadric, origin),
                 after = equation(quadric, origin + direction * step);
    const double a = (after + before) / 2 - here, b = (after - before) / 2, c = here;
    const bool isLinear = quadric.kind == Quadric::Kind::Disc || quadric.kind == Quadric::Kind::Plane;
    const double root = std::sqrt(b * b - 4 * a * c);
    for (const double steps : {isLinear ? -c / b : (-b - root) / (2 * a), isLinear ? -c / b : (-b + root) / (2 * a)}) {
        const double distance = steps * step + skipped;
        const Vec place = eye + direction * distance;
        if (!holds(quadric, place) || !search.isNearer(distance)) continue;
        search.best.distance = distance;
        search.best.object = object;
        search.best.faceted = search.best.normal =
            search.towardsEye(frame.normalOut(own.normalOut(gradient(quadric, place))));
        search.best.colour = part.looks[0];
    }
}

bool isFlat(const Frame& frame) {
    return !(std::fabs(frame.volume()) > 1e-9);
}

}  // namespace

Hit traceSlowly(const Model& model, const Ray& ray) {
    Search search(ray);
    for (const auto& instance : model.instances) {
        const Frame frame(instance.placement);
        if (instance.group >= model.groups.size() || isFlat(frame)) continue;
        for (const Part& part : model.groups[instance.group]) {
            const uint32_t object = instance.object ? instance.object : part.object;
            if (const auto* const quadric = std::get_if<Quadric>(&part.shape)) {
                if (!isFlat(Frame(quadric->placement))) tryQuadric(search, frame, *quadric, part, object);
                continue;
            }
            const Facets& facets = *std::get<0>(part.shape);
            for (size_t i = 0; i < facets.triangles.size(); ++i)
                tryTriangle(search, frame, facets, i, part, object);
        }
    }
    return search.best;
}

}  // namespace Zant::Tests
