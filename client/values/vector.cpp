#include "client/values/vector.h"

#include <algorithm>
#include <cmath>

#include "client/values/arithmetic.inl"

namespace Zant {

namespace {

/// The components in use. A count that an engine has delivered may be anything.
int inUse(const ZantVectorCore& vector) {
    return std::min<int>(vector.count, 4);
}

}  // namespace

Vector& Vector::operator*=(double factor) {
    scale(values, inUse(*this), factor);
    return *this;
}

Vector& Vector::operator+=(const Vector& other) {
    if (count != other.count) return *this;
    for (int i = 0, end = inUse(*this); i < end; ++i) {
        values[i] += other.values[i];
    }
    return *this;
}

Vector& Vector::operator-=(const Vector& other) {
    if (count != other.count) return *this;
    for (int i = 0, end = inUse(*this); i < end; ++i) {
        values[i] -= other.values[i];
    }
    return *this;
}

double Vector::length() const {
    return std::sqrt(dot(values, values, inUse(*this)));
}

void Vector::cross(const Vector& a, const Vector& b) {
    double product[3];
    Arithmetic::cross(product, a.values, b.values);
    for (int i = 0; i < 3; ++i) {
        values[i] = product[i];
    }
    count = 3;
}

double Vector::dot(const double* a, const double* b, int n) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        sum += a[i] * b[i];
    }
    return sum;
}

void Vector::scale(double* values, int n, double factor) {
    for (int i = 0; i < n; ++i) {
        values[i] *= factor;
    }
}

}  // namespace Zant
