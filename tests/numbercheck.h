#ifndef ZANT_TESTS_NUMBERCHECK_H
#define ZANT_TESTS_NUMBERCHECK_H

#include <string>
#include <string_view>

/// What holds for number text whatever the bytes; the tests and the fuzzer call the same functions. Each answers
/// nothing, or what did not hold.

/// Reads a text as each kind of number, from memory of exactly its size: nothing after the number is consumed, and
/// the value is that of a slow reading.
std::string checkReading(std::string_view text);

/// Writes a number with settings made from `choice` and compares with the definition, then reads the text back.
std::string checkWriting(double number, unsigned choice);

#endif
