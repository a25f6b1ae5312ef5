#include "client/values/vector.h"

#include <algorithm>
#include <cmath>

#include "client/values/arithmetic.inl"

namespace Zant {

namespace {

using Arithmetic::Two3;

/// The components in use. A count that an engine has delivered may be anything.
int inUse(const ZantVectorCore& vector) {
    return std::min<int>(vector.count, 4);
}

}  // namespace

Vector& Vector::operator*=(double factor) {
    scale(values, inUse(*this), factor);
    return *this;
}

Vector& Vector::add(const Vector& other) {
    if (count != other.count) return *this;
    for (int i = 0, end = inUse(*this); i < end; ++i) {
        values[i] += other.values[i];
    }
    return *this;
}

Vector& Vector::subtract(const Vector& other) {
    if (count != other.count) return *this;
    for (int i = 0, end = inUse(*this); i < end; ++i) {
        values[i] -= other.values[i];
    }
    return *this;
}

double Vector::length() const {
    if (count == 3) return Arithmetic::length(values);  // as below, for what vectors mostly have
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
    if (n == 3) return Arithmetic::dot(a, b);  // as below, without the loop
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

void Vector::lengths(double* out, const Vector* vectors, size_t number) {
    const auto one = [&](size_t i) { out[i] = vectors[i].length(); };
    const auto two = [&](size_t i) {
        const Vector &first = vectors[i], &second = vectors[i + 1];
        if (first.count == 3 && second.count == 3) {
            Arithmetic::store(out + i, Arithmetic::twoLengths(first.values, second.values));
        } else {
            one(i);
            one(i + 1);
        }
    };
    Arithmetic::inTwos(number, two, one);
}

void Vector::dots(double* out, const Vector* a, const Vector* b, size_t number) {
    const auto two = [&](size_t i) {
        Arithmetic::store(out + i, Arithmetic::twoDots(a[i].values, b[i].values, a[i + 1].values, b[i + 1].values));
    };
    Arithmetic::inTwos(number, two, [&](size_t i) { out[i] = Arithmetic::dot(a[i].values, b[i].values); });
}

void Vector::crosses(Vector* out, const Vector* a, const Vector* b, size_t number) {
    const auto two = [&](size_t i) {
        const Two3 left(a[i].values, a[i + 1].values), right(b[i].values, b[i + 1].values);
        Arithmetic::cross(left, right).store(out[i].values, out[i + 1].values);
        out[i].count = out[i + 1].count = 3;
    };
    Arithmetic::inTwos(number, two, [&](size_t i) { out[i].cross(a[i], b[i]); });
}

}  // namespace Zant
