// The preview engine's tracer against bare calls of Embree, on the same triangles: rays in scan order at a grid with
// waves, and at a sphere. The bare calls give distance and normal; the tracer besides decides in double precision, and
// gives object and colour. The peer's scene is as watertight as ours; Embree's default, whose rays may pass between two
// triangles, is shown beside it.
#include <embree3/rtcore.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

#include "bench/contest.h"
#include "engines/preview/embreetracer.h"

namespace {

using namespace Zant::Engine;

constexpr int columns = 320, rows = 240;

/// A net of width * height cells, two triangles each.
template <class Place>
std::shared_ptr<const Facets> net(uint32_t width, uint32_t height, Place place) {
    auto facets = std::make_shared<Facets>();
    for (uint32_t y = 0; y <= height; ++y)
        for (uint32_t x = 0; x <= width; ++x)
            facets->points.push_back(place(static_cast<float>(x) / static_cast<float>(width),
                                           static_cast<float>(y) / static_cast<float>(height)));
    for (uint32_t y = 0; y < height; ++y) {
        for (uint32_t x = 0; x < width; ++x) {
            const uint32_t corner = y * (width + 1) + x;
            facets->triangles.push_back({corner, corner + 1, corner + width + 1});
            facets->triangles.push_back({corner + 1, corner + width + 2, corner + width + 1});
        }
    }
    return facets;
}

std::shared_ptr<const Facets> grid() {
    return net(399, 249, [](float u, float v) -> Facets::Corner {
        return {u * 8 - 4, v * 6 - 3, 0.2F * std::sin(u * 20) * std::cos(v * 17)};
    });
}

std::shared_ptr<const Facets> sphere() {
    return net(399, 249, [](float u, float v) -> Facets::Corner {
        const float turn = u * 6.2831853F, tilt = v * 3.1415927F;
        return {3 * std::sin(tilt) * std::cos(turn), 3 * std::sin(tilt) * std::sin(turn), 3 * std::cos(tilt)};
    });
}

/// Through each pixel of a picture.
template <class Look>
void scan(Look look) {
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            look(Point{0.3, 0.2, 10}, Point{(x - 160 + 0.5) / 320, (y - 120 + 0.5) / 320, -1});
}

/// Embree with nothing around its calls.
class BareEmbree {
public:
    BareEmbree(const Facets& facets, RTCSceneFlags flags) {
        rtcSetSceneFlags(scene_, flags);
        const RTCGeometry geometry = rtcNewGeometry(device_, RTC_GEOMETRY_TYPE_TRIANGLE);
        const size_t pointBytes = facets.points.size() * sizeof facets.points[0];
        std::memcpy(rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                            sizeof facets.points[0], facets.points.size()),
                    facets.points.data(), pointBytes);
        rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, facets.triangles.data(), 0,
                                   sizeof facets.triangles[0], facets.triangles.size());
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(scene_, geometry);
        rtcReleaseGeometry(geometry);
        rtcCommitScene(scene_);
    }
    ~BareEmbree() {
        rtcReleaseScene(scene_);
        rtcReleaseDevice(device_);
    }
    BareEmbree(const BareEmbree&) = delete;
    BareEmbree& operator=(const BareEmbree&) = delete;

    void look() const {
        double sum = 0;
        scan([&](const Point& origin, const Point& direction) {
            const RTCRayHit found = trace(origin, direction);
            const RTCHit& hit = found.hit;
            if (hit.geomID == RTC_INVALID_GEOMETRY_ID) return;
            sum +=
                found.ray.tfar + hit.Ng_z / std::sqrt(hit.Ng_x * hit.Ng_x + hit.Ng_y * hit.Ng_y + hit.Ng_z * hit.Ng_z);
        });
        keep(sum);
    }

private:
    RTCRayHit trace(const Point& origin, const Point& direction) const {
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        RTCRayHit rayHit{};
        rayHit.ray.org_x = static_cast<float>(origin[0]);
        rayHit.ray.org_y = static_cast<float>(origin[1]);
        rayHit.ray.org_z = static_cast<float>(origin[2]);
        rayHit.ray.dir_x = static_cast<float>(direction[0]);
        rayHit.ray.dir_y = static_cast<float>(direction[1]);
        rayHit.ray.dir_z = static_cast<float>(direction[2]);
        rayHit.ray.tfar = std::numeric_limits<float>::infinity();
        rayHit.ray.mask = ~0U;
        rayHit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(scene_, &context, &rayHit);
        return rayHit;
    }

    RTCDevice device_ = rtcNewDevice("ignore_config_files=1,threads=1");
    RTCScene scene_ = rtcNewScene(device_);
};

bool traces(const char* title, const std::shared_ptr<const Facets>& facets) {
    auto model = std::make_shared<Model>();
    model->groups = {{Part{1, facets}}};
    model->instances = {{0, {}, 0}};
    const auto tracer = Zant::Preview::createEmbreeTracer();
    if (!tracer->build(model, 1, [] { return true; })) return false;
    const BareEmbree watertight(*facets, RTC_SCENE_FLAG_ROBUST), byDefault(*facets, RTC_SCENE_FLAG_NONE);

    Contest contest(title, columns * rows);
    contest.ours(
        "Tracer::trace",
        [&] {
            double sum = 0;
            scan([&](const Point& origin, const Point& direction) {
                const Hit hit = tracer->trace({origin, direction});
                if (hit) sum += hit.distance + hit.normal[2];
            });
            keep(sum);
        },
        1 / 0.7);
    contest.peer("bare Embree", [&] { watertight.look(); });
    contest.aside("bare Embree, not watertight", [&] { byDefault.look(); });
    return contest.run();
}

}  // namespace

int main() {
    const bool atGrid = traces("rays: a grid of 198702 triangles", grid());
    const bool atSphere = traces("rays: a sphere of 198702 triangles", sphere());
    return atGrid && atSphere ? 0 : 1;
}
