#include "engines/loopback/rays.h"

#include <algorithm>
#include <limits>

namespace Zant::Loopback {
namespace {

constexpr size_t mostRays = (size_t{1} << 30) / (sizeof(zl_ray_input) + sizeof(zl_ray_output));

size_t blocksFor(size_t rays) {
    return rays / RayBlocks::raysPerBlock + (rays % RayBlocks::raysPerBlock != 0);
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

}  // namespace

bool RayBlocks::setup(const size_t* dims) {
    const size_t counts[3] = {blocksFor(dims[0]), dims[1], dims[2]};
    size_t blocks = 0;
    if (!multiply(counts, mostRays / raysPerBlock, blocks)) return false;
    std::vector<zl_ray_input> input(blocks * raysPerBlock);
    std::vector<zl_ray_output> output(blocks * raysPerBlock, {std::numeric_limits<double>::infinity(), 0, 0});
    input_.swap(input);
    output_.swap(output);
    std::copy_n(counts, 3, counts_);
    std::copy_n(dims, 3, rays_);
    return true;
}

void RayBlocks::describe(void* description) const {
    static_assert(sizeof(RayBufferDescription) == Engine::rayDescriptionSize);
    *static_cast<RayBufferDescription*>(description) = {sizeof(zl_ray_input),
                                                        sizeof(zl_ray_output),
                                                        raysPerBlock,
                                                        {counts_[0], counts_[1], counts_[2]},
                                                        {rays_[0], rays_[1], rays_[2]}};
}

void* RayBlocks::block(size_t index, int side) {
    if (index >= input_.size() / raysPerBlock) return nullptr;
    if (side == 0) return &input_[index * raysPerBlock];
    return side == 1 ? &output_[index * raysPerBlock] : nullptr;
}

}  // namespace Zant::Loopback
