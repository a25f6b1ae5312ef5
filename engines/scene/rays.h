#ifndef ZANT_ENGINES_SCENE_RAYS_H
#define ZANT_ENGINES_SCENE_RAYS_H

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

#include "client/engine/raytrace.h"
#include "engines/records/rayrecords.h"
#include "engines/scene/jobs.h"
#include "engines/scene/tracer.h"

namespace Zant::Engine {

/// Bytes of the description that the engine writes for each side of the ray memory; what follows is the client's.
constexpr size_t rayDescriptionSize = offsetof(RaytraceInputBuffer, blocks);

/// The ray memory of one context: blocks of equal size for the input and for the output side. The dimensions are rays
/// along three directions; a 0 among them means no rays at all. Used by one thread at a time.
class RayContext {
public:
    static constexpr size_t raysPerBlock = 64;

    /// Lays the memory out for the dimensions asked for. The blocks of an earlier layout are gone then.
    /// @return false when they overflow or need more than a gigabyte; the earlier layout stays.
    bool setup(const size_t* dims);
    /// Writes the description of either side, which are laid out alike: rayDescriptionSize bytes.
    void describe(void* description) const;
    /// A block of one side, 0 for the input and 1 for the output; null for one that does not exist.
    void* block(size_t index, int side);

    /// Answers every ray that was asked for.
    /// @param threads how many may work
    void cast(const Tracer& tracer, Job& job, int threads);

private:
    size_t counts_[3] = {0, 0, 0};
    size_t rays_[3] = {0, 0, 0};
    std::vector<zl_ray_input> input_;
    std::vector<zl_ray_output> output_;
};

/// The ray memory of one instance, for as long as its contexts are there. Any thread may call any operation: contexts
/// are made while another thread is inside the parser.
class RayContexts {
public:
    void add(const std::shared_ptr<RayContext>& rays);
    std::vector<std::shared_ptr<RayContext>> all();

private:
    std::mutex mutex_;
    std::vector<std::weak_ptr<RayContext>> contexts_;
};

}  // namespace Zant::Engine

#endif
