#ifndef ZANT_OWN_BITS_H
#define ZANT_OWN_BITS_H

#include <cstdint>

#include "own/cxx17.h"

namespace Zant {

/// The place of the highest bit that is set, 0 to 63, of a word that is not zero.
inline int highestBit(uint64_t word) {
#ifdef ZANT_GNU_CODE
    return 63 - __builtin_clzll(word);
#else
    int bit = 0;
    for (int step = 32; step != 0; step /= 2) {
        if (word >> step == 0) continue;
        word >>= step;
        bit += step;
    }
    return bit;
#endif
}

/// The place of the lowest bit that is set, of a word that is not zero.
inline int lowestBit(uint64_t word) {
#ifdef ZANT_GNU_CODE
    return __builtin_ctzll(word);
#else
    return highestBit(word & (0 - word));
#endif
}

}  // namespace Zant

#endif
