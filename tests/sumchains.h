#ifndef ZANT_TESTS_SUMCHAINS_H
#define ZANT_TESTS_SUMCHAINS_H

#include "client/values/vector.h"

/// What a fast compiler would like to join, fuse or leave out. Each file that instantiates it has flags of its own.
template <class V>
void chain(int which, V& v, const V& a, const V& b) {
    const double *x = a.values, *y = b.values;
    const V product(x[0] * y[0], x[1] * y[1], x[2] * y[2]);
    switch (which) {
        case 0:
            v += a;
            v -= a;
            break;
        case 1:
            v += a;
            v += b;
            v -= a;
            v -= b;
            break;
        case 2: {
            const V& itself = v;
            v -= itself;
            break;
        }
        case 3:
            v += product;
            break;
        case 4:
            v -= product;
            break;
        default:
            for (int i = 0; i < 3; ++i)
                v += a;
    }
}
constexpr int chains = 6;

/// The same with vectors, in a file that is compiled with fast mathematics and fused operations.
void hostileChain(int which, Zant::Vector& v, const Zant::Vector& a, const Zant::Vector& b);

#endif
