#ifndef ZANT_ENGINES_PREVIEW_EMBREETRACER_H
#define ZANT_ENGINES_PREVIEW_EMBREETRACER_H

#include <memory>

#include "engines/scene/tracer.h"

namespace Zant::Preview {

/// A tracer on Embree. It keeps Embree and its thread library mapped until the process ends.
///
/// What is hit: triangles, and quadrics from both sides, at distances above `nearest` and below `farthest`. Nothing is
/// hit of triangles with a NaN or infinite corner, of quadrics and instances whose placement flattens them or is not
/// finite, of instances of a group that does not exist, and beyond 1e18; rays that are not finite or have no direction
/// hit nothing.
///
/// Precision: which triangle is hit is decided with floats, relative to the origin or, when that is far away, to the
/// sphere around the scene; the distance is calculated in double precision. So a ray that begins on a hit, moved by a
/// millionth of the largest coordinate along `faceted` and leading away from the surface, does not hit it again.
///
/// Distances that are the same as floats are the same. Of such hits the one of the lowest instance is taken, then of
/// the lowest part, then of the lowest triangle.
std::unique_ptr<Engine::Tracer> createEmbreeTracer();

}  // namespace Zant::Preview

#endif
