#ifndef ZANT_ENGINES_RECORDS_RAYRECORDS_H
#define ZANT_ENGINES_RECORDS_RAYRECORDS_H

#include <cstdint>

#include "client/records/zant_records.h"
#include "own/cxx17.h"

/// The ray records of the loopback and the preview engine. A host that knows that it has one of them writes rays and
/// reads what they hit; another engine lays its records out in its own way.
///
/// The command `rayCast init` starts it: the preview then answers the rays of every ray access that is open on the
/// instance, against the scene as it is. The loopback engine answers none.

/// A ray to be cast.
struct zl_ray_input {
    double origin[3];
    double direction[3];  ///< of any length
};

/// What it met.
struct zl_ray_output {
    double distance;   ///< from the origin, in lengths of the direction; infinite without a hit
    double normal[3];  ///< of length 1, towards the origin; 0 without a hit
    int32_t hit;       ///< 1 for a hit
    uint32_t object;   ///< its number, from 1 in the order in which objects were added; 0 without a hit
};

namespace Zant::Engine {

/// What our engines write into the description of a side of the ray memory. The dimensions asked for are rays
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

}  // namespace Zant::Engine

#endif
