// Vectors, matrices and angles against Imath's double versions.
#include <Imath/ImathEuler.h>
#include <Imath/ImathMatrix.h>
#include <Imath/ImathVec.h>

#include <array>
#include <random>

#include "bench/contest.h"
#include "client/values/coordsys.h"

namespace {

constexpr size_t Count = 200;  // what a contest touches fits into the first-level cache
// Per turn: short turns are seldom interrupted on a busy machine.
constexpr size_t Passes = 100;
constexpr size_t AnglePasses = 10;

double random(double limit) {
    static std::mt19937_64 generator(7);
    return std::uniform_real_distribution<double>(-limit, limit)(generator);
}

/// The same values for both sides: rotations without scale, so that repeated products stay bounded.
struct Scene {
    template <class Item>
    using List = std::array<Item, Count>;

    List<Zant::AxesHpb> angles;
    List<Zant::Matrix3x3> matrices, results;
    List<Zant::Matrix4x4> matrices4, results4;
    List<Zant::CoordSys> systems, angleSystems;
    List<Zant::Vector> points, others, results3;

    List<Imath::Eulerd> peerAngles;
    List<Imath::M33d> peerMatrices, peerResults;
    List<Imath::M44d> peerMatrices4, peerResults4;
    List<Imath::V3d> peerPoints, peerOthers, peerResults3;

    List<double> numbers;

