#ifndef ZANT_CLIENT_VALUES_VECTOR_H
#define ZANT_CLIENT_VALUES_VECTOR_H

#include <cstddef>

#include "client/records/zant_records.h"
#include "client/values/exactsums.h"
#include "own/cxx17.h"

namespace Zant {

/// Up to four doubles, of which the first `count` are meaningful: a pixel position or size (2), a point, direction or
/// colour (3), a colour with alpha (4).
///
/// A count is kept as it is; operations take one above 4 as 4, and one below 0 as 0.
///
/// Comparisons and counts are exact. A host's compiler flags cannot change the rounding: what multiplies lives in the
/// source file, and the sums that are inline are hidden from the optimiser (client/values/exactsums.h).
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

    // Many vectors in one call, with the results of a call for each and for less than that. Arrays that are written may
    // be the very arrays that are read, and otherwise share no memory with them.

    /// out[i] = vectors[i].length() for each of a number of vectors.
    static void lengths(double* out, const Vector* vectors, size_t number);
    /// out[i] = dot(a[i].values, b[i].values, 3) for each of a number of vectors.
    static void dots(double* out, const Vector* a, const Vector* b, size_t number);
    /// out[i].cross(a[i], b[i]) for each of a number of vectors.
    static void crosses(Vector* out, const Vector* a, const Vector* b, size_t number);

private:
    /// The operators for all counts.
    Vector& add(const Vector& other);
    Vector& subtract(const Vector& other);
};
static_assert(sizeof(Vector) == 40, "the stride of vectors in lists");

inline Vector& Vector::operator+=(const Vector& other) {
#ifdef ZANT_EXACT_SUMS
    if (__builtin_expect(count == 3 && other.count == 3, 1)) {
        ExactSums::add(values, other.values);
        return *this;
    }
#endif
    return add(other);
}

inline Vector& Vector::operator-=(const Vector& other) {
#ifdef ZANT_EXACT_SUMS
    if (__builtin_expect(count == 3 && other.count == 3, 1)) {
        ExactSums::subtract(values, other.values);
        return *this;
    }
#endif
    return subtract(other);
}

}  // namespace Zant

#endif
