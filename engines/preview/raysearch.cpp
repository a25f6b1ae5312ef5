#include "engines/preview/raysearch.h"

namespace Zant::Preview {
namespace {

// Some units in the last place of a float: what Embree's calculation may be off, as a part of what goes into it.
constexpr double rounding = 5e-7;
// Quadrics are found by boxes; how steeply a ray meets them is not asked.
constexpr double flattest = 0.01;
// From how many radii around the scene on it is approached first.
constexpr double farAway = 8;

Point smoothNormalOf(const Engine::Facets& facets, const std::array<uint32_t, 3>& corners, double u, double v) {
    const double weights[3] = {1 - u - v, u, v};
    Point sum = {0, 0, 0};
    for (size_t i = 0; i < 3; ++i) {
        const auto& [x, y, z] = facets.normals[corners[i]];
        sum = sum + Point{x, y, z} * weights[i];
    }
    return sum;
}

// The vector with length 1; nothing when it has no direction.
std::optional<Point> directionOf(const Point& vector) {
    const double square = dot(vector, vector);
    if (!(square > 0 && square < std::numeric_limits<double>::infinity())) return std::nullopt;
    return vector * (1 / std::sqrt(square));
}

Point facing(const Point& normal, const Point& direction) {
    return dot(normal, direction) > 0 ? normal * -1 : normal;
}

// A smooth normal on the side of the triangle that is seen. At an outline it may look away from the eye: then it is the
// nearest one that does not.
Point bent(const Point& smooth, const Point& faceted, const Point& direction) {
    const Point sameSide = dot(smooth, faceted) < 0 ? smooth * -1 : smooth;
    const double away = dot(sameSide, direction);
    if (away <= 0) return sameSide;
    return directionOf(sameSide - direction * (away / dot(direction, direction))).value_or(faceted);
}

}  // namespace

RaySearch::RaySearch(const EmbreeTree& tree, const Engine::Ray& ray)
    : tree_(tree),
      origin_(ray.origin),
      direction_(ray.direction),
      originSize_(size(ray.origin)),
      from_(ray.nearest),
      to_(ray.farthest) {
    constexpr double farthest = 1e18;
    const double square = dot(direction_, direction_);
    isValid_ = square > 0 && square < farthest * farthest && originSize_ < farthest;  // all false for a NaN
    if (!isValid_) return;
    if (square < 1e-6 || square > 1e6) normalise();
    const Point offset = tree.middle() - origin_;
    if (dot(offset, offset) > farAway * farAway * tree.radius() * tree.radius()) approachScene();
    limit_ = static_cast<float>(to_ + std::fabs(to_) * rounding);
}

// Very long and very short directions are too much for floats.
void RaySearch::normalise() {
    scale_ = length(direction_);
    direction_ = direction_ * (1 / scale_);
    from_ *= scale_;
    to_ *= scale_;
}

// From far away floats would miss what is small.
void RaySearch::approachScene() {
    const double gap = length(tree_.middle() - origin_) - tree_.radius();
    skipped_ = gap / length(direction_) * (1 - 1e-9);
    origin_ = origin_ + direction_ * skipped_;
    originSize_ = size(origin_);
    from_ -= skipped_;
    to_ -= skipped_;
}

Engine::Hit RaySearch::nearest(const EmbreeTree& tree, const Engine::Ray& ray) {
    return RaySearch(tree, ray).nearest();
}

bool RaySearch::isBlocked(const EmbreeTree& tree, const Engine::Ray& ray) {
    return RaySearch(tree, ray).isBlocked();
}

Engine::Hit RaySearch::nearest() {
    if (!isValid_) return {};
    tryPlanes();
    if (limit_ >= 0) {
        Context embreeContext = context();
        RTCRayHit rayHit{embreeRay(), {}};
        rayHit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(tree_.scene(), &embreeContext, &rayHit);
    }
    return isFound_ ? hit() : Engine::Hit();
}

bool RaySearch::isBlocked() {
    if (!isValid_) return false;
    tryPlanes();
    if (isFound_ || limit_ < 0) return isFound_;
    Context embreeContext = context();
    RTCRay ray = embreeRay();
    rtcOccluded1(tree_.scene(), &embreeContext, &ray);
    return ray.tfar < 0;
}

RaySearch::Context RaySearch::context() {
    Context context;
    rtcInitIntersectContext(&context);
    context.search = this;
    return context;
}

RTCRay RaySearch::embreeRay() const {
    RTCRay ray{};
    ray.org_x = static_cast<float>(origin_[0]);
    ray.org_y = static_cast<float>(origin_[1]);
    ray.org_z = static_cast<float>(origin_[2]);
    ray.dir_x = static_cast<float>(direction_[0]);
    ray.dir_y = static_cast<float>(direction_[1]);
    ray.dir_z = static_cast<float>(direction_[2]);
    ray.tnear = static_cast<float>(std::max(0.0, from_ - std::fabs(from_) * rounding));
    ray.tfar = limit_;
    ray.mask = ~0U;
    return ray;
}

// The distances of one ray are those in the coordinates of every instance, since the direction is transformed too.
void RaySearch::enter(uint32_t instance) {
    const Shown& shown = tree_.shown()[instance];
    if (entered_ == &shown) return;
    entered_ = &shown;
    errorPerDistance_ = rounding * shown.stretch * roughLength(direction_);
    if (shown.isAtHome) {
        localOrigin_ = &origin_;
        localDirection_ = &direction_;
        errorAtOrigin_ = 2 * rounding * originSize_;
        return;
    }
    movedOrigin_ = placePoint(shown.inverse, origin_);
    movedDirection_ = placeVector(shown.inverse, direction_);
    localOrigin_ = &movedOrigin_;
    localDirection_ = &movedDirection_;
    errorAtOrigin_ = rounding * (shown.stretch * (originSize_ + shown.reach) + size(movedOrigin_));
}

void RaySearch::tryPlanes() {
    for (const uint32_t instance : tree_.withPlanes()) {
        for (const PlacedQuadric& plane : tree_.shown()[instance].group->unbounded)
            tryQuadric(plane, instance);
    }
}

// Distances that floats cannot tell apart are the same: of surfaces that coincide one is seen, and not a mixture.
bool RaySearch::isBetter(double distance, const Place& place) const {
    if (!(distance > from_ && distance < to_)) return false;
    if (!isFound_) return true;
    const auto rounded = static_cast<float>(distance), best = static_cast<float>(distance_);
    return rounded != best ? rounded < best : place < place_;
}

// Behind the hit Embree goes on for as long as its own distances may be wrong, so that what coincides is found whatever
// the order.
void RaySearch::take(double distance, const Place& place, const PlacedQuadric* quadric, double tolerance) {
    isFound_ = true;
    distance_ = distance;
    place_ = place;
    quadric_ = quadric;
    limit_ = std::min(limit_, static_cast<float>(distance + tolerance + rounding * std::fabs(distance)));
}

bool RaySearch::tryTriangle(const Mesh& mesh, uint32_t instance, uint32_t primitive) {
    enter(instance);
    const auto& [normal, offset] = mesh.planes[primitive];
    const double perApproach = 1 / dot(normal, *localDirection_);
    const double distance = (offset - dot(normal, *localOrigin_)) * perApproach;
    const Place place = {instance, mesh.part, primitive};
    if (!isBetter(distance, place)) return false;
    take(distance, place, nullptr, tolerance(distance) * roughLength(normal) * std::fabs(perApproach));
    normal_ = normal;
    return true;
}

bool RaySearch::tryQuadric(const PlacedQuadric& quadric, uint32_t instance) {
    enter(instance);
    bool isTaken = false;
    const Place place = {instance, quadric.part, 0};
    for (const double distance : crossings(quadric.quadric, placePoint(quadric.inverse, *localOrigin_),
                                           placeVector(quadric.inverse, *localDirection_))) {
        if (!isBetter(distance, place)) continue;
        take(distance, place, &quadric, tolerance(distance) / (flattest * roughLength(*localDirection_)));
        isTaken = true;
    }
    return isTaken;
}

uint32_t RaySearch::instanceOf(const RTCIntersectContext* context, uint32_t single) {
    const uint32_t instance = context->instID[0];
    return instance == RTC_INVALID_GEOMETRY_ID ? single : instance;
}

void RaySearch::filterTriangle(const RTCFilterFunctionNArguments* arguments) {
    if (arguments->valid[0] == 0) return;
    RaySearch& search = of(arguments->context);
    const auto& mesh = *static_cast<const Mesh*>(arguments->geometryUserPtr);
    const uint32_t primitive = RTCHitN_primID(arguments->hit, 1, 0);
    if (!search.tryTriangle(mesh, instanceOf(arguments->context, mesh.single), primitive)) {
        arguments->valid[0] = 0;
        return;
    }
    search.u_ = RTCHitN_u(arguments->hit, 1, 0);
    search.v_ = RTCHitN_v(arguments->hit, 1, 0);
    RTCRayN_tfar(arguments->ray, 1, 0) = search.limit_;
}

void RaySearch::intersectQuadric(const RTCIntersectFunctionNArguments* arguments) {
    if (arguments->valid[0] == 0) return;
    RaySearch& search = of(arguments->context);
    const auto& quadric = static_cast<const PlacedQuadric*>(arguments->geometryUserPtr)[arguments->primID];
    if (!search.tryQuadric(quadric, instanceOf(arguments->context, quadric.single))) return;
    RTCRayN_tfar(RTCRayHitN_RayN(arguments->rayhit, 1), 1, 0) = search.limit_;
}

void RaySearch::blockByQuadric(const RTCOccludedFunctionNArguments* arguments) {
    if (arguments->valid[0] == 0) return;
    RaySearch& search = of(arguments->context);
    const auto& quadric = static_cast<const PlacedQuadric*>(arguments->geometryUserPtr)[arguments->primID];
    if (!search.tryQuadric(quadric, instanceOf(arguments->context, quadric.single))) return;
    RTCRayN_tfar(arguments->ray, 1, 0) = -std::numeric_limits<float>::infinity();
}

Engine::Hit RaySearch::hit() const {
    const Shown& shown = tree_.shown()[place_.instance];
    const Engine::Part& part = (*shown.parts)[place_.part];
    Engine::Hit hit;
    hit.distance = (distance_ + skipped_) / scale_;
    hit.object = shown.object ? shown.object : part.object;
    size_t look = 0;
    if (quadric_) {
        setNormal(*quadric_, shown, hit);
    } else {
        const Engine::Facets& facets = *std::get<0>(part.shape);
        setNormals(facets, shown, hit);
        if (place_.primitive < facets.looks.size()) look = facets.looks[place_.primitive];
    }
    hit.colour = part.looks[look < part.looks.size() ? look : 0];
    return hit;
}

Point RaySearch::against() const {
    return direction_ * (-1 / length(direction_));
}

void RaySearch::setNormals(const Engine::Facets& facets, const Shown& shown, Engine::Hit& hit) const {
    const auto faceted = directionOf(shown.isAtHome ? normal_ : placeNormal(shown.inverse, normal_));
    hit.faceted = hit.normal = facing(faceted ? *faceted : against(), direction_);
    if (facets.normals.empty()) return;
    const auto& corners = facets.triangles[place_.primitive];
    const auto smooth = directionOf(placeNormal(shown.inverse, smoothNormalOf(facets, corners, u_, v_)));
    if (smooth) hit.normal = bent(*smooth, hit.faceted, direction_);
}

void RaySearch::setNormal(const PlacedQuadric& quadric, const Shown& shown, Engine::Hit& hit) const {
    const Point local = placePoint(shown.inverse, origin_ + direction_ * distance_);
    const Point normal = normalAt(quadric.quadric, placePoint(quadric.inverse, local));
    const auto outside = directionOf(placeNormal(shown.inverse, placeNormal(quadric.inverse, normal)));
    hit.faceted = hit.normal = facing(outside ? *outside : against(), direction_);
}

}  // namespace Zant::Preview
