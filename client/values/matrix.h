#ifndef ZANT_CLIENT_VALUES_MATRIX_H
#define ZANT_CLIENT_VALUES_MATRIX_H

#include "client/values/vector.h"

namespace Zant {

class Axes;
class AxesHpb;

/// A square matrix of doubles in row order; a new one is the identity.
///
/// Vectors are row vectors: a point p is transformed as p * M, so that the rows of a rotation are the images of the
/// axes, and in a product the left matrix acts first. Angles are in radians. Every sum keeps its order and every
/// operation is rounded, so that results are the same on every processor and under every compiler flag of a host.
///
/// Threads: a plain record; several threads may read it, or one thread at a time changes it.
template <int Dimension>
class MatrixTemplate {
public:
    double m[Dimension * Dimension];

    constexpr MatrixTemplate() : m{} {
        for (int i = 0; i < Dimension; ++i) {
            m[(Dimension + 1) * i] = 1.0;
        }
    }

    double& operator()(int row, int column) { return m[Dimension * row + column]; }
    double operator()(int row, int column) const { return m[Dimension * row + column]; }

    /// Sets this matrix to this * other, which may be this matrix.
    void multiply(const MatrixTemplate& other);
    /// Sets this matrix to this * transpose of other, which may be this matrix.
    void multiplyTransposed(const MatrixTemplate& other);
};

template <>
void MatrixTemplate<3>::multiply(const MatrixTemplate& other);
template <>
void MatrixTemplate<4>::multiply(const MatrixTemplate& other);
template <>
void MatrixTemplate<3>::multiplyTransposed(const MatrixTemplate& other);
template <>
void MatrixTemplate<4>::multiplyTransposed(const MatrixTemplate& other);

/// A linear map of three dimensions: rotation, scale per axis, mirror.
class Matrix3x3 : public MatrixTemplate<3> {
public:
    Matrix3x3() = default;
    /// Nine elements in row order.
    Matrix3x3(double m00, double m01, double m02, double m10, double m11, double m12, double m20, double m21,
              double m22);

    /// Whether every element is exactly that of the identity.
    bool isEye() const;
    /// Whether (row 0 x row 1) * row 2 is greater than 0; false for coplanar rows and for NaN.
    bool isRightHanded() const;
    double determinant() const;

    /// Writes the inverse to out, which may be this matrix.
    /// A singular matrix is not refused: its inverse holds infinities or NaNs.
    void inverse(Matrix3x3& out) const;
    /// Replaces this matrix by its inverse.
    void inverse();

    /// Sets this matrix to the rotation by an angle that turns axis i towards axis j (0: x, 1: y, 2: z).
    void setRotation(int i, int j, double angle);
    /// Sets this matrix to rotation(0, 1, z) * rotation(0, 2, y) * rotation(1, 2, x).
    void fromXYZ(double x, double y, double z);
    /// Sets this matrix to rotation(1, 2, roll) * rotation(0, 2, pitch) * rotation(0, 1, yaw).
    void fromRPY(double roll, double pitch, double yaw);

    /// Sets this matrix to diag(scales) * rotation(0, 1, bank) * rotation(1, 2, pitch) * rotation(2, 0, heading).
    void fromAxes(const AxesHpb& axes);
    /// Decomposes m into angles and scales, the reverse of fromAxes(); m is used up. A mirrored matrix carries its
    /// mirror in a negative z scale. Heading and bank come out in (-pi, pi], pitch in [-pi/2, pi/2].
    static void toAxes(AxesHpb* out, Matrix3x3& m);

    /// Replaces the three doubles at v by v * this.
    void rotateVector(double* v) const;
    /// The same for the first three components of each of a number of vectors, whatever their counts, for less than
    /// a call for each. This matrix lies outside of them.
    void rotateVectors(Vector* vectors, size_t number) const;
};
static_assert(sizeof(Matrix3x3) == 72, "nine doubles");

/// A linear map and a translation: the upper-left block is linear, row 3 holds the translation and, last, its weight.
class Matrix4x4 : public MatrixTemplate<4> {
public:
    Matrix4x4() = default;
    /// Sixteen elements in row order.
    explicit Matrix4x4(const double (&elements)[16]);
    Matrix4x4(const Matrix3x3& linear, double x, double y, double z);

    /// Copies the upper-left block.
    void toMatrix3x3(Matrix3x3& out) const;

    /// The translation divided by its weight, with count 3. A weight of zero is not refused.
    operator Vector() const;
    /// The upper-left block in matrix form.
    operator Axes() const;
    /// The upper-left block decomposed into angles and scales.
    operator AxesHpb() const;
};
static_assert(sizeof(Matrix4x4) == 128, "sixteen doubles");

}  // namespace Zant

#endif
