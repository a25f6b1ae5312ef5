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

template <>
void MatrixTemplate<3>::multiply(const MatrixTemplate& other) {
    using Arithmetic::Row3;
    Arithmetic::multiply(m, Row3(other.m), Row3(other.m + 3), Row3(other.m + 6));
}

template <>
void MatrixTemplate<4>::multiply(const MatrixTemplate& other) {
    using Arithmetic::Row4;
    Arithmetic::multiply(m, Row4(other.m), Row4(other.m + 4), Row4(other.m + 8), Row4(other.m + 12));
}

template <>
void MatrixTemplate<3>::multiplyTransposed(const MatrixTemplate& other) {
    using Arithmetic::Row3;
    const double* o = other.m;
    Arithmetic::multiply(m, Row3(o[0], o[3], o[6]), Row3(o[1], o[4], o[7]), Row3(o[2], o[5], o[8]));
}

template <>
void MatrixTemplate<4>::multiplyTransposed(const MatrixTemplate& other) {
    using Arithmetic::Row4;
    const double* o = other.m;
    Arithmetic::multiply(m, Row4(o[0], o[4], o[8], o[12]), Row4(o[1], o[5], o[9], o[13]),
                         Row4(o[2], o[6], o[10], o[14]), Row4(o[3], o[7], o[11], o[15]));
}

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
    return Arithmetic::determinant(m);
}

void Matrix3x3::inverse(Matrix3x3& out) const {
    Arithmetic::invert(out.m, m);
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
    Arithmetic::times(v, m).store(v);
}

void Matrix3x3::rotateVectors(Vector* vectors, size_t number) const {
    using Arithmetic::Two3;
    const Two3 a = Two3::ofRow(m), b = Two3::ofRow(m + 3), c = Two3::ofRow(m + 6);
    const auto two = [&](size_t i) {
        double *first = vectors[i].values, *second = vectors[i + 1].values;
        Arithmetic::times(Two3(first, second), a, b, c).store(first, second);
    };
    Arithmetic::inTwos(number, two, [&](size_t i) { rotateVector(vectors[i].values); });
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
