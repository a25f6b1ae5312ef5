// The inline sums of vectors, in a host whose compiler may reorder, fuse and leave out what it calculates.
#include <gtest/gtest.h>

#include "tests/literalgeometry.h"
#include "tests/sumchains.h"

namespace {

/// A vector without any care, here where flags are exact.
struct Plain {
    Plain(double x, double y, double z) : values{x, y, z, 0} {}
    void operator+=(const Plain& other) {
        for (int i = 0; i < 3; ++i)
            values[i] += other.values[i];
    }
    void operator-=(const Plain& other) {
        for (int i = 0; i < 3; ++i)
            values[i] -= other.values[i];
    }
    double values[4];
};

template <class V>
V vectorOf(const double (&c)[3]) {
    return V(c[0], c[1], c[2]);
}

TEST(InlineSums, KeepEveryBitUnderHostileFlags) {
    Literal::Source source(3);
    for (int round = 0; round < 120000; ++round) {
        double c[3][3];
        for (auto& components : c)
            for (double& component : components)
                component = source.any();
        auto changed = vectorOf<Zant::Vector>(c[0]);
        auto expected = vectorOf<Plain>(c[0]);
        hostileChain(round % chains, changed, vectorOf<Zant::Vector>(c[1]), vectorOf<Zant::Vector>(c[2]));
        chain(round % chains, expected, vectorOf<Plain>(c[1]), vectorOf<Plain>(c[2]));
        ASSERT_TRUE(Literal::sameBits(changed.values, expected.values)) << round % chains;
    }
}

}  // namespace
