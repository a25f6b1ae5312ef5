#ifndef ZANT_OWN_CXX17_H
#define ZANT_OWN_CXX17_H

// Included by every C++ header that includes no other C++ header of ours, so that an old language standard is named
// before anything else goes wrong.
#if defined(_MSVC_LANG) ? _MSVC_LANG < 201703L : __cplusplus < 201703L
#error "Zant's C++ headers need C++17 or newer (-std=c++17); its C interface, client/capi/zant_c.h, needs C++11 or C99"
#endif

#include "own/compiler.h"
#include "own/version.h"

#endif
