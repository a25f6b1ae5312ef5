#ifndef ZANT_CLIENT_VALUES_VECTOR_H
#define ZANT_CLIENT_VALUES_VECTOR_H

#include <cstddef>

#include "client/records/zant_records.h"
#include "own/cxx17.h"

namespace Zant {

/// Up to four doubles, of which the first `count` are meaningful: a pixel position or size (2), a point, direction or
/// colour (3), a colour with alpha (4).
///
/// A count is kept as it is; operations take one above 4 as 4, and one below 0 as 0.
///
/// Comparisons and counts are exact. The arithmetic lives in the source file, so that a host's compiler flags cannot
/// change its rounding.
///
/// Threads: a plain record; several threads may read it, or one thread at a time changes it.
class Vector : public ZantVectorCore {
public:
    /// The origin: (0, 0, 0) with count 3.
    constexpr Vector() : Vector(0.0, 0.0, 0.0) {}
    constexpr Vector(double x, double y) : ZantVectorCore{{x, y, 0.0, 0.0}, 2} {}
    constexpr Vector(double x, double y, double z) : ZantVectorCore{{x, y, z, 0.0}, 3} {}
    constexpr Vector(double x, double y, double z, double w) : ZantVectorCore{{x, y, z, w}, 4} {}
    constexpr Vector(const ZantVectorCore& core) : ZantVectorCore(core) {}

    /// Multiplies the first `count` components by a factor.
    Vector& operator*=(double factor);
    /// Adds component by component when both counts are equal; leaves the vector unchanged when they differ.
    Vector& operator+=(const Vector& other);
    /// Subtracts component by component when both counts are equal; leaves the vector unchanged when they differ.
    Vector& operator-=(const Vector& other);

    /// The Euclidean length of the first `count` components; 0 for an empty vector.
    double length() const;

    /// Sets this vector to the cross product of the first three components of a and b, and its count to 3.
    /// Either operand may be this vector.
    void cross(const Vector& a, const Vector& b);

    /// The sum of a[i] * b[i] over n components; 0 for none.
    static double dot(const double* a, const double* b, int n);
    /// Multiplies n doubles by a factor.
    static void scale(double* values, int n, double factor);
};
static_assert(sizeof(Vector) == 40, "the stride of vectors in lists");

}  // namespace Zant

#endif
