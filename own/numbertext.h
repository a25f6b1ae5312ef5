#ifndef ZANT_OWN_NUMBERTEXT_H
#define ZANT_OWN_NUMBERTEXT_H

#include <cstddef>

#include "own/cxx17.h"

namespace Zant {

/// Bytes that the quick ways may write to, whatever the length of the text.
constexpr size_t quickNumberRoom = 32;

/// Writes exactly what double_2_sci() writes, terminator included, for the numbers and settings that have a quick way;
/// scribbles over the rest of the quickNumberRoom bytes at out.
/// @return the length of the text, or 0 when there is no quick way (then out has no meaning)
size_t quickNumberText(double x, char* out, int decimals, int maxExp);

/// The same for what int_2_modulo() writes in radix 10 without fill.
size_t quickNumberText(int v, char* out);

}  // namespace Zant

#endif
