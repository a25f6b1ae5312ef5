#ifndef ZANT_OWN_NUMBERTEXT_H
#define ZANT_OWN_NUMBERTEXT_H

#include <cstddef>

#include "own/cxx17.h"

/// The text of a number, written in place. Internal: hosts have TextBuffer, and the formatters in own/str2num.h.
namespace Zant {

/// How a number reads.
struct NumberStyle {
    int decimals;       ///< at most so many
    int exponentLimit;  ///< beyond this decimal exponent, either way, it is written as mantissa and exponent
    size_t room;        ///< bytes, the terminator included; at least 1. What does not fit is cut
};

/// A sign, seventeen characters and "e-308".
constexpr NumberStyle doubleStyle = {8, 5, 23};
constexpr NumberStyle floatStyle = {5, 4, 14};

/// Bytes that a number may scribble over, whatever the length of its text.
constexpr size_t numberTextRoom = 32;

/// The fast path: the same text, for the numbers and settings that it takes. Scribbles.
/// @return the place of the terminator, or null when it does not take the number (then out has no meaning)
char* fastNumberText(double v, char* out, int decimals, int exponentLimit);

/// The general way, in the defined order of operations. Leaves what is after the terminator.
/// @return the place of the terminator
char* generalNumberText(double v, char* out, const NumberStyle& style);

/// Writes v, terminated. Scribbles.
/// @return the place of the terminator
inline char* writeNumberText(double v, char* out, const NumberStyle& style) {
    char* const end = fastNumberText(v, out, style.decimals, style.exponentLimit);
    return end ? end : generalNumberText(v, out, style);
}

/// The same in doubleStyle, which most numbers have.
char* writeNumberText(double v, char* out);

char* writeNumberText(int v, char* out);

}  // namespace Zant

#endif
