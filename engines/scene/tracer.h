#ifndef ZANT_ENGINES_SCENE_TRACER_H
#define ZANT_ENGINES_SCENE_TRACER_H

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>

#include "engines/scene/model.h"

namespace Zant::Engine {

struct Ray {
    Point origin = {0, 0, 0};
    Point direction = {0, 0, 1};  ///< of any length; distances are multiples of it
    double nearest = 0;
    double farthest = std::numeric_limits<double>::infinity();
};

struct Hit {
    double distance = std::numeric_limits<double>::infinity();
    Point normal = {0, 0, 0};   ///< of length 1, of the surface as the eye sees it, smooth where the mesh says so
    Point faceted = {0, 0, 0};  ///< the same of the triangle itself
    uint32_t object = 0;
    Colour colour = {0, 0, 0};

    explicit operator bool() const { return object != 0; }
};

/// Finds what rays hit. This is all that an engine with a picture has and one without it has not.
///
/// Threads: one builds; afterwards any number of threads ask at the same time. Those that ask hold PlainFloats.
class Tracer {
public:
    virtual ~Tracer() = default;

    /// Makes ready for a model, which it keeps. Calls goOn() from one thread or another while it works, and stops when
    /// that answers false.
    /// @param threads how many may work
    /// @return whether it is ready
    virtual bool build(std::shared_ptr<const Model> model, int threads, const std::function<bool()>& goOn) = 0;

    /// The nearest hit. Among hits at the same distance it is always the same one, whatever the threads.
    virtual Hit trace(const Ray& ray) const = 0;
    /// Whether there is any.
    virtual bool isBlocked(const Ray& ray) const = 0;
};

}  // namespace Zant::Engine

#endif
