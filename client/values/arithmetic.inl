// Sums and products of three in their defined order, for the source files of this folder only: those are compiled
// without contraction, so that every product and every sum is rounded. Sums start at 0.0, which shows in the sign of a
// zero result.
#ifndef ZANT_CLIENT_VALUES_ARITHMETIC_INL
#define ZANT_CLIENT_VALUES_ARITHMETIC_INL

#include <cmath>

namespace Zant {
namespace Arithmetic {

inline double dot(const double* a, const double* b) {
    return 0.0 + a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline double length(const double* a) {
    return std::sqrt(dot(a, a));
}

/// The target must be none of the operands.
inline void cross(double* out, const double* a, const double* b) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

/// Replaces the row vector v by v times the matrix of three rows at m.
inline void rotate(double* v, const double* m) {
    const double x = v[0], y = v[1], z = v[2];
    for (int c = 0; c < 3; ++c) {
        v[c] = 0.0 + x * m[c] + y * m[3 + c] + z * m[6 + c];
    }
}

}  // namespace Arithmetic
}  // namespace Zant

#endif
