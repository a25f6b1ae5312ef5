// A module with the preview engine's tracer in it, to be loaded and unloaded.

#include <cmath>

#include "engines/preview/embreetracer.h"

using namespace Zant::Engine;

/// Builds a scene of about 20000 triangles and a ball with two threads, and looks at it.
/// @return how many of 400 rays hit something
extern "C" __attribute__((visibility("default"))) int buildAndTrace() {
    constexpr uint32_t side = 100;
    auto facets = std::make_shared<Facets>();
    for (uint32_t y = 0; y <= side; ++y)
        for (uint32_t x = 0; x <= side; ++x)
            facets->points.push_back({static_cast<float>(x), static_cast<float>(y), 0});
    for (uint32_t y = 0; y < side; ++y) {
        for (uint32_t x = 0; x < side; ++x) {
            const uint32_t corner = y * (side + 1) + x;
            facets->triangles.push_back({corner, corner + 1, corner + side + 1});
            facets->triangles.push_back({corner + 1, corner + side + 2, corner + side + 1});
        }
    }
    auto model = std::make_shared<Model>();
    model->groups = {{Part{1, facets}, Part{2, Quadric{}}}};
    model->instances = {{0, {}, 0}};
    const auto tracer = Zant::Preview::createEmbreeTracer();
    if (!tracer->build(model, 2, [] { return true; })) return -1;
    int hits = 0;
    for (int ray = 0; ray < 400; ++ray)
        hits += static_cast<bool>(tracer->trace({{ray % 20 * 4.9 + 0.5, ray / 20 * 4.9 + 0.5, 10}, {0, 0, -1}}));
    return hits;
}
