#ifndef ZANT_CLIENT_ENGINE_RAYTRACE_H
#define ZANT_CLIENT_ENGINE_RAYTRACE_H

#include <cstddef>
#include <cstdint>
#include <new>

#include "client/engine/tables.h"

namespace Zant {

/// One side of the ray memory: the engine's description of it, and the addresses of its blocks of ray records.
///
/// The engine writes everything but `blocks`. T is the engine's ray record, which the client does not look into.
template <class T>
class RaytraceBufferTemplate {
public:
    unsigned char engineBefore[24] = {};
    uint64_t counts[3] = {};
    unsigned char engineAfter[24] = {};
    T** blocks = nullptr;  ///< blockCount() addresses once allocated; the table is owned, the blocks are the engine's

    RaytraceBufferTemplate() = default;
    RaytraceBufferTemplate(const RaytraceBufferTemplate&) = delete;
    RaytraceBufferTemplate& operator=(const RaytraceBufferTemplate&) = delete;
    ~RaytraceBufferTemplate() { free(); }

    /// The product of the three counts; the largest number there is when the product is beyond it.
    size_t blockCount() const { return product(product(counts[0], counts[1]), counts[2]); }

    /// Replaces the table by a new one with an entry per block, not yet filled. The old one is freed first: when
    /// memory runs out (std::bad_alloc), there is none.
    void alloc() {
        free();
        blocks = new T*[blockCount()];
    }

    void free() {
        delete[] blocks;
        blocks = nullptr;
    }

private:
    static size_t product(size_t a, size_t b) { return b != 0 && a > SIZE_MAX / b ? SIZE_MAX : a * b; }
};

/// Rays to be cast, and what they met.
using RaytraceInputBuffer = RaytraceBufferTemplate<zl_ray_input>;
using RaytraceOutputBuffer = RaytraceBufferTemplate<zl_ray_output>;

static_assert(sizeof(RaytraceInputBuffer) == 80 && offsetof(RaytraceInputBuffer, counts) == 24 &&
                  offsetof(RaytraceInputBuffer, blocks) == 72 && sizeof(RaytraceOutputBuffer) == 80,
              "the engine writes the description of the ray memory");

/// Batches of rays in the engine's own memory: rays are written into the input blocks and results read from the
/// output blocks without copying. Starting the trace is the engine's matter.
///
/// Created by Instance::createRaytraceAccess(); delete it before its instance is released.
///
/// Threads: one at a time for each object.
class RaytraceAccess {
public:
    const RaytraceFunctionsVtable* rt;
    void* context;  ///< the engine's
    RaytraceInputBuffer input;
    RaytraceOutputBuffer output;

    /// Opens a ray context on an instance of the engine.
    RaytraceAccess(const RaytraceFunctionsVtable* table, ZantLibraryInstance* engineInstance);
    RaytraceAccess(const RaytraceAccess&) = delete;
    RaytraceAccess& operator=(const RaytraceAccess&) = delete;
    ~RaytraceAccess();

    /// Lets the engine lay out its ray memory for the requested dimensions (three counts whose meaning is the
    /// engine's) and takes the addresses of its blocks, valid until the next call or the end of this object.
    /// Throws std::bad_alloc; both sides are then without a table.
    /// @return false when the engine refuses the dimensions; tables and descriptions are then as before.
    bool allocBuffer(const size_t* dims);

private:
    void allocTables();
};
static_assert(offsetof(RaytraceAccess, context) == 8 && offsetof(RaytraceAccess, input) == 16 &&
                  offsetof(RaytraceAccess, output) == 96,
              "hosts of other builds hold it");

}  // namespace Zant

#endif
