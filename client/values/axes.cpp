#include "client/values/axes.h"

#include <algorithm>
#include <cmath>

#include "client/values/arithmetic.inl"

namespace Zant {

namespace {

enum Form { FormEye = 0, FormAngles = 2, FormMatrix = 3 };

using Arithmetic::Row3;

/// Divides the rows by their lengths, which go to scales.
void normalizeRows(Matrix3x3& matrix, double* scales) {
    for (int row = 0; row < 3; ++row) {
        double* elements = matrix.m + 3 * row;
        scales[row] = Arithmetic::length(elements);
        (Row3(elements) * (1.0 / scales[row])).store(elements);
    }
}

void undoHeading(Matrix3x3& matrix, double heading) {
    const double sine = std::sin(heading), cosine = std::cos(heading);
    Arithmetic::multiply(matrix.m, Row3(cosine, 0.0, sine), Row3(0.0, 1.0, 0.0), Row3(-sine, 0.0, cosine));
}

void undoPitch(Matrix3x3& matrix, double pitch) {
    const double sine = std::sin(pitch), cosine = std::cos(pitch);
    Arithmetic::multiply(matrix.m, Row3(1.0, 0.0, 0.0), Row3(0.0, cosine, -sine), Row3(0.0, sine, cosine));
}

bool isNeutral(const double* anglesAndScales) {
    const AxesHpb neutral;
    return std::equal(anglesAndScales, anglesAndScales + 6, neutral.m);
}

/// The x scale that toAxesHpb() would give to a default target, without the rest of the decomposition.
double scaleX(const ZantAxesCore& axes) {
    if (axes.rows == FormMatrix) return Arithmetic::length(axes.m);
    return axes.rows == FormEye ? 1.0 : axes.m[3];
}

}  // namespace

void Matrix3x3::fromAxes(const AxesHpb& axes) {
    Arithmetic::fromAngles(m, axes.m);
}

void Matrix3x3::toAxes(AxesHpb* out, Matrix3x3& m) {
    double* angles = out->m;
    double* scales = out->m + 3;
    normalizeRows(m, scales);
    if (!m.isRightHanded()) {
        for (int column = 0; column < 3; ++column) {
            m(2, column) = -m(2, column);
        }
        scales[2] = -scales[2];
    }
    angles[0] = std::atan2(m(2, 0), m(2, 2));
    undoHeading(m, angles[0]);
    angles[1] = std::atan2(-m(2, 1), m(2, 2));
    undoPitch(m, angles[1]);
    angles[2] = std::atan2(m(0, 1), m(0, 0));
}

Matrix4x4::operator Axes() const {
    return Axes(*this);
}

Matrix4x4::operator AxesHpb() const {
    return AxesHpb(*this);
}

AxesHpb::AxesHpb(const ZantAxesCore& axes) : AxesHpb() {
    Axes::toAxesHpb(axes, *this);
}

AxesHpb::AxesHpb(const Matrix3x3& matrix) : AxesHpb() {
    *this = matrix;
}

AxesHpb::AxesHpb(const Matrix4x4& matrix) : AxesHpb() {
    Matrix3x3 linear;
    matrix.toMatrix3x3(linear);
    Matrix3x3::toAxes(this, linear);
}

AxesHpb::AxesHpb(const AxesHpb& other) : AxesHpb() {
    Axes::copy(*this, other);
}

AxesHpb& AxesHpb::operator=(const AxesHpb& other) {
    Axes::copy(*this, other);
    return *this;
}

AxesHpb& AxesHpb::operator=(const Matrix3x3& matrix) {
    Matrix3x3 scratch = matrix;
    Matrix3x3::toAxes(this, scratch);
    return *this;
}

AxesHpb& AxesHpb::operator*=(const Matrix3x3& matrix) {
    Matrix3x3 product = *this * matrix;
    Matrix3x3::toAxes(this, product);
    return *this;
}

AxesHpb& AxesHpb::operator*=(const AxesHpb& other) {
    Matrix3x3 product = *this * other;
    Matrix3x3::toAxes(this, product);
    return *this;
}

Matrix3x3 AxesHpb::operator*(const AxesHpb& other) const {
    Matrix3x3 matrix;
    matrix.fromAxes(other);
    return *this * matrix;
}

Matrix3x3 AxesHpb::operator*(const Matrix3x3& matrix) const {
    Matrix3x3 product;
    product.fromAxes(*this);
    product.multiply(matrix);
    return product;
}

Axes::Axes(const ZantAxesCore& axes) : Axes() {
    copy(*this, axes);
}

Axes::Axes(const Matrix3x3& matrix) : ZantAxesCore{{}, FormMatrix} {
    std::copy_n(matrix.m, 9, m);
}

Axes::Axes(const Matrix4x4& matrix) : ZantAxesCore{{}, FormMatrix} {
    for (int row = 0; row < 3; ++row) {
        std::copy_n(matrix.m + 4 * row, 3, m + 3 * row);
    }
}

Axes::Axes(const Axes& other) : Axes() {
    copy(*this, other);
}

Axes& Axes::operator=(const Axes& other) {
    copy(*this, other);
    return *this;
}

void Axes::asAxesHpb(const ZantAxesCore& source, AxesHpb& out) {
    for (int i = 0; i < 3; ++i) {
        out.m[i] = source.m[i];
        out.m[3 + i] *= source.m[3 + i];
    }
    out.rows = FormAngles;
}

void Axes::asMatrix(const ZantAxesCore& source, Matrix3x3& out) {
    std::copy_n(source.m, 9, out.m);
}

bool Axes::isEye(const ZantAxesCore& axes) {
    if (axes.rows == FormEye) return true;
    if (axes.rows == FormAngles) return isNeutral(axes.m);
    if (axes.rows != FormMatrix) return false;
    Matrix3x3 matrix;
    asMatrix(axes, matrix);
    return matrix.isEye();
}

void Axes::copy(ZantAxesCore& target, const ZantAxesCore& source) {
    const int rowsInUse = std::min<int>(source.rows, 3);
    for (int i = 0; i < 3 * rowsInUse; ++i) {
        target.m[i] = source.m[i];
    }
    target.rows = source.rows;
}

void Axes::toAxesHpb(const ZantAxesCore& source, AxesHpb& out) {
    if (source.rows == FormMatrix) {
        Matrix3x3 scratch;
        asMatrix(source, scratch);
        Matrix3x3::toAxes(&out, scratch);
    } else if (source.rows == FormEye) {
        out = AxesHpb();
    } else {
        asAxesHpb(source, out);
    }
}

void Axes::toMatrix(const ZantAxesCore& source, Matrix3x3& out) {
    const double* matrix = Arithmetic::matrixOf(source, out.m);
    if (matrix != out.m) std::copy_n(matrix, 9, out.m);
}

bool Axes::isAxesHpb(AxesHpb& out) const {
    if (rows != FormAngles) return false;
    asAxesHpb(*this, out);
    return true;
}

bool Axes::isMatrix(Matrix3x3& out) const {
    if (rows != FormMatrix) return false;
    asMatrix(*this, out);
    return true;
}

void Axes::transform(ZantAxesCore& target, char inverse) const {
    const Axes before(target);
    Matrix3x3 result;
    Matrix3x3 mine;
    toMatrix(before, result);
    toMatrix(*this, mine);
    if (inverse) mine.inverse();
    result.multiply(mine);
    if (rows != FormAngles && before.rows != FormAngles) {
        copy(target, Axes(result));
        return;
    }
    const double scale = inverse ? scaleX(before) / scaleX(*this) : scaleX(before) * scaleX(*this);
    AxesHpb angles(result);
    angles.m[3] = scale;
    copy(target, angles);
}

Axes& Axes::scale(double x, double y, double z) {
    const double factors[3] = {x, y, z};
    if (rows == FormAngles) {
        for (int i = 0; i < 3; ++i) {
            m[3 + i] *= factors[i];
        }
    } else if (rows == FormMatrix) {
        for (int i = 0; i < 9; ++i) {
            m[i] *= factors[i % 3];
        }
    }
    return *this;
}

void Axes::getScale(double* out) const {
    for (int row = 0; row < 3; ++row) {
        if (rows == FormMatrix) {
            out[row] = Arithmetic::length(m + 3 * row);
        } else {
            out[row] = rows == FormAngles ? m[3 + row] : 1.0;
        }
    }
}

}  // namespace Zant
