#ifndef ZANT_OWN_STR2NUM_H
#define ZANT_OWN_STR2NUM_H

#include <cstddef>

#include "own/cxx17.h"

/// The text of numbers as the command language carries it, the way back from text to numbers, and the string and
/// memory helpers under both. Nothing here allocates, takes a lock, depends on the locale, or needs its own statics to
/// be initialised first: every operation may be called from the static constructor of another module.
///
/// Conventions of all formatters
/// - `room` is, on entry, the number of bytes that are free at the output pointer, terminator included; on return, the
///   number of bytes that are still free after the terminator.
/// - When the room runs out, the leading characters stay, the text is cut and still terminated. With room 0 nothing
///   at all is written. Bytes after the terminator stay untouched.
/// - A fill character of 0 means no fill. With a fill, the number ends at the end of the room; the sign follows the
/// fill.
/// - Radix 2 to 36, digits above 9 in upper case.
/// - Every double has a text: NaN and infinity read "0" (negative infinity "-0").
namespace Zant {

// ---- Number to text -------------------------------------------------------------------------------------------------

/// Writes the fill characters and the sign in front of a number of `width` characters, and advances `out`.
/// `room` no longer counts the terminator here.
/// @param minus 1 for a minus sign, 0 for none
void fill_and_minus(char*& out, size_t& room, size_t width, char fill, char minus);

/// Writes v in the radix, after its fill and sign.
void size_t_2_modulo(size_t v, char* out, size_t& room, char fill, int radix, char minus);

/// Writes v in the radix, with a minus sign when it is negative.
void int_2_modulo(int v, char* out, size_t& room, char fill, int radix);

/// The number of digits before the decimal point of a, which is not negative; at least 1.
int double_predot_count(double a);

/// The decimal digit of x with the weight 10^(p - 1): p = 1 is the units digit, p = 0 the first decimal.
/// x is not negative.
int _ddigit(double x, int p);

/// Writes x with exactly `decimals` digits after the point (no point for 0): cut, not rounded.
void double_2_decimal(double x, char* out, size_t& room, int decimals, char fill);

/// As double_2_decimal(), but with less than two bytes of room only the terminator.
void double_2_sdecimal(double x, char* out, size_t& room, int decimals, char fill);

/// Writes x with at most `maxDecimals` decimals and no trailing zeros. The last decimal is cut; the number is rounded
/// only where rounding makes the text shorter: with two decimals 0.129 reads "0.12", and 0.995 reads "1".
/// With less than two bytes of room only the terminator.
void double_2_natural(double x, char* out, size_t& room, int maxDecimals, char fill);

/// Writes x in natural form, or as mantissa and exponent ("1.5e10", "9.99e-6") when its decimal exponent exceeds
/// `maxExp` in magnitude. With less than two bytes left after the mantissa the exponent is left out.
/// The exponent is taken before rounding and from a logarithm, so that a mantissa may read "10" (1e15 gives "10e14").
void double_2_sci(double x, char* out, size_t& room, int decimals, int maxExp);

// ---- Text to number -------------------------------------------------------------------------------------------------
// Each leaves p on the first character that it did not consume. White space and a leading plus end a number.

/// Reads digits of the radix, either case; wraps modulo 2^64. Without a digit 0, and p stays.
size_t modulo_2_size_t(const char*& p, int radix);

/// Reads an optional minus sign (consumed even when no digit follows) and digits; the result wraps modulo 2^32.
int modulo_2_int(const char*& p, int radix);

/// Reads digits, an optional fraction and an optional exponent ("12.5e2", "5.", ".5", "e5" which is 0).
double udecimal_2_double(const char*& p);

/// Reads an optional minus sign, then as udecimal_2_double(); "-0" gives -0.0.
double sdecimal_2_double(const char*& p);

// ---- Numbers at the end of a terminated string ----------------------------------------------------------------------

/// Appends the address in radix 16, without prefix; needs up to 30 bytes.
void s2n_numcat(void* p, char* s);
/// Appends v in decimal; needs up to 30 bytes.
void s2n_numcat(int v, char* s);
/// Appends v with exactly `decimals` decimals; `room` counts from the end of s, the terminator included.
void s2n_numcat(double v, char* s, size_t room, int decimals);
/// Appends v with exactly 5 decimals within 12 bytes.
void s2n_numcat(float v, char* s);
/// Appends v padded with zeros to `width` digits; of a longer number the first `width` digits.
void s2n_numcat(unsigned int v, char* s, int width);
/// Writes prefix, n in decimal and suffix to out; prefix and suffix may be null.
void s2n_numsrd(const char* prefix, int n, const char* suffix, char* out);

// ---- Strings --------------------------------------------------------------------------------------------------------

size_t s2n_strlen(const char* s);
char* s2n_strcpy(char* d, const char* s);
char* s2n_strcat(char* d, const char* s);
/// Copies up to and including the terminator, at most n characters; never pads, and does not terminate when s has n or
/// more characters.
char* s2n_strncpy(char* d, const char* s, size_t n);
/// Compare as signed bytes, the terminator as 0: bytes above 0x7F come before the end of a string, and that before
/// ASCII.
/// @return exactly -1, 0 or 1
int s2n_strcmp(const char* a, const char* b);
int s2n_strncmp(const char* a, const char* b, size_t n);
/// The first place of the needle, or null; an empty needle is found at the start.
const char* s2n_strstr(const char* s, const char* needle);
char* s2n_strstr(char* s, const char* needle);

// ---- Memory ---------------------------------------------------------------------------------------------------------

/// @return the difference of the first unequal bytes, taken as unsigned, or 0
int s2n_memcmp(const void* a, const void* b, size_t n);
void s2n_memset(void* d, unsigned char c, size_t n);
/// Copies n bytes; the areas do not overlap. Pointers are not looked at when n is 0.
void s2n_memcpy(void* d, const void* s, size_t n);
/// The `a` forms move whole words of 8 bytes only: the last n mod 8 bytes stay as they are. d is aligned to 8.
void s2n_amemset(void* d, unsigned char c, size_t n);
void s2n_amemcpy(void* d, const void* s, size_t n);

}  // namespace Zant

#endif
