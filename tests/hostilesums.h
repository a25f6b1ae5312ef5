// Sums of vectors inside of functions that are compiled with fast mathematics and fused operations, as a host may be.
#ifndef ZANT_TESTS_HOSTILESUMS_H
#define ZANT_TESTS_HOSTILESUMS_H

#include "client/values/vector.h"

namespace Hostile {

/// v += a; v -= a
void backAndForth(Zant::Vector& v, const Zant::Vector& a);
/// v += a; v += b; v -= a; v -= b
void around(Zant::Vector& v, const Zant::Vector& a, const Zant::Vector& b);
/// v -= v
void fromItself(Zant::Vector& v);
/// v += a * b, component by component
void addProduct(Zant::Vector& v, const Zant::Vector& a, const Zant::Vector& b);
/// v -= a * b, component by component
void subtractProduct(Zant::Vector& v, const Zant::Vector& a, const Zant::Vector& b);
/// v += a, number times
void addAgain(Zant::Vector& v, const Zant::Vector& a, int number);
/// v + a as the inline operators add, to which the function itself adds x.
double addAndGoOn(double v, double a, double x);

}  // namespace Hostile

#endif
