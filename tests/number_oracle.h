#ifndef ZANT_TESTS_NUMBER_ORACLE_H
#define ZANT_TESTS_NUMBER_ORACLE_H

#include <cstddef>

/// The definition of number text, literally and slowly: digit by digit with pow, floor and log. Shares nothing with the
/// library.
namespace Oracle {

int predotCount(double a);
int digit(double a, int k);
void decimal(double x, char* out, size_t& room, int decimals, char fill);
void natural(double x, char* out, size_t& room, int maxDecimals, char fill);
void sci(double x, char* out, size_t& room, int decimals, int maxExp);

}  // namespace Oracle

#endif
