#ifndef ZANT_ENGINES_LOOPBACK_RAYS_H
#define ZANT_ENGINES_LOOPBACK_RAYS_H

#include <cstddef>
#include <vector>

#include "engines/loopback/rayrecords.h"
#include "engines/scene/rays.h"

namespace Zant::Loopback {

/// Ray memory in blocks of equal size. The dimensions are rays along three directions; a 0 among them means no rays at
/// all. Dimensions that overflow or need more than a gigabyte are refused.
class RayBlocks : public Engine::RayContext {
public:
    static constexpr size_t raysPerBlock = 64;

    bool setup(const size_t* dims) override;
    void describe(void* description) const override;
    void* block(size_t index, int side) override;

private:
    size_t counts_[3] = {0, 0, 0};
    size_t rays_[3] = {0, 0, 0};
    std::vector<zl_ray_input> input_;
    std::vector<zl_ray_output> output_;
};

}  // namespace Zant::Loopback

#endif
