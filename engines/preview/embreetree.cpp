#include "engines/preview/embreetree.h"

#include <cstring>
#include <string>

#include "engines/preview/raysearch.h"
#include "own/dlplatform.h"

namespace Zant::Preview {
namespace {

using GoOn = std::function<bool()>;

// Whether to go on is asked every few milliseconds.
constexpr size_t stepsBetweenQuestions = 1024;
constexpr size_t trianglesBetweenQuestions = 1 << 16;

// Its worker threads live on when the engine is unloaded, in code that must stay.
void keepEmbreeMapped() {
    static const bool once = (Platform::keepMappedAround(reinterpret_cast<const void*>(&rtcNewDevice)), true);
    static_cast<void>(once);
}

// Without the settings files that Embree looks for in the working and home directories.
Embree<RTCDevice> newDevice(int threads) {
    keepEmbreeMapped();
    const std::string wishes = "ignore_config_files=1,threads=" + std::to_string(std::max(threads, 1));
    return Embree<RTCDevice>(rtcNewDevice(wishes.c_str()));
}

Embree<RTCScene> newScene(RTCDevice device) {
    Embree<RTCScene> scene(rtcNewScene(device));
    rtcSetSceneFlags(scene.get(), RTC_SCENE_FLAG_ROBUST);
    return scene;
}

// The points are copied, since Embree reads past the last one.
Embree<RTCGeometry> geometryOf(RTCDevice device, const Mesh& mesh) {
    const auto& [points, normals, triangles, looks] = *mesh.facets;
    Embree<RTCGeometry> geometry(rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE));
    void* const copy = rtcSetNewGeometryBuffer(geometry.get(), RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                               sizeof points[0], points.size());
    if (copy) std::memcpy(copy, points.data(), points.size() * sizeof points[0]);
    rtcSetSharedGeometryBuffer(geometry.get(), RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, triangles.data(), 0,
                               sizeof triangles[0], triangles.size());
    rtcSetGeometryUserData(geometry.get(), const_cast<Mesh*>(&mesh));
    rtcSetGeometryIntersectFilterFunction(geometry.get(), RaySearch::filterTriangle);
    rtcSetGeometryOccludedFilterFunction(geometry.get(), RaySearch::filterTriangle);
    return geometry;
}

void boundsOfQuadric(const RTCBoundsFunctionArguments* arguments) {
    const auto* const quadrics = static_cast<const PlacedQuadric*>(arguments->geometryUserPtr);
    const Box box = boxAround(quadrics[arguments->primID].quadric);
    RTCBounds& bounds = *arguments->bounds_o;
    bounds.lower_x = static_cast<float>(box.low[0]);
    bounds.lower_y = static_cast<float>(box.low[1]);
    bounds.lower_z = static_cast<float>(box.low[2]);
    bounds.upper_x = static_cast<float>(box.high[0]);
    bounds.upper_y = static_cast<float>(box.high[1]);
    bounds.upper_z = static_cast<float>(box.high[2]);
}

Embree<RTCGeometry> geometryOf(RTCDevice device, const std::vector<PlacedQuadric>& quadrics) {
    Embree<RTCGeometry> geometry(rtcNewGeometry(device, RTC_GEOMETRY_TYPE_USER));
    rtcSetGeometryUserPrimitiveCount(geometry.get(), static_cast<unsigned>(quadrics.size()));
    rtcSetGeometryUserData(geometry.get(), const_cast<PlacedQuadric*>(quadrics.data()));
    rtcSetGeometryBoundsFunction(geometry.get(), boundsOfQuadric, nullptr);
    rtcSetGeometryIntersectFunction(geometry.get(), RaySearch::intersectQuadric);
    rtcSetGeometryOccludedFunction(geometry.get(), RaySearch::blockByQuadric);
    return geometry;
}

Embree<RTCGeometry> geometryOf(RTCDevice device, RTCScene group, const Placement& placement) {
    float columns[12];
    for (size_t i = 0; i < 12; ++i)
        columns[i] = static_cast<float>(i < 9 ? placement.axes[i / 3][i % 3] : placement.origin[i - 9]);
    Embree<RTCGeometry> geometry(rtcNewGeometry(device, RTC_GEOMETRY_TYPE_INSTANCE));
    rtcSetGeometryInstancedScene(geometry.get(), group);
    rtcSetGeometryTransform(geometry.get(), 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns);
    return geometry;
}

bool addPlanes(Mesh& mesh, const GoOn& goOn) {
    const auto corner = [&](uint32_t number) {
        const auto& [x, y, z] = mesh.facets->points[number];
        return Point{x, y, z};
    };
    mesh.planes.reserve(mesh.facets->triangles.size());
    for (const auto& [a, b, c] : mesh.facets->triangles) {
        if (mesh.planes.size() % trianglesBetweenQuestions == 0 && !goOn()) return false;
        const Point first = corner(a);
        const Point normal = cross(corner(b) - first, corner(c) - first);
        mesh.planes.push_back({normal, dot(normal, first)});
    }
    return true;
}

bool collect(const std::vector<Engine::Part>& parts, Group& group, const GoOn& goOn) {
    for (uint32_t index = 0; index < parts.size(); ++index) {
        if (const auto* const facets = std::get_if<0>(&parts[index].shape)) {
            if (!*facets || (*facets)->triangles.empty()) continue;
            group.meshes.push_back({facets->get(), {}, index, 0});
            if (!addPlanes(group.meshes.back(), goOn)) return false;
        } else if (const auto quadric = placed(std::get<1>(parts[index].shape), index)) {
            const bool isPlane = quadric->quadric.kind == Engine::Quadric::Kind::Plane;
            (isPlane ? group.unbounded : group.bounded).push_back(*quadric);
        }
    }
    return true;
}

void attach(RTCDevice device, const Group& group, RTCScene scene) {
    const auto add = [&](const Embree<RTCGeometry>& geometry) {
        rtcCommitGeometry(geometry.get());
        rtcAttachGeometry(scene, geometry.get());
    };
    for (const Mesh& mesh : group.meshes)
        add(geometryOf(device, mesh));
    if (!group.bounded.empty()) add(geometryOf(device, group.bounded));
}

bool askWhetherToGoOn(void* goOn, double) {
    return (*static_cast<const GoOn*>(goOn))();
}

}  // namespace

