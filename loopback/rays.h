#ifndef ZANT_LOOPBACK_RAYS_H
#define ZANT_LOOPBACK_RAYS_H

#include <cstddef>
#include <vector>

#include "loopback/rayrecords.h"

namespace Zant::Loopback {

/// The ray memory of one context: blocks of rays for the input and for the output side.
/// Used by one thread at a time.
class RayContext {
public:
    static constexpr size_t raysPerBlock = 64;

    /// Lays the memory out for that many rays along three directions; a 0 among them means no rays at all.
    /// The blocks of an earlier layout are gone then.
    /// @return false when the dimensions overflow or need more than a gigabyte; the earlier layout stays.
    bool setup(const size_t* dims);
    /// Describes both sides, which are laid out alike.
    RayBufferDescription describe() const;
    /// A block of one side, 0 for the input and 1 for the output; null for one that does not exist.
    void* block(size_t index, int side);

private:
    size_t counts_[3] = {0, 0, 0};
    size_t rays_[3] = {0, 0, 0};
    std::vector<zl_ray_input> input_;
    std::vector<zl_ray_output> output_;
};

}  // namespace Zant::Loopback

#endif
