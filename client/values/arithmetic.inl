// The arithmetic of three-component rows, for the source files of this folder only: those are compiled without
// contraction, so that every product and every sum is rounded on its own. Sums start at 0.0, which shows in the sign of
// a zero result, and take their terms in the order of the index.
#ifndef ZANT_CLIENT_VALUES_ARITHMETIC_INL
#define ZANT_CLIENT_VALUES_ARITHMETIC_INL

#include <cmath>
#include <cstring>

#include "client/records/zant_records.h"
#include "own/cxx17.h"

namespace Zant {
namespace Arithmetic {

/// Two doubles that are worked on at once; each gets the result that it would get alone.
#ifdef ZANT_GNU_CODE
using Pair = double __attribute__((vector_size(16)));
#else
struct Pair {
    double values[2];

    double operator[](int k) const { return values[k]; }
    Pair operator+(const Pair& other) const { return {values[0] + other[0], values[1] + other[1]}; }
    Pair operator-(const Pair& other) const { return {values[0] - other[0], values[1] - other[1]}; }
    Pair operator*(const Pair& other) const { return {values[0] * other[0], values[1] * other[1]}; }
};
#endif

inline Pair load(const double* from) {
    Pair pair;
    std::memcpy(&pair, from, sizeof pair);
    return pair;
}

inline Pair both(double value) {
    return Pair{value, value};
}

inline void store(double* to, Pair pair) {
    std::memcpy(to, &pair, sizeof pair);
}

/// Calls two(i) for the items i and i + 1 of each two of a number of items, and one(i) for one that is left.
template <class Two, class One>
inline void inTwos(size_t number, Two two, One one) {
    size_t i = 0;
    for (; i + 1 < number; i += 2) {
        two(i);
    }
    if (i < number) one(i);
}

/// Two vectors side by side.
struct Two3 {
    Pair x, y, z;

    Two3(const double* a, const double* b) : x{a[0], b[0]}, y{a[1], b[1]}, z{a[2], b[2]} {}
    Two3(Pair a, Pair b, Pair c) : x(a), y(b), z(c) {}
    /// The same row for both.
    static Two3 ofRow(const double* row) { return {both(row[0]), both(row[1]), both(row[2])}; }

    void store(double* a, double* b) const {
        a[0] = x[0], a[1] = y[0], a[2] = z[0];
        b[0] = x[1], b[1] = y[1], b[2] = z[1];
    }
    Two3 operator*(Pair factor) const { return {x * factor, y * factor, z * factor}; }
    Two3 operator+(const Two3& other) const { return {x + other.x, y + other.y, z + other.z}; }
};

/// A row of a 3x3 matrix.
struct Row3 {
    Pair xy;
    double z;

    // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.Assign): what is beyond a vector's count was perhaps never set
    explicit Row3(const double* from) : xy(load(from)), z(from[2]) {}
    Row3(double a, double b, double c) : xy{a, b}, z(c) {}

    void store(double* to) const {
        Arithmetic::store(to, xy);
        to[2] = z;
    }
    Row3 operator+(const Row3& other) const { return {xy + other.xy, z + other.z}; }
    Row3 operator-(const Row3& other) const { return {xy - other.xy, z - other.z}; }
    Row3 operator*(double factor) const { return {xy * both(factor), z * factor}; }

private:
    Row3(Pair a, double b) : xy(a), z(b) {}
};

/// A row of a 4x4 matrix.
struct Row4 {
    Pair xy;
    Pair zw;

    explicit Row4(const double* from) : xy(load(from)), zw(load(from + 2)) {}
    Row4(double a, double b, double c, double d) : xy{a, b}, zw{c, d} {}