void Group::setSingle(uint32_t instance) {
    single = instance;
    for (Mesh& mesh : meshes)
        mesh.single = instance;
    for (PlacedQuadric& quadric : bounded)
        quadric.single = instance;
}

bool EmbreeTree::build(const Engine::Model& model, int threads, const GoOn& goOn) {
    device_ = newDevice(threads);
    if (!device_) return false;
    if (!collectGroups(model, goOn) || !show(model, goOn) || !buildGroups(goOn) || !buildScene(goOn)) return false;
    measure();
    return true;
}

bool EmbreeTree::commit(RTCScene scene, const GoOn& goOn) const {
    rtcSetSceneProgressMonitorFunction(scene, askWhetherToGoOn, const_cast<GoOn*>(&goOn));
    rtcCommitScene(scene);
    rtcSetSceneProgressMonitorFunction(scene, nullptr, nullptr);
    return rtcGetDeviceError(device_.get()) == RTC_ERROR_NONE;
}

bool EmbreeTree::collectGroups(const Engine::Model& model, const GoOn& goOn) {
    groups_.resize(model.groups.size());  // geometry refers to what is in them
    for (size_t i = 0; i < groups_.size(); ++i) {
        if (i % stepsBetweenQuestions == 0 && !goOn()) return false;
        if (!collect(model.groups[i], groups_[i], goOn)) return false;
    }
    return true;
}

bool EmbreeTree::show(const Engine::Model& model, const GoOn& goOn) {
    size_t steps = 0;
    for (const auto& instance : model.instances) {
        if (steps++ % stepsBetweenQuestions == 0 && !goOn()) return false;
        if (instance.group < groups_.size() && !groups_[instance.group].isEmpty())
            show(instance, model.groups[instance.group]);
    }
    return true;
}

void EmbreeTree::show(const Engine::Model::Instance& instance, const std::vector<Engine::Part>& parts) {
    const auto inverse = inverseOf(instance.placement);
    if (!inverse) return;
    Group& group = groups_[instance.group];
    const auto number = static_cast<uint32_t>(shown_.size());
    shown_.push_back({&group, &parts, &instance.placement, *inverse, instance.object, stretch(*inverse),
                      size(instance.placement.origin), isIdentity(instance.placement)});
    if (!group.unbounded.empty()) withPlanes_.push_back(number);
    if (group.single == Group::none && shown_.back().isAtHome) {
        group.setSingle(number);
    } else {
        group.isMoved = true;
    }
}

bool EmbreeTree::buildGroups(const GoOn& goOn) {
    for (Group& group : groups_) {
        if (!group.isMoved || !group.hasTree()) continue;
        group.scene = newScene(device_.get());
        attach(device_.get(), group, group.scene.get());
        if (!commit(group.scene.get(), goOn)) return false;
    }
    return true;
}

bool EmbreeTree::buildScene(const GoOn& goOn) {
    scene_ = newScene(device_.get());
    for (uint32_t number = 0; number < shown_.size(); ++number) {
        if (number % stepsBetweenQuestions == 0 && !goOn()) return false;
        const Group& group = *shown_[number].group;
        if (group.single == number || !group.hasTree()) continue;
        const auto geometry = geometryOf(device_.get(), group.scene.get(), *shown_[number].placement);
        rtcCommitGeometry(geometry.get());
        rtcAttachGeometryByID(scene_.get(), geometry.get(), number);
    }
    for (const Group& group : groups_) {  // after those whose numbers matter
        if (group.single != Group::none) attach(device_.get(), group, scene_.get());
    }
    return commit(scene_.get(), goOn);
}

void EmbreeTree::measure() {
    RTCBounds bounds;
    rtcGetSceneBounds(scene_.get(), &bounds);
    if (!(bounds.lower_x <= bounds.upper_x)) return;  // nothing is there
    const Point low = {bounds.lower_x, bounds.lower_y, bounds.lower_z};
    const Point high = {bounds.upper_x, bounds.upper_y, bounds.upper_z};
    middle_ = (low + high) * 0.5;
    radius_ = length(high - middle_) * (1 + 1e-6) + 1e-6 * length(middle_);
}

}  // namespace Zant::Preview
