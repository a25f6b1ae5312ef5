#ifndef ZANT_OWN_ALLOCATOR_H
#define ZANT_OWN_ALLOCATOR_H

#include "own/cxx17.h"

namespace Zant {

/// The empty bases under the polymorphic classes of the client: no data, no virtual operations.
class MemoryAllocator {};
class Allocator : public MemoryAllocator {};
class Object : public Allocator {};

}  // namespace Zant

#endif