    void store(double* to) const {
        Arithmetic::store(to, xy);
        Arithmetic::store(to + 2, zw);
    }
    Row4 operator+(const Row4& other) const { return {xy + other.xy, zw + other.zw}; }
    Row4 operator*(double factor) const { return {xy * both(factor), zw * both(factor)}; }

private:
    Row4(Pair a, Pair b) : xy(a), zw(b) {}
};

/// The row vector v times the matrix of three rows.
inline Row3 times(const Row3& v, const Row3& a, const Row3& b, const Row3& c) {
    // Components beyond a vector's count may never have been set, and are multiplied all the same.
    return Row3(0.0, 0.0, 0.0) + a * v.xy[0] + b * v.xy[1] + c * v.z;  // NOLINT(clang-analyzer-core.CallAndMessage)
}

inline Row4 times(const double* v, const Row4& a, const Row4& b, const Row4& c, const Row4& d) {
    return Row4(0.0, 0.0, 0.0, 0.0) + a * v[0] + b * v[1] + c * v[2] + d * v[3];
}

/// Two row vectors times the same matrix of three rows.
inline Two3 times(const Two3& v, const Two3& a, const Two3& b, const Two3& c) {
    const Pair zero = both(0.0);
    return Two3(zero, zero, zero) + a * v.x + b * v.y + c * v.z;
}

inline Row3 times(const double* v, const double* matrix) {
    return times(Row3(v), Row3(matrix), Row3(matrix + 3), Row3(matrix + 6));
}

/// Sets m to m times the matrix of three rows, which may come from m.
inline void multiply(double* m, Row3 a, Row3 b, Row3 c) {
    for (int i = 0; i < 9; i += 3) {
        times(Row3(m + i), a, b, c).store(m + i);
    }
}

/// Sets m to m times the matrix of four rows, which may come from m.
inline void multiply(double* m, Row4 a, Row4 b, Row4 c, Row4 d) {
    for (int i = 0; i < 16; i += 4) {
        times(m + i, a, b, c, d).store(m + i);
    }
}

inline double dot(const double* a, const double* b) {
    return 0.0 + a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline double length(const double* a) {
    return std::sqrt(dot(a, a));
}

/// a . b and c . d. Multiplied first, they are put side by side once instead of twice.
inline Pair twoDots(const double* a, const double* b, const double* c, const double* d) {
    const Pair first = load(a) * load(b), second = load(c) * load(d);
    return both(0.0) + Pair{first[0], second[0]} + Pair{first[1], second[1]} + Pair{a[2] * b[2], c[2] * d[2]};
}

inline Pair twoLengths(const double* a, const double* b) {
    const Pair squares = twoDots(a, a, b, b);
    return Pair{std::sqrt(squares[0]), std::sqrt(squares[1])};
}

inline Two3 cross(const Two3& a, const Two3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The target must be none of the operands.
inline void cross(double* out, const double* a, const double* b) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

inline double determinant(const double* m) {
    return m[3] * m[7] * m[2] + m[0] * m[4] * m[8] + m[6] * m[1] * m[5] - m[3] * m[1] * m[8] - m[0] * m[7] * m[5] -
           m[6] * m[4] * m[2];
}

/// The adjugate times the reciprocal of the determinant. The target may be the operand.
inline void invert(double* out, const double* m) {
    const double factor = 1.0 / determinant(m);
    const Row3 a(m[4] * m[8] - m[5] * m[7], m[2] * m[7] - m[1] * m[8], m[1] * m[5] - m[2] * m[4]);
    const Row3 b(m[5] * m[6] - m[3] * m[8], m[0] * m[8] - m[2] * m[6], m[2] * m[3] - m[0] * m[5]);
    const Row3 c(m[3] * m[7] - m[4] * m[6], m[1] * m[6] - m[0] * m[7], m[0] * m[4] - m[1] * m[3]);
    (a * factor).store(out);
    (b * factor).store(out + 3);
    (c * factor).store(out + 6);
}

/// diag(scales) * rotation(0, 1, bank) * rotation(1, 2, pitch) * rotation(2, 0, heading) of six doubles.
///
/// The products with the zeros and ones of the rotations are left out, which changes no bit as long as what is not part
/// of a sum still gets the +0 that its sum starts with: it turns a negative zero into a positive one.
inline void fromAngles(double* out, const double* axes) {
    const double sh = std::sin(axes[0]), ch = std::cos(axes[0]);
    const double sp = std::sin(axes[1]), cp = std::cos(axes[1]);
    const double sb = std::sin(axes[2]), cb = std::cos(axes[2]);
    const double bankAndPitch[9] = {
        cb,  0.0 + sb * cp, sb * sp,  //
        -sb, 0.0 + cb * cp, cb * sp,  //
        0.0, 0.0 - sp,      cp,
    };
    for (int i = 0; i < 9; i += 3) {
        const double* row = bankAndPitch + i;
        const Row3 turned(0.0 + row[0] * ch + row[2] * sh, row[1], 0.0 + row[0] * -sh + row[2] * ch);
        (turned * axes[3 + i / 3]).store(out + i);
    }
}

constexpr double Eye[9] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};

/// The matrix of axes in any form: their own, or one that is built in the room of nine doubles.
inline const double* matrixOf(const ZantAxesCore& axes, double* room) {
    if (axes.rows == 3) return axes.m;
    if (axes.rows == 0) return Eye;
    fromAngles(room, axes.m);
    return room;
}

}  // namespace Arithmetic
}  // namespace Zant

#endif
