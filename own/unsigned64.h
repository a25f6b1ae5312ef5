#ifndef ZANT_OWN_UNSIGNED64_H
#define ZANT_OWN_UNSIGNED64_H

#include <type_traits>

#include "own/cxx17.h"

namespace Zant {

/// The unsigned number of 64 bits that typed functions and vertex maps take: `unsigned long` where that has 64 bits, so
/// that the functions keep their symbols there, and the next longer type where it has 32. On every platform that has
/// been seen this is size_t as well.
using Unsigned64 = std::conditional_t<sizeof(unsigned long) == 8, unsigned long, unsigned long long>;

}  // namespace Zant

#endif
