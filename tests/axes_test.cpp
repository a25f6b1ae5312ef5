// Axes in their forms and coordinate systems; what they compute is compared bit by bit with a literal evaluation.
#include <gtest/gtest.h>

#include "client/values/coordsys.h"
#include "tests/literalgeometry.h"

using namespace Zant;
using Literal::asMatrix3x3;
using Literal::Nine;
using Literal::sameBits;
using Literal::Source;

namespace {

Axes asAxes(const ZantAxesCore& core) {
    return core;
}

}  // namespace

TEST(Axes, AnglesAndMatricesMatchTheLiteralEvaluation) {
    Source source(4);
    for (int round = 0; round < 20000; ++round) {
        const ZantAxesCore core = source.axes(2);
        const AxesHpb angles(core);
        Matrix3x3 matrix;
        matrix.fromAxes(angles);
        ASSERT_TRUE(sameBits(matrix.m, Literal::fromAxes(core.m).m));

        const Nine other = source.matrix();
        AxesHpb decomposed;
        double expected[9] = {};
        Matrix3x3 scratch = asMatrix3x3(other);
        Matrix3x3::toAxes(&decomposed, scratch);
        ASSERT_TRUE(sameBits(scratch.m, Literal::toAxes(expected, other).m));
        ASSERT_TRUE(sameBits(decomposed.m, expected));

        AxesHpb product = angles;
        product *= asMatrix3x3(other);
        Literal::toAxes(expected, Literal::product(Literal::fromAxes(core.m), other));
        ASSERT_TRUE(sameBits(product.m, expected));
        product = angles;
        product *= product;
        Literal::toAxes(expected, Literal::product(Literal::fromAxes(core.m), Literal::fromAxes(core.m)));
        ASSERT_TRUE(sameBits(product.m, expected));
    }
}

TEST(Axes, CompositionMatchesTheLiteralEvaluationInEveryForm) {
    Source source(5);
    const int forms[] = {0, 2, 3, -1, 1};
    int compared = 0;
    for (int round = 0; round < 1000; ++round) {
        for (int form : forms) {
            for (int targetForm : forms) {
                for (char inverse : {'\0', '\1'}) {
                    const ZantAxesCore core = source.axes(form);
                    ZantAxesCore target = source.axes(targetForm);
                    // Wrapped by reference: a copy would drop the rows that are not in use.
                    Axes transforming;
                    static_cast<ZantAxesCore&>(transforming) = core;
                    const ZantAxesCore expected = Literal::compose(core, target, inverse != 0);
                    transforming.transform(target, inverse);
                    ASSERT_EQ(target.rows, expected.rows);
                    ASSERT_TRUE(sameBits(target.m, expected.m)) << form << " onto " << targetForm;
                    static_cast<ZantAxesCore&>(transforming) = core;
                    const ZantAxesCore onItself = Literal::compose(core, core, inverse != 0);
                    transforming.transform(transforming, inverse);
                    ASSERT_TRUE(sameBits(transforming.m, onItself.m)) << form << " onto itself";
                    ++compared;
                }
            }
        }
    }
    EXPECT_EQ(compared, 50000);
}

TEST(Axes, CopiesTakeTheRowsInUse) {
    for (int rows : {-1, 0, 1, 2, 3}) {
        ZantAxesCore source = {{1, 2, 3, 4, 5, 6, 7, 8, 9}, rows};
        ZantAxesCore target = {{-1, -1, -1, -1, -1, -1, -1, -1, -1}, 3};
        Axes assigned = target;
        const Axes constructed = source;
        Axes::copy(target, source);
        assigned = asAxes(source);
        for (int i = 0; i < 9; ++i) {
            const double value = i < 3 * rows ? i + 1 : -1;
            EXPECT_EQ(target.m[i], value) << rows;
            EXPECT_EQ(assigned.m[i], value) << rows;
            EXPECT_EQ(constructed.m[i], i < 3 * rows ? i + 1 : 0) << rows;
        }
        EXPECT_EQ(target.rows, rows);
        EXPECT_EQ(assigned.rows, rows);
        EXPECT_EQ(constructed.rows, rows);
    }
}

