#ifndef ZANT_TESTS_DECIMALREFERENCE_H
#define ZANT_TESTS_DECIMALREFERENCE_H

/// The numbers that own/decimaltables.inl holds, from this platform's `pow` and `log`, in the current rounding mode.
namespace DecimalReference {

double power(int k);

/// The smallest number a with log(a) / 2.302585092994046 >= k; infinite when there is none.
double reach(int k);

/// The smaller of reach(count) and the smallest number a with a * power(-count) >= 1; 0 for no digits.
double moreDigits(int count);

}  // namespace DecimalReference

#endif
