#ifndef ZANT_TESTS_REFERENCETRACER_H
#define ZANT_TESTS_REFERENCETRACER_H

#include "engines/scene/tracer.h"

namespace Zant::Tests {

/// What a ray hits, by asking every surface of the model in double precision. It knows the model's records and shares
/// no code with any engine.
Engine::Hit traceSlowly(const Engine::Model& model, const Engine::Ray& ray);

}  // namespace Zant::Tests

#endif
