#ifndef ZANT_ENGINES_PREVIEW_RAYSEARCH_H
#define ZANT_ENGINES_PREVIEW_RAYSEARCH_H

#include "engines/preview/embreetree.h"
#include "engines/scene/tracer.h"

namespace Zant::Preview {

/// The search for the hit of one ray. Embree, which calculates with floats, finds what may be hit; whether it is, and
/// where, is decided here in double precision, and so is which of several is nearest.
class RaySearch {
public:
    static Engine::Hit nearest(const EmbreeTree& tree, const Engine::Ray& ray);
    static bool isBlocked(const EmbreeTree& tree, const Engine::Ray& ray);

    // What Embree calls.
    static void filterTriangle(const RTCFilterFunctionNArguments* arguments);
    static void intersectQuadric(const RTCIntersectFunctionNArguments* arguments);
    static void blockByQuadric(const RTCOccludedFunctionNArguments* arguments);

private:
    struct Context : RTCIntersectContext {
        RaySearch* search = nullptr;
    };

    /// What is hit: of the same distance the lowest counts.
    struct Place {
        uint32_t instance;
        uint32_t part;
        uint32_t primitive;

        bool operator<(const Place& other) const {
            if (instance != other.instance) return instance < other.instance;
            return part != other.part ? part < other.part : primitive < other.primitive;
        }
    };

    static RaySearch& of(RTCIntersectContext* context) { return *static_cast<Context*>(context)->search; }

    RaySearch(const EmbreeTree& tree, const Engine::Ray& ray);

    Engine::Hit nearest();
    bool isBlocked();
    Context context();
    RTCRay embreeRay() const;
    void tryPlanes();
    bool tryTriangle(const Mesh& mesh, uint32_t instance, uint32_t primitive);
    bool tryQuadric(const PlacedQuadric& quadric, uint32_t instance);
    bool isBetter(double distance, const Place& place) const;
    void take(double distance, const Place& place, const PlacedQuadric* quadric, double tolerance);
    double tolerance(double distance) const { return errorAtOrigin_ + std::fabs(distance) * errorPerDistance_; }
    void normalise();
    void approachScene();
    void enter(uint32_t instance);
    static uint32_t instanceOf(const RTCIntersectContext* context, uint32_t single);

    Engine::Hit hit() const;
    Point against() const;
    void setNormals(const Engine::Facets& facets, const Shown& shown, Engine::Hit& hit) const;
    void setNormal(const PlacedQuadric& quadric, const Shown& shown, Engine::Hit& hit) const;

    const EmbreeTree& tree_;
    // The ray, from where it comes near the scene. Distances are multiples of its direction.
    Point origin_{}, direction_{};
    double scale_ = 1, skipped_ = 0;  // of the distances asked for
    double originSize_;
    double from_ = 0, to_ = 0;
    bool isValid_ = false;
    // The same in the coordinates of an instance, and how far off what Embree calculates there may be: at the origin,
    // and for each multiple of the direction. Nothing is here before the first instance is entered.
    const Shown* entered_ = nullptr;
    const Point *localOrigin_, *localDirection_;
    Point movedOrigin_, movedDirection_;
    double errorAtOrigin_, errorPerDistance_;
    // The best so far, when there is one.
    bool isFound_ = false;
    double distance_;
    Place place_;
    const PlacedQuadric* quadric_;
    Point normal_;  // of the triangle, of any length, in the instance's coordinates
    float u_, v_;
    float limit_ = 0;  // where Embree may stop
};

}  // namespace Zant::Preview

#endif
