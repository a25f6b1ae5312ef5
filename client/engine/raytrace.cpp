#include "client/engine/raytrace.h"

#include "client/engine/instance.h"

namespace Zant {

RaytraceAccess* Instance::createRaytraceAccess() const {
    return new RaytraceAccess(library->vtables.raytrace, engineInstance);
}

RaytraceAccess::RaytraceAccess(const RaytraceFunctionsVtable* table, ZantLibraryInstance* engineInstance)
    : rt(table), context(table->createContext(engineInstance)) {}

RaytraceAccess::~RaytraceAccess() {
    rt->destroyContext(context);
}

void RaytraceAccess::allocTables() {
    try {
        input.alloc();
        output.alloc();
    } catch (...) {
        // Neither table may stay: the engine's memory has changed under the one, the other is not filled.
        input.free();
        output.free();
        throw;
    }
}

bool RaytraceAccess::allocBuffer(const size_t* dims) {
    if (!rt->setupBuffers(context, dims)) return false;
    rt->describeBuffer(context, &input);
    rt->describeBuffer(context, &output);
    allocTables();
    // The input side says how many blocks there are. An engine that describes fewer output blocks is not asked for
    // more than those; where it describes more, the rest stays null.
    const size_t blocks = input.blockCount();
    const size_t outputs = output.blockCount();
    for (size_t i = 0; i < blocks; ++i) {
        input.blocks[i] = static_cast<zl_ray_input*>(rt->getBlock(context, i, 0));
        if (i < outputs) output.blocks[i] = static_cast<zl_ray_output*>(rt->getBlock(context, i, 1));
    }
    for (size_t i = blocks; i < outputs; ++i)
        output.blocks[i] = nullptr;
    return true;
}

}  // namespace Zant
