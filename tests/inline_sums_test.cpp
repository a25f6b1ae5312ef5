// The inline sums of vectors, in a host whose compiler may reorder, fuse and leave out what it calculates.
#include <gtest/gtest.h>

#include "tests/hostilesums.h"
#include "tests/literalgeometry.h"

using Literal::sameBits;
using Zant::Vector;

namespace {

/// One component of what the hostile functions do, each step rounded.
struct Steps {
    double v, a, b;

    double backAndForth() const { return (v + a) - a; }
    double around() const { return (((v + a) + b) - a) - b; }
    double fromItself() const { return v - v; }
    double addProduct() const { return v + a * b; }
    double subtractProduct() const { return v - a * b; }
    double addAgain() const { return ((v + a) + a) + a; }
    double addAndGoOn() const { return (v + a) + b; }
};

using Step = double (Steps::*)() const;
using Change = void (*)(Vector& v, const Vector& a, const Vector& b);

struct Row {
    const char* name;
    Step step;
    Change change;
};

void goOnWithEach(Vector& v, const Vector& a, const Vector& b) {
    for (int i = 0; i < 3; ++i) {
        v.values[i] = Hostile::addAndGoOn(v.values[i], a.values[i], b.values[i]);
    }
}

const Row rows[] = {
    {"backAndForth", &Steps::backAndForth,
     [](Vector& v, const Vector& a, const Vector&) { Hostile::backAndForth(v, a); }},
    {"around", &Steps::around, Hostile::around},
    {"fromItself", &Steps::fromItself, [](Vector& v, const Vector&, const Vector&) { Hostile::fromItself(v); }},
    {"addProduct", &Steps::addProduct, Hostile::addProduct},
    {"subtractProduct", &Steps::subtractProduct, Hostile::subtractProduct},
    {"addAgain", &Steps::addAgain, [](Vector& v, const Vector& a, const Vector&) { Hostile::addAgain(v, a, 3); }},
    {"addAndGoOn", &Steps::addAndGoOn, goOnWithEach},
};

}  // namespace

TEST(InlineSums, KeepEveryBitUnderHostileFlags) {
    Literal::Source source(3);
    for (int round = 0; round < 20000; ++round) {
        const Vector v(source.any(), source.any(), source.any());
        const Vector a(source.any(), source.any(), source.any()), b(source.any(), source.any(), source.any());
        for (const Row& row : rows) {
            double expected[4] = {};
            for (int i = 0; i < 3; ++i) {
                expected[i] = (Steps{v.values[i], a.values[i], b.values[i]}.*row.step)();
            }
            Vector changed = v;
            row.change(changed, a, b);
            ASSERT_TRUE(sameBits(changed.values, expected)) << row.name;
        }
    }
}
