#include "client/values/matrix.h"

#include <algorithm>
#include <cmath>

#include "client/values/arithmetic.inl"

namespace Zant {

namespace {

Matrix3x3 rotation(int i, int j, double angle) {
    Matrix3x3 matrix;
    matrix.setRotation(i, j, angle);
    return matrix;
}

}  // namespace

template <int Dimension>
MatrixTemplate<Dimension>::MatrixTemplate() : m{} {
    for (int i = 0; i < Dimension; ++i) {
        m[Dimension * i + i] = 1.0;
    }
}

template <int Dimension>
void MatrixTemplate<Dimension>::multiply(const MatrixTemplate& other) {
    double product[Dimension * Dimension] = {};
    for (int i = 0; i < Dimension; ++i) {
        for (int k = 0; k < Dimension; ++k) {
            for (int j = 0; j < Dimension; ++j) {
                product[Dimension * i + j] += m[Dimension * i + k] * other.m[Dimension * k + j];
            }
        }
    }
    std::copy_n(product, Dimension * Dimension, m);
}

template <int Dimension>
void MatrixTemplate<Dimension>::multiplyTransposed(const MatrixTemplate& other) {
    double product[Dimension * Dimension] = {};
    for (int i = 0; i < Dimension; ++i) {
        for (int k = 0; k < Dimension; ++k) {
            for (int j = 0; j < Dimension; ++j) {
                product[Dimension * i + j] += m[Dimension * i + k] * other.m[Dimension * j + k];
            }
        }
    }
    std::copy_n(product, Dimension * Dimension, m);
}

template class MatrixTemplate<3>;
template class MatrixTemplate<4>;

Matrix3x3::Matrix3x3(double m00, double m01, double m02, double m10, double m11, double m12, double m20, double m21,
                     double m22) {
    const double elements[9] = {m00, m01, m02, m10, m11, m12, m20, m21, m22};
    std::copy_n(elements, 9, m);
}

bool Matrix3x3::isEye() const {
    const Matrix3x3 eye;
    return std::equal(m, m + 9, eye.m);
}

bool Matrix3x3::isRightHanded() const {
    double normal[3];
    Arithmetic::cross(normal, m, m + 3);
    return Arithmetic::dot(normal, m + 6) > 0.0;
}

double Matrix3x3::determinant() const {
    return m[3] * m[7] * m[2] + m[0] * m[4] * m[8] + m[6] * m[1] * m[5] - m[3] * m[1] * m[8] - m[0] * m[7] * m[5] -
           m[6] * m[4] * m[2];
}

void Matrix3x3::inverse(Matrix3x3& out) const {
    const double adjugate[9] = {
        m[4] * m[8] - m[5] * m[7], m[2] * m[7] - m[1] * m[8], m[1] * m[5] - m[2] * m[4],
        m[5] * m[6] - m[3] * m[8], m[0] * m[8] - m[2] * m[6], m[2] * m[3] - m[0] * m[5],
        m[3] * m[7] - m[4] * m[6], m[1] * m[6] - m[0] * m[7], m[0] * m[4] - m[1] * m[3],
    };
    const double factor = 1.0 / determinant();
    for (int i = 0; i < 9; ++i) {
        out.m[i] = adjugate[i] * factor;
    }
}

void Matrix3x3::inverse() {
    inverse(*this);
}

void Matrix3x3::setRotation(int i, int j, double angle) {
    *this = Matrix3x3();
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    (*this)(i, i) = cosine;
    (*this)(i, j) = sine;
    (*this)(j, i) = -sine;
    (*this)(j, j) = cosine;
}

void Matrix3x3::fromXYZ(double x, double y, double z) {
    setRotation(0, 1, z);
    multiply(rotation(0, 2, y));
    multiply(rotation(1, 2, x));
}

void Matrix3x3::fromRPY(double roll, double pitch, double yaw) {
    setRotation(1, 2, roll);
    multiply(rotation(0, 2, pitch));
    multiply(rotation(0, 1, yaw));
}

void Matrix3x3::rotateVector(double* v) const {
    Arithmetic::rotate(v, m);
}

Matrix4x4::Matrix4x4(const double (&elements)[16]) {
    std::copy_n(elements, 16, m);
}

Matrix4x4::Matrix4x4(const Matrix3x3& linear, double x, double y, double z) {
    for (int row = 0; row < 3; ++row) {
        std::copy_n(linear.m + 3 * row, 3, m + 4 * row);
    }
    m[12] = x;
    m[13] = y;
    m[14] = z;
}

void Matrix4x4::toMatrix3x3(Matrix3x3& out) const {
    for (int row = 0; row < 3; ++row) {
        std::copy_n(m + 4 * row, 3, out.m + 3 * row);
    }
}

Matrix4x4::operator Vector() const {
    return {m[12] / m[15], m[13] / m[15], m[14] / m[15]};
}

}  // namespace Zant
