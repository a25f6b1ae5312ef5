// Sums and differences for inline functions, which no compiler flag of a host can change.
//
// Left to the host's optimiser, fast mathematics would join them with the host's own sums, or take inf - inf for 0, and
// contraction would fuse the host's products into them. So operands and results pass through an empty assembler
// statement: the optimiser knows nothing of what comes out of it, and no instruction is added.
//
// ZANT_EXACT_SUMS is defined where that works: gcc and clang, with registers that hold doubles and nothing wider.
// Elsewhere, and where plain code is asked for, the operations are called out of line.
//
// Threads: functions of their arguments alone; any thread may call them.
#ifndef ZANT_CLIENT_VALUES_EXACTSUMS_H
#define ZANT_CLIENT_VALUES_EXACTSUMS_H

#include "own/cxx17.h"

// Where SSE2 is, gcc may still be told to calculate in wider registers; clang may not, and may give -1 all the same.
#if defined(ZANT_GNU_CODE) && (defined(__clang__) || __FLT_EVAL_METHOD__ == 0)
#if defined(__SSE2_MATH__)
#define ZANT_EXACT_SUMS "+x"
#elif defined(__aarch64__)
#define ZANT_EXACT_SUMS "+w"
#endif
#endif

#ifdef ZANT_EXACT_SUMS
namespace Zant {
namespace ExactSums {

using Pair = double __attribute__((vector_size(16)));

inline Pair pairAt(const double* from) {
    Pair pair;
    __builtin_memcpy(&pair, from, sizeof pair);
    return pair;
}

/// Both in one statement: two equal statements would be taken for one, and their difference for 0.
template <class Value>
inline void hide(Value& a, Value& b) {
    asm("" : ZANT_EXACT_SUMS(a), ZANT_EXACT_SUMS(b));
}

template <class Value>
inline Value hidden(Value value) {
    asm("" : ZANT_EXACT_SUMS(value));
    return value;
}

template <class Value>
inline Value sum(Value a, Value b) {
    hide(a, b);
    return hidden(a + b);
}

template <class Value>
inline Value difference(Value a, Value b) {
    hide(a, b);
    return hidden(a - b);
}

/// Adds three doubles to those at `to`.
inline void add(double* to, const double* from) {
    const Pair xy = sum(pairAt(to), pairAt(from));
    __builtin_memcpy(to, &xy, sizeof xy);
    to[2] = sum(to[2], from[2]);
}

/// Subtracts three doubles from those at `to`.
inline void subtract(double* to, const double* from) {
    const Pair xy = difference(pairAt(to), pairAt(from));
    __builtin_memcpy(to, &xy, sizeof xy);
    to[2] = difference(to[2], from[2]);
}

}  // namespace ExactSums
}  // namespace Zant
#endif

#endif
