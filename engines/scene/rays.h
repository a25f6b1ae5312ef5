#ifndef ZANT_ENGINES_SCENE_RAYS_H
#define ZANT_ENGINES_SCENE_RAYS_H

#include <cstddef>

#include "client/engine/raytrace.h"

namespace Zant::Engine {

/// Bytes of the description that the engine writes for each side of the ray memory; what follows is the client's.
constexpr size_t rayDescriptionSize = offsetof(RaytraceInputBuffer, blocks);

/// The ray memory of one context: blocks of rays for the input and for the output side. Each engine has its own records
/// and layout. Used by one thread at a time.
class RayContext {
public:
    virtual ~RayContext() = default;

    /// Lays the memory out for the dimensions asked for. The blocks of an earlier layout are gone then.
    /// @return false when they are refused; the earlier layout stays.
    virtual bool setup(const size_t* dims) = 0;
    /// Writes the description of either side, which are laid out alike: rayDescriptionSize bytes.
    virtual void describe(void* description) const = 0;
    /// A block of one side, 0 for the input and 1 for the output; null for one that does not exist.
    virtual void* block(size_t index, int side) = 0;
};

}  // namespace Zant::Engine

#endif
