#ifndef ZANT_ENGINES_LOOPBACK_RAYRECORDS_H
#define ZANT_ENGINES_LOOPBACK_RAYRECORDS_H

#include <cstdint>

#include "client/records/zant_records.h"
#include "own/cxx17.h"

/// The ray records of the loopback engine. A host that has them can write rays and read hits; another engine lays its
/// records out in its own way.

/// A ray to be cast.
struct zl_ray_input {
    double origin[3];
    double direction[3];
};

/// What it met. The loopback engine traces nothing: until a host writes here, no ray hits anything.
struct zl_ray_output {
    double distance;  ///< from the origin, infinite without a hit
    int32_t hit;      ///< 1 for a hit
    int32_t reserved;
};

namespace Zant::Loopback {

/// What the loopback engine writes into the description of a side of the ray memory. The dimensions asked for are rays
/// along three directions; a block holds a run of rays along the first one, the last block of a run is filled up.
/// The block table after the description is the client's.
struct RayBufferDescription {
    uint64_t inputSize;     ///< bytes of one zl_ray_input
    uint64_t outputSize;    ///< bytes of one zl_ray_output
    uint64_t raysPerBlock;  ///< the same for both sides
    uint64_t counts[3];     ///< blocks along the three directions
    uint64_t rays[3];       ///< rays along the three directions, as asked for
};
static_assert(sizeof(RayBufferDescription) == 72, "the block table is the client's");

}  // namespace Zant::Loopback

#endif