TEST(Axes, Eyes) {
    struct Row {
        ZantAxesCore axes;
        bool eye;
    };
    const Row rows[] = {
        {{{7, 7, 7, 7, 7, 7, 7, 7, 7}, 0}, true},   {{{0, -0.0, 0, 1, 1, 1, 7, 7, 7}, 2}, true},
        {{{0, 0, 0, 1, 1, 2, 0, 0, 0}, 2}, false},  {{{1e-300, 0, 0, 1, 1, 1, 0, 0, 0}, 2}, false},
        {{{1, 0, 0, 0, 1, 0, 0, 0, 1}, 3}, true},   {{{1, 0, 0, 0, 1, 0, 0, 1e-17, 1}, 3}, false},
        {{{0, 0, 0, 1, 1, 1, 0, 0, 0}, 1}, false},  {{{1, 0, 0, 0, 1, 0, 0, 0, 1}, 4}, false},
        {{{0, 0, 0, 1, 1, 1, 0, 0, 0}, -1}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Axes::isEye(row.axes), row.eye) << row.axes.rows;
    }
}

TEST(Axes, ConversionsByForm) {
    const Axes eye, angles = AxesHpb(1, 2, 3, 4, 5, 6), matrix = Matrix3x3(1, 2, 3, 4, 5, 6, 7, 8, 9);
    AxesHpb hpb(9, 9, 9, 2, 2, 2);
    Matrix3x3 full;
    EXPECT_FALSE(eye.isAxesHpb(hpb) || matrix.isAxesHpb(hpb) || eye.isMatrix(full) || angles.isMatrix(full));
    EXPECT_TRUE(full.isEye());
    EXPECT_TRUE(sameBits(hpb.m, {9, 9, 9, 2, 2, 2, 0, 0, 0}));
    EXPECT_TRUE(angles.isAxesHpb(hpb));
    EXPECT_TRUE(sameBits(hpb.m, {1, 2, 3, 8, 10, 12, 0, 0, 0})) << "scales multiply";
    EXPECT_TRUE(matrix.isMatrix(full));
    EXPECT_TRUE(sameBits(full.m, matrix.m));
    Axes::toAxesHpb(eye, hpb);
    EXPECT_TRUE(sameBits(hpb.m, {0, 0, 0, 1, 1, 1, 0, 0, 0}));
    Axes::toMatrix(eye, full);
    EXPECT_TRUE(full.isEye());
    hpb.rows = -1;
    Axes::asAxesHpb(matrix, hpb);
    EXPECT_EQ(hpb.rows, 2);
    EXPECT_TRUE(sameBits(hpb.m, {1, 2, 3, 4, 5, 6, 0, 0, 0})) << "whatever the form";
    hpb = Matrix3x3(1, 0, 0, 0, 1, 0, 0, 0, -1);
    EXPECT_TRUE(sameBits(hpb.m, {-0.0, -0.0, 0, 1, 1, -1, 0, 0, 0})) << "a mirror is a negative z scale";
    hpb = Matrix3x3(2, 0, 0, 0, 3, 0, 0, 0, 4);
    EXPECT_TRUE(sameBits(hpb.m, {0, -0.0, 0, 2, 3, 4, 0, 0, 0}));
}

TEST(Axes, CopiesThreeRowsAtMost) {
    struct Guarded {
        ZantAxesCore axes;
        double after[3];
    } source{}, target{};
    source.axes.rows = 4;
    source.after[0] = source.axes.m[8] = 7;
    Axes::copy(target.axes, source.axes);
    EXPECT_EQ(target.axes.rows, 4);
    EXPECT_EQ(target.axes.m[8], 7);
    EXPECT_EQ(target.after[0], 0);
}

TEST(Axes, ScalesByForm) {
    double scales[3];
    Axes matrix = Matrix3x3(3, 4, 0, 0, 5, 12, 2, 3, 6), angles = AxesHpb(0, 0, 0, 2, 3, -4), eye;
    matrix.getScale(scales);
    EXPECT_TRUE(sameBits(scales, {5, 13, 7}));
    angles.getScale(scales);
    EXPECT_TRUE(sameBits(scales, {2, 3, -4}));
    eye.getScale(scales);
    EXPECT_TRUE(sameBits(scales, {1, 1, 1}));
    EXPECT_TRUE(sameBits(matrix.scale(2, 3, 5).m, {6, 12, 0, 0, 15, 60, 4, 9, 30})) << "by columns";
    EXPECT_TRUE(sameBits(angles.scale(2, 1, 3).m, {0, 0, 0, 4, 3, -12, 0, 0, 0}));
    EXPECT_EQ(eye.scale(2, 2, 2).rows, 0);
    EXPECT_TRUE(Axes::isEye(eye));
}

