#ifndef ZANT_ENGINES_PREVIEW_EMBREETREE_H
#define ZANT_ENGINES_PREVIEW_EMBREETREE_H

#include <embree3/rtcore.h>

#include <functional>
#include <memory>
#include <vector>

#include "engines/preview/quadrics.h"

namespace Zant::Preview {

/// All points p with dot(normal, p) == offset.
struct Plane {
    Point normal;
    double offset;
};

/// Triangles as the tree knows them.
struct Mesh {
    const Engine::Facets* facets = nullptr;
    std::vector<Plane> planes{};  ///< of the triangles: one look into memory where their corners would take two
    uint32_t part = 0;            ///< its index in the group
    uint32_t single = 0;          ///< see Group::single
};

struct ReleasesEmbree {
    void operator()(RTCDevice device) const { rtcReleaseDevice(device); }
    void operator()(RTCScene scene) const { rtcReleaseScene(scene); }
    void operator()(RTCGeometry geometry) const { rtcReleaseGeometry(geometry); }
};

template <class Handle>
using Embree = std::unique_ptr<std::remove_pointer_t<Handle>, ReleasesEmbree>;

/// What of a group can be hit.
struct Group {
    static constexpr uint32_t none = UINT32_MAX;

    std::vector<Mesh> meshes;
    std::vector<PlacedQuadric> bounded;
    std::vector<PlacedQuadric> unbounded;  ///< planes, which no tree holds
    uint32_t single = none;                ///< the instance that stands in its own place, and so in the tree as it is
    bool isMoved = false;                  ///< whether it has others
    Embree<RTCScene> scene{};              ///< for these

    bool hasTree() const { return !meshes.empty() || !bounded.empty(); }
    bool isEmpty() const { return !hasTree() && unbounded.empty(); }
    void setSingle(uint32_t instance);
};

/// One of the model's instances that shows something.
struct Shown {
    Group* group = nullptr;
    const std::vector<Engine::Part>* parts = nullptr;
    const Placement* placement = nullptr;
    Placement inverse{};
    uint32_t object = 0;
    double stretch = 1;     ///< of `inverse`
    double reach = 0;       ///< size of the instance's origin
    bool isAtHome = false;  ///< its placement changes nothing
};

/// A model as Embree holds it. The model outlives it.
class EmbreeTree {
public:
    /// See Tracer::build.
    bool build(const Engine::Model& model, int threads, const std::function<bool()>& goOn);

    RTCScene scene() const { return scene_.get(); }
    const std::vector<Shown>& shown() const { return shown_; }
    /// Indices of `shown` whose groups have planes.
    const std::vector<uint32_t>& withPlanes() const { return withPlanes_; }
    /// Holds all that is in `scene`.
    const Point& middle() const { return middle_; }
    double radius() const { return radius_; }

private:
    bool commit(RTCScene scene, const std::function<bool()>& goOn) const;
    bool collectGroups(const Engine::Model& model, const std::function<bool()>& goOn);
    bool show(const Engine::Model& model, const std::function<bool()>& goOn);
    void show(const Engine::Model::Instance& instance, const std::vector<Engine::Part>& parts);
    bool buildGroups(const std::function<bool()>& goOn);
    bool buildScene(const std::function<bool()>& goOn);
    void measure();

    Embree<RTCDevice> device_;
    std::vector<Group> groups_;
    std::vector<Shown> shown_;
    std::vector<uint32_t> withPlanes_;
    Embree<RTCScene> scene_;
    Point middle_ = {0, 0, 0};
    double radius_ = 0;
};

}  // namespace Zant::Preview

#endif
