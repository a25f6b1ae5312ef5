// Compiled with the flags of a host that asks for speed before all else; see CMakeLists.txt.
#include "tests/hostilesums.h"

#ifndef __FAST_MATH__
#error "to be compiled with -ffast-math, or the test shows nothing"
#endif

namespace Hostile {

using Zant::Vector;

namespace {

Vector product(const Vector& a, const Vector& b) {
    const double *x = a.values, *y = b.values;
    return {x[0] * y[0], x[1] * y[1], x[2] * y[2]};
}

}  // namespace

void backAndForth(Vector& v, const Vector& a) {
    v += a;
    v -= a;
}

void around(Vector& v, const Vector& a, const Vector& b) {
    Vector local = v;
    local += a;
    local += b;
    local -= a;
    local -= b;
    v = local;
}

void fromItself(Vector& v) {
    v -= v;
}

void addProduct(Vector& v, const Vector& a, const Vector& b) {
    v += product(a, b);
}

void subtractProduct(Vector& v, const Vector& a, const Vector& b) {
    v -= product(a, b);
}

void addAgain(Vector& v, const Vector& a, int number) {
    for (int i = 0; i < number; ++i) {
        v += a;
    }
}

double addAndGoOn(double v, double a, double x) {
    return x + Zant::ExactSums::sum(v, a);
}

}  // namespace Hostile
