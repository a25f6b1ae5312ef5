#include "engines/scene/rays.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engines/scene/plainfloats.h"

namespace Zant::Engine {
namespace {

constexpr size_t mostRays = (size_t{1} << 30) / (sizeof(zl_ray_input) + sizeof(zl_ray_output));

size_t blocksFor(size_t rays) {
    return rays / RayContext::raysPerBlock + (rays % RayContext::raysPerBlock != 0);
}

// False when the product of the counts is more than the limit.
bool multiply(const size_t* counts, size_t limit, size_t& result) {
    result = 1;
    for (int axis = 0; axis < 3; ++axis) {
        if (counts[axis] == 0) return result = 0, true;
    }
    for (int axis = 0; axis < 3; ++axis) {
        if (counts[axis] > limit / result) return false;
        result *= counts[axis];
    }
    return true;
}

zl_ray_output outputOf(const Hit& hit) {
    return {hit.distance, {hit.normal[0], hit.normal[1], hit.normal[2]}, hit ? 1 : 0, hit.object};
}

bool isRay(const zl_ray_input& ray) {
    double length = 0;
    for (int axis = 0; axis < 3; ++axis)
        length += ray.direction[axis] * ray.direction[axis] + 0 * ray.origin[axis];
    return length > 0 && std::isfinite(length);
}

zl_ray_output answer(const zl_ray_input& ray, const Tracer& tracer) {
    if (!isRay(ray)) return outputOf({});
    Ray cast;
    std::copy_n(ray.origin, 3, cast.origin.begin());
    std::copy_n(ray.direction, 3, cast.direction.begin());
    return outputOf(tracer.trace(cast));
}

}  // namespace

bool RayContext::setup(const size_t* dims) {
    const size_t counts[3] = {blocksFor(dims[0]), dims[1], dims[2]};
    size_t blocks = 0;
    if (!multiply(counts, mostRays / raysPerBlock, blocks)) return false;
    std::vector<zl_ray_input> input(blocks * raysPerBlock);
    std::vector<zl_ray_output> output(blocks * raysPerBlock, outputOf({}));
    input_.swap(input);
    output_.swap(output);
    std::copy_n(counts, 3, counts_);
    std::copy_n(dims, 3, rays_);
    return true;
}

void RayContext::describe(void* description) const {
    static_assert(sizeof(RayBufferDescription) == rayDescriptionSize);
    *static_cast<RayBufferDescription*>(description) = {sizeof(zl_ray_input),
                                                        sizeof(zl_ray_output),
                                                        raysPerBlock,
                                                        {counts_[0], counts_[1], counts_[2]},
                                                        {rays_[0], rays_[1], rays_[2]}};
}

void* RayContext::block(size_t index, int side) {
    if (index >= input_.size() / raysPerBlock) return nullptr;
    if (side == 0) return &input_[index * raysPerBlock];
    return side == 1 ? &output_[index * raysPerBlock] : nullptr;
}

void RayContext::cast(const Tracer& tracer, Job& job, int threads) {
    struct Work {
        RayContext& rays;
        const Tracer& tracer;
    } work{*this, tracer};
    const size_t dims[3] = {input_.size() / raysPerBlock, 1, 1};
    if (dims[0] == 0) return;
    const JobCallback castBlock = [](const size_t* index, int, void* context) {
        const PlainFloats plain;
        const Work& all = *static_cast<Work*>(context);
        for (size_t ray = index[0] * raysPerBlock; ray < (index[0] + 1) * raysPerBlock; ++ray)
            all.rays.output_[ray] = answer(all.rays.input_[ray], all.tracer);
    };
    job.run(dims, threads, castBlock, &work);
}

void RayContexts::add(const std::shared_ptr<RayContext>& rays) {
    const std::lock_guard lock(mutex_);
    const auto isGone = [](const std::weak_ptr<RayContext>& one) { return one.expired(); };
    contexts_.erase(std::remove_if(contexts_.begin(), contexts_.end(), isGone), contexts_.end());
    contexts_.push_back(rays);
}

std::vector<std::shared_ptr<RayContext>> RayContexts::all() {
    const std::lock_guard lock(mutex_);
    std::vector<std::shared_ptr<RayContext>> found;
    for (const std::weak_ptr<RayContext>& one : contexts_) {
        if (auto rays = one.lock()) found.push_back(std::move(rays));
    }
    return found;
}

}  // namespace Zant::Engine
