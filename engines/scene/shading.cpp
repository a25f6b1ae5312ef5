#include "engines/scene/shading.h"

#include <algorithm>
#include <cmath>

#include "engines/scene/plainfloats.h"
#include "engines/scene/points.h"

namespace Zant::Engine {
namespace {

using namespace Points;

void add(Colour& sum, const Colour& colour, double factor) {
    for (size_t k = 0; k < 3; ++k)
        sum[k] += colour[k] * static_cast<float>(factor);
}

/// Where light falls on: a little outside of the surface, so that it does not shade itself.
struct Place {
    Point point;
    const Hit& hit;
    Point toEye;

    Place(const Ray& ray, const Hit& itsHit) : hit(itsHit), toEye(ray.direction * -1) {
        const Point met = ray.origin + ray.direction * hit.distance;
        point = met + hit.faceted * (std::max(hit.distance, size(met)) * clearance);
    }

    static constexpr double clearance = 1e-4;
};

/// How much of a light goes in a direction: 1 inside of a spot's cone, less towards its edge.
double portion(const Light& light, const Point& toLight) {
    if (light.kind != Light::Kind::Spot) return 1;
    const double angle = std::acos(std::clamp(-dot(unit(light.direction), toLight), -1.0, 1.0));
    if (angle >= light.angle) return 0;
    return light.softness > 0 ? std::min((light.angle - angle) / light.softness, 1.0) : 1;
}

void addLight(const Light& light, const Tracer& tracer, const Place& place, Colour& sum) {
    if (light.kind == Light::Kind::Ambient) return add(sum, light.colour, 1);
    const bool isFar = light.kind == Light::Kind::Directional;
    const Point way = isFar ? light.direction * -1 : light.position - place.point;
    const Point toLight = unit(way);
    const double facing = dot(toLight, place.hit.normal);
    if (!(facing > 0) || !(dot(toLight, place.hit.faceted) > 0)) return;
    const double share = facing * portion(light, toLight);
    if (share == 0) return;
    Ray ray{place.point, toLight};
    if (!isFar) ray.farthest = length(way);
    if (!light.castsShadow || !tracer.isBlocked(ray)) add(sum, light.colour, share);
}

Colour lit(const Model& model, const Tracer& tracer, const Place& place) {
    Colour light = {0, 0, 0};
    for (const Light& one : model.lights)
        addLight(one, tracer, place, light);
    if (model.lights.empty()) add(light, {1, 1, 1}, std::fabs(dot(place.toEye, place.hit.normal)));
    for (size_t k = 0; k < 3; ++k)
        light[k] *= place.hit.colour[k];
    return light;
}

/// The samples of a pixel fill it evenly, whatever their number; the first is in its middle.
Point sampleOf(int number) {
    constexpr double steps[2] = {0.7548776662466927, 0.5698402909980532};
    const auto place = [number](double step) {
        const double sum = 0.5 + number * step;
        return sum - std::floor(sum);
    };
    return {place(steps[0]), place(steps[1]), 0};
}

class PixelMaker {
public:
    PixelMaker(const Model& model, const Tracer& tracer) : model_(model), tracer_(tracer) {}

    void make(int x, int y, Picture& picture) {
        const size_t place = picture.place(x, y);
        colour_ = {0, 0, 0};
        hits_ = 0;
        for (int number = 0; number < model_.samples; ++number) {
            const Point sample = sampleOf(number);
            const Ray ray = cameraRay(model_, x + sample[0], y + sample[1]);
            const Hit hit = tracer_.trace(ray);
            if (number == 0) {
                picture.depths[place] = static_cast<float>(hit.distance);
                picture.objects[place] = hit.object;
            }
            add(ray, hit);
        }
        picture.pixels[place] = finished();
    }

private:
    void add(const Ray& ray, const Hit& hit) {
        if (hit) {
            ++hits_;
            Engine::add(colour_, lit(model_, tracer_, Place(ray, hit)), 1);
        } else if (model_.hasBackground) {
            Engine::add(colour_, model_.background, 1);
        }
    }

    Picture::Pixel finished() const {
        const int counted = model_.hasBackground ? model_.samples : hits_;
        if (counted == 0) return {};
        const float part = 1.0F / static_cast<float>(counted);
        const float alpha = static_cast<float>(counted) / static_cast<float>(model_.samples);
        return {colour_[0] * part, colour_[1] * part, colour_[2] * part, alpha};
    }

    const Model& model_;
    const Tracer& tracer_;
    Colour colour_{};
    int hits_ = 0;
};

}  // namespace

Ray cameraRay(const Model& model, double x, double y) {
    const Camera& camera = model.camera;
    const double right = (x / model.width - 0.5) * camera.width + camera.shift[0];
    const double up = (0.5 - y / model.height) * camera.height + camera.shift[1];
    const auto& axes = camera.placement.axes;
    const Point aside = axes[0] * right + axes[1] * up;
    const Point& eye = camera.placement.origin;
    if (camera.kind == Camera::Kind::Parallel) return {eye + aside, unit(axes[2])};
    return {eye, unit(aside + axes[2])};
}

void shade(const Model& model, const Tracer& tracer, const Tile& tile, Picture& picture) {
    const PlainFloats plain;
    PixelMaker maker(model, tracer);
    for (int y = tile.top; y < tile.bottom; ++y) {
        for (int x = tile.left; x < tile.right; ++x)
            maker.make(x, y, picture);
    }
}

}  // namespace Zant::Engine
