#ifndef ZANT_LANGUAGE_NUMBERS_H
#define ZANT_LANGUAGE_NUMBERS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Zant::Language {

/// Numbers of command text, read and written without a loss, whatever the locale of the host is.
///
/// A number is an optional "-", digits with or without a ".", and an optional exponent: "e", an optional "+", an
/// optional "-", digits. As in the client's own parser, either side of the "." and the digits of the exponent may be
/// missing. Nothing here allocates, but for reading one of these and what no double holds.
///
/// Threads: any.

/// Reads the number that begins at `text`.
/// @param text followed by a character that belongs to no number
/// @param number set to the nearest double, an infinity when the number is too large for any; left alone when there is
///        no number
/// @return after the number, or `text` when none begins there
const char* readAnyNumber(const char* text, double& number);

/// @param text followed by a character that belongs to no number
/// @return after the number that begins at `text`, or `text` when none does
const char* endOfNumber(const char* text);

/// @param number all of it is a number, as endOfNumber() has found
/// @return the nearest double; an infinity when the number is too large for any
double numberOf(std::string_view number);

/// @return whether a bare word is a number and so cannot be the name of a symbol. An automatic name such as "e5" can.
/// @param word followed by a character that belongs to no number
bool isNumberWord(std::string_view word);

constexpr size_t numberRoom = 32;  ///< bytes for the text of any number

/// Writes the shortest text that is read as the same double, "1e20" and not "1e+20", but whole numbers up to a million
/// digit by digit; without a terminator.
/// What is not finite has no text and is written as the client writes it: "0", or "-0" for the negative infinity.
/// @return after the text
char* writeNumber(char* out, double number);
/// The same as a string, for messages: what is not finite has its name there.
std::string numberText(double number);

/// Angles are radians in memory and degrees in text.
double radiansOf(double degrees);

/// Writes the shortest text of degrees that are read as these radians or, where there are none, as the nearest ones.
/// @param exact set to false in the second case, left alone otherwise
char* writeAngle(char* out, double radians, bool& exact);

}  // namespace Zant::Language

#endif