// ---- Coordinate systems ----

TEST(Axes, PointsMatchTheLiteralEvaluation) {
    Source source(6);
    for (int round = 0; round < 20000; ++round) {
        const int form = (round % 5) - 1;
        const bool inverse = round % 2 != 0;
        const CoordSys system(Vector(source.any(), source.any(), source.any()), Axes(source.axes(form)));
        Vector point(source.any(), source.any(), source.any(), source.any());
        point.count = 2 + round % 3;
        Vector expected = point;
        Nine matrix = Literal::matrix(system.axes);
        if (inverse) matrix = Literal::inverse(matrix);
        const bool moves = point.count == 3;
        for (int i = 0; moves && inverse && i < 3; ++i) {
            expected.values[i] -= system.position[i];
        }
        Literal::rotate(expected.values, matrix);
        for (int i = 0; moves && !inverse && i < 3; ++i) {
            expected.values[i] += system.position[i];
        }
        Vector points[] = {point, Vector(1, 2), point};
        EXPECT_EQ(system.transform(point, inverse), 1);
        EXPECT_EQ(system.transform(points, 3, inverse), 1);
        ASSERT_TRUE(sameBits(point.values, expected.values)) << form;
        ASSERT_TRUE(sameBits(points[0].values, expected.values)) << form;
        ASSERT_TRUE(sameBits(points[2].values, expected.values)) << form;
    }
}

TEST(Axes, CoordinateSystemsKeepPositionAndForm) {
    const AxesHpb angles(1, 2, 3);
    EXPECT_TRUE(CoordSys().isCenteredAtZero() && CoordSys().isEyeAxes());
    EXPECT_TRUE(CoordSys(Vector(1, 2), angles).isCenteredAtZero());
    CoordSys system(Vector(1, 2, 3), angles);
    system.set(Vector(9, 9, 9, 9));
    EXPECT_TRUE(sameBits(system.getVector().values, {1, 2, 3, 0}));
    EXPECT_EQ(system.getAxes().rows, 2);
    const CoordSys copy(system);
    system = CoordSys(Vector(4, 0, 0), Axes());
    EXPECT_FALSE(system.isCenteredAtZero());
    EXPECT_TRUE(system.isEyeAxes());
    EXPECT_EQ(system.axes.m[0], 1) << "rows beyond those in use stay";
    EXPECT_TRUE(sameBits(copy.position, {1, 2, 3}));
    system = copy;
    system.clear();
    EXPECT_TRUE(system.isCenteredAtZero() && system.isEyeAxes());
    EXPECT_EQ(system.axes.m[0], 1);
    EXPECT_TRUE(sameBits(Axes(angles).toCoordSys(4, 5, 6).position, {4, 5, 6}));
    EXPECT_TRUE(Axes(angles).toCoordSys().isCenteredAtZero());
}

TEST(Axes, CoordinateSystemsComposePositionAndAxes) {
    for (char inverse : {'\0', '\1'}) {
        const CoordSys system(Vector(1, 2, 3), AxesHpb(0.5, -0.25, 2, 2, 3, 0.5));
        const Axes axes = Matrix3x3(1, 2, 0, 0, 1, 0, 3, 0, 1);
        CoordSys target = axes.toCoordSys(4, 5, 6), itself = system;
        Vector point = target.getVector();
        system.transform(point, inverse);
        EXPECT_EQ(system.transform(target, inverse), 1);
        EXPECT_TRUE(sameBits(target.getVector().values, point.values));
        EXPECT_EQ(target.axes.rows, 2);
        EXPECT_TRUE(sameBits(target.axes.m, Literal::compose(system.axes, axes, inverse != 0).m));
        point = system.getVector();
        system.transform(point, inverse);
        itself.transform(itself, inverse);
        EXPECT_TRUE(sameBits(itself.getVector().values, point.values));
        EXPECT_TRUE(sameBits(itself.axes.m, Literal::compose(system.axes, system.axes, inverse != 0).m));
    }
}
