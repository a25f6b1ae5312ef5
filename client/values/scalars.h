#ifndef ZANT_CLIENT_VALUES_SCALARS_H
#define ZANT_CLIENT_VALUES_SCALARS_H

#include "own/cxx17.h"

namespace Zant {

/// One number: the item of number lists and the value of number symbols.
///
/// Threads: plain records; several threads may read one, or one thread at a time changes it.
struct Double {
    double value = 0.0;

    constexpr Double() = default;
    constexpr Double(double number) : value(number) {}
};
static_assert(sizeof(Double) == 8, "the stride of numbers in lists");

/// One text, not owned: the value of string symbols. Null for none.
struct String {
    const char* value = nullptr;

    constexpr String() = default;
    constexpr String(const char* text) : value(text) {}
};
static_assert(sizeof(String) == 8, "one pointer");

}  // namespace Zant

#endif