    Scene() {
        for (size_t i = 0; i < Count; ++i) {
            fill(i);
        }
    }

private:
    void fill(size_t i) {
        angles[i] = Zant::AxesHpb(random(3), random(1.5), random(3));
        matrices[i].fromAxes(angles[i]);
        const Zant::Vector position(random(1), random(1), random(1));
        const double(&p)[4] = position.values;
        matrices4[i] = Zant::Matrix4x4(matrices[i], p[0], p[1], p[2]);
        systems[i] = Zant::CoordSys(position, matrices[i]);
        angleSystems[i] = Zant::CoordSys(position, angles[i]);
        points[i] = Zant::Vector(random(10), random(10), random(10));
        others[i] = Zant::Vector(random(1), random(1), random(1));

        peerAngles[i] = Imath::Eulerd(angles[i].m[0], angles[i].m[1], angles[i].m[2], Imath::Eulerd::YXZ);
        std::copy_n(matrices[i].m, 9, &peerMatrices[i].x[0][0]);
        std::copy_n(matrices4[i].m, 16, &peerMatrices4[i].x[0][0]);
        peerPoints[i] = Imath::V3d(points[i].values[0], points[i].values[1], points[i].values[2]);
        peerOthers[i] = Imath::V3d(others[i].values[0], others[i].values[1], others[i].values[2]);
        results[i] = matrices[i];
        results4[i] = matrices4[i];
        peerResults[i] = peerMatrices[i];
        peerResults4[i] = peerMatrices4[i];
    }
};

/// A turn that does the work a number of times and keeps what was written.
template <class Items, class Work>
Contest::Turn passes(const Items& results, Work work, size_t number = Passes) {
    return [&results, work, number] {
        for (size_t pass = 0; pass < number; ++pass) {
            work();
            keep(*results.data());
        }
    };
}

/// A turn whose passes do the work for every index.
template <class Items, class Work>
Contest::Turn each(const Items& results, Work work, size_t number = Passes) {
    const auto all = [work] {
        const Work mine = work;  // no call that the work makes can reach it: what it captures stays in registers
        for (size_t i = 0; i < Count; ++i) {
            mine(i);
        }
    };
    return passes(results, all, number);
}

bool products(Scene& s) {
    Contest three("3x3 product, in place", Count * Passes);
    // Without a target: that sums start at 0.0 is a tenth of the work, which Imath does not do.
    three.ours("Zant", each(s.results, [&s](size_t i) { s.results[i].multiply(s.matrices[i]); }));
    three.peer("Imath", each(s.peerResults, [&s](size_t i) { s.peerResults[i] *= s.peerMatrices[i]; }));
    Contest four("4x4 product, in place", Count * Passes);
    four.ours("Zant", each(s.results4, [&s](size_t i) { s.results4[i].multiply(s.matrices4[i]); }), 1.0);
    four.peer("Imath", each(s.peerResults4, [&s](size_t i) { s.peerResults4[i] *= s.peerMatrices4[i]; }));
    const bool threeMet = three.run();
    return four.run() && threeMet;
}

bool inverses(Scene& s) {
    Contest contest("3x3 inverse", Count * Passes);
    contest.ours("Zant", each(s.results, [&s](size_t i) { s.matrices[i].inverse(s.results[i]); }), 1.0);
    contest.peer("Imath", each(s.peerResults, [&s](size_t i) { s.peerResults[i] = s.peerMatrices[i].inverse(); }));
    return contest.run();
}

bool points(Scene& s) {
    Contest own("point transformation, a system each", Count * Passes);
    own.ours("Zant", each(s.points, [&s](size_t i) { s.systems[i].transform(s.points[i], 0); }), 1.0);
    own.peer("Imath multVecMatrix", each(s.peerPoints, [&s](size_t i) {
                 s.peerMatrices4[i].multVecMatrix(s.peerPoints[i], s.peerPoints[i]);
             }));
    Contest chain("point transformation, each needs the last", Count * Passes);
    // The target is for the time. More instructions than the peer's: a call that looks at form and count, sums from
    // 0.0.
    chain.ours("Zant", each(s.points, [&s](size_t i) { s.systems[i].transform(s.points[0], 0); }), 1.0);
    chain.peer("Imath multVecMatrix", each(s.peerPoints, [&s](size_t i) {
                   s.peerMatrices4[i].multVecMatrix(s.peerPoints[0], s.peerPoints[0]);
               }));
    Contest inverse("inverse point transformation, a system each", Count * Passes);
    inverse.ours("Zant", each(s.points, [&s](size_t i) { s.systems[i].transform(s.points[i], 1); }), 1.0);
    inverse.peer("Imath inverse, multVecMatrix", each(s.peerPoints, [&s](size_t i) {
                     s.peerMatrices4[i].inverse().multVecMatrix(s.peerPoints[i], s.peerPoints[i]);
                 }));
    bool met = own.run();
    met &= chain.run();
    return inverse.run() && met;
}

/// All points by one system, which a compiler may keep in registers where it sees the loop.
bool manyPoints(Scene& s) {
    Contest contest("point transformation, one system", Count * Passes);
    contest.ours("Zant, all points in one call",
                 passes(s.points, [&s] { s.systems[0].transform(s.points.data(), Count, 0); }), 1.0);
    contest.ours("Zant, a call for each point",
                 each(s.points, [&s](size_t i) { s.systems[0].transform(s.points[i], 0); }));
    contest.peer("Imath multVecMatrix", each(s.peerPoints, [&s](size_t i) {
                     s.peerMatrices4[0].multVecMatrix(s.peerPoints[i], s.peerPoints[i]);
                 }));
    return contest.run();
}

/// Without targets. A call for each vector is a call, lest a host's flags change what it multiplies and adds. In the
/// call for many, 3 of 38 instructions for two vectors are there because sums start at 0.0.
bool rotations(Scene& s) {
    Contest one("vector by 3x3, one matrix", Count * Passes);
    one.ours("Zant rotateVectors, all in one call",
             passes(s.points, [&s] { s.matrices[0].rotateVectors(s.points.data(), Count); }));
    one.ours("Zant rotateVector", each(s.points, [&s](size_t i) { s.matrices[0].rotateVector(s.points[i].values); }));
    one.peer("Imath V3d *= M33d", each(s.peerPoints, [&s](size_t i) { s.peerPoints[i] *= s.peerMatrices[0]; }));
    Contest own("vector by 3x3, a matrix each", Count * Passes);
    own.ours("Zant rotateVector", each(s.points, [&s](size_t i) { s.matrices[i].rotateVector(s.points[i].values); }));
    own.peer("Imath V3d *= M33d", each(s.peerPoints, [&s](size_t i) { s.peerPoints[i] *= s.peerMatrices[i]; }));
    const bool oneFine = one.run();
    return own.run() && oneFine;
}

bool angles(Scene& s) {
    Contest build("angles to matrix", Count * AnglePasses);
    build.ours("Zant",
               each(
                   s.results, [&s](size_t i) { s.results[i].fromAxes(s.angles[i]); }, AnglePasses),
               1.0);
    build.peer("Imath",
               each(
                   s.peerResults, [&s](size_t i) { s.peerResults[i] = s.peerAngles[i].toMatrix33(); }, AnglePasses));
    Contest point("point transformation, angles form", Count * AnglePasses);
    point.ours("Zant",
               each(
                   s.points, [&s](size_t i) { s.angleSystems[i].transform(s.points[i], 0); }, AnglePasses),
               1.0);
    point.peer("Imath Euler to M33d, V3d *=, +=", each(
                                                      s.peerPoints,
                                                      [&s](size_t i) {
                                                          s.peerPoints[i] *= s.peerAngles[i].toMatrix33();
                                                          s.peerPoints[i] += s.peerOthers[i];
                                                      },
                                                      AnglePasses));
    // Without a target: three lengths for the scales are more than Imath is asked for.
    Contest extract("matrix to angles", Count * AnglePasses);
    extract.ours("Zant, with scales", each(
                                          s.angles, [&s](size_t i) { s.angles[i] = s.matrices[i]; }, AnglePasses));
    extract.peer("Imath",
                 each(
                     s.peerAngles, [&s](size_t i) { s.peerAngles[i].extract(s.peerMatrices[i]); }, AnglePasses));
    const bool buildFine = build.run();
    const bool pointFine = point.run();
    return extract.run() && buildFine && pointFine;
}

bool sums(Scene& s) {
    // Without a target: two counts are looked at in each sum, which keeps sums from being joined over vectors.
    Contest sum("vector sum, after a look at the counts", Count * Passes);
    sum.ours("Zant", each(s.points, [&s](size_t i) { s.points[i] += s.others[i]; }));
    sum.peer("Imath", each(s.peerPoints, [&s](size_t i) { s.peerPoints[i] += s.peerOthers[i]; }));
    return sum.run();
}

bool lengths(Scene& s) {
    Contest contest("vector length", Count * Passes);
    contest.ours("Zant lengths, all in one call",
                 passes(s.numbers, [&s] { Zant::Vector::lengths(s.numbers.data(), s.others.data(), Count); }), 1.0);
    // Without a target: it is a call, looks at the count, and its sum starts at 0.0.
    contest.ours("Zant", each(s.numbers, [&s](size_t i) { s.numbers[i] = s.others[i].length(); }));
    contest.peer("Imath", each(s.numbers, [&s](size_t i) { s.numbers[i] = s.peerOthers[i].length(); }));
    return contest.run();
}

/// As with rotations, a call for each has no target.
bool vectorProducts(Scene& s) {
    Contest cross("cross product", Count * Passes);
    cross.ours(
        "Zant crosses, all in one call",
        passes(s.results3, [&s] { Zant::Vector::crosses(s.results3.data(), s.points.data(), s.others.data(), Count); }),
        1.0);
    cross.ours("Zant", each(s.results3, [&s](size_t i) { s.results3[i].cross(s.points[i], s.others[i]); }));
    cross.peer("Imath",
               each(s.peerResults3, [&s](size_t i) { s.peerResults3[i] = s.peerPoints[i] % s.peerOthers[i]; }));
    Contest dot("dot product", Count * Passes);
    dot.ours("Zant dots, all in one call",
             passes(s.numbers, [&s] { Zant::Vector::dots(s.numbers.data(), s.points.data(), s.others.data(), Count); }),
             1.0);
    dot.ours("Zant", each(s.numbers, [&s](size_t i) {
                 s.numbers[i] = Zant::Vector::dot(s.points[i].values, s.others[i].values, 3);
             }));
    dot.peer("Imath", each(s.numbers, [&s](size_t i) { s.numbers[i] = s.peerPoints[i] ^ s.peerOthers[i]; }));
    const bool crossFine = cross.run();
    return dot.run() && crossFine;
}

}  // namespace

int main() {
    static Scene scene;
    bool met = products(scene);
    met &= inverses(scene);
    met &= points(scene);
    met &= manyPoints(scene);
    met &= rotations(scene);
    met &= angles(scene);
    met &= sums(scene);
    met &= lengths(scene);
    met &= vectorProducts(scene);
    return met ? 0 : 1;
}
