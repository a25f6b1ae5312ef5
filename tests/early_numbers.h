#ifndef ZANT_TESTS_EARLY_NUMBERS_H
#define ZANT_TESTS_EARLY_NUMBERS_H

/// What a static constructor that runs before those of all other files wrote for -12.25 and 1.5e10.
extern const char* const earlyText;

#endif
