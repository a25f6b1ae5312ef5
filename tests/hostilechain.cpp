// Compiled with the flags of a host that asks for speed before all else; see CMakeLists.txt.
#include "tests/sumchains.h"

#ifndef __FAST_MATH__
#error "to be compiled with -ffast-math, or the test shows nothing"
#endif

void hostileChain(int which, Zant::Vector& v, const Zant::Vector& a, const Zant::Vector& b) {
    chain(which, v, a, b);
}
