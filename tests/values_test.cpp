// The value types against a second evaluation, written term by term as the geometry is defined, compared bit by bit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "client/values/varlen.h"
#include "tests/literalgeometry.h"

using namespace Zant;
using Literal::Nine;
using Literal::sameBits;

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

// ---- Random values: ordinary ones, and now and then one that is easily got wrong ----

class Source {
public:
    explicit Source(unsigned seed) : generator(seed) {}

    double ordinary(double limit = 10.0) { return std::uniform_real_distribution<double>(-limit, limit)(generator); }

    double any() {
        const double odd[] = {0.0, -0.0, 1.0, -1.0, 1e-310, 1e300, Infinity, NotANumber};
        const unsigned pick = generator() % 64;
        return pick < 8 ? odd[pick] : pick < 24 ? odd[pick % 4] : ordinary();
    }

    Nine matrix() {
        Nine out;
        for (double& element : out.m) {
            element = any();
        }
        return out;
    }

    ZantAxesCore axes(int rows) {
        ZantAxesCore out = {};
        std::memcpy(out.m, matrix().m, sizeof out.m);
        out.rows = rows;
        return out;
    }

    /// Angles within the ranges that a decomposition gives, positive scales.
    AxesHpb angles() {
        return {ordinary(Pi),        ordinary(1.5),       ordinary(Pi),
                1.5 + ordinary(1.0), 1.5 + ordinary(1.0), 1.5 + ordinary(1.0)};
    }

private:
    std::mt19937 generator;
};

Matrix3x3 asMatrix3x3(const Nine& a) {
    Matrix3x3 out;
    std::memcpy(out.m, a.m, sizeof a.m);
    return out;
}

Axes asAxes(const ZantAxesCore& core) {
    return core;
}

}  // namespace

// ---- Vectors ----

TEST(Values, VectorsActOnTheComponentsInUse) {
    Vector a(1, 2, 3);
    a += Vector(1, 1);
    a -= Vector(1, 1, 1, 1);
    EXPECT_TRUE(sameBits(a.values, {1, 2, 3, 0}));
    a += a;
    a -= Vector(0, 0, 1);
    a *= -0.5;
    EXPECT_TRUE(sameBits(a.values, {-1, -2, -2.5, 0}));
    Vector pixel(3, 4);
    pixel.values[2] = 7;
    EXPECT_EQ(pixel.length(), 5);
    pixel *= 2;
    EXPECT_TRUE(sameBits(pixel.values, {6, 8, 7, 0}));
    for (int count : {0, -1}) {
        pixel.count = count;
        pixel += pixel;
        pixel *= 2;
        EXPECT_TRUE(sameBits(pixel.values, {6, 8, 7, 0}));
        EXPECT_EQ(pixel.length(), 0);
    }
}

TEST(Values, CrossAndDot) {
    Vector x(1, 0), y(0, 1, 0, 9);
    x.cross(x, y);
    EXPECT_TRUE(sameBits(x.values, {0, 0, 1, 0}));
    EXPECT_EQ(x.count, 3);
    y.cross(Vector(1, 2, 3), y);
    EXPECT_TRUE(sameBits(y.values, {-3, 0, 1, 9}));
    const double a[] = {-0.0, 1e16, 1, 1}, b[] = {1, 1, 1, 1};
    EXPECT_TRUE(sameBits(Vector::dot(a, b, 1), 0.0)) << "the sum starts at +0";
    EXPECT_EQ(Vector::dot(a, b, 4), 1e16) << "and goes upward";
    EXPECT_TRUE(sameBits(Vector::dot(a, b, 0), 0.0));
}

// ---- Matrices ----

TEST(Values, MatricesMatchTheLiteralEvaluation) {
    Source source(1);
    for (int round = 0; round < 20000; ++round) {
        const Nine a = source.matrix(), b = source.matrix();
        Matrix3x3 product = asMatrix3x3(a), transposed = product, inverse;
        product.multiply(asMatrix3x3(b));
        ASSERT_TRUE(sameBits(product.m, Literal::product(a, b).m));
        transposed.multiplyTransposed(asMatrix3x3(b));
        ASSERT_TRUE(sameBits(transposed.m, Literal::product(a, b, true).m));
        asMatrix3x3(a).inverse(inverse);
        ASSERT_TRUE(sameBits(inverse.m, Literal::inverse(a).m));
        ASSERT_TRUE(sameBits(asMatrix3x3(a).determinant(), Literal::determinant(a)));
        ASSERT_EQ(asMatrix3x3(a).isRightHanded(), Literal::rightHanded(a));
        double rotated[3] = {b.m[0], b.m[1], b.m[2]}, expected[3] = {b.m[0], b.m[1], b.m[2]};
        asMatrix3x3(a).rotateVector(rotated);
        Literal::rotate(expected, a);
        ASSERT_TRUE(sameBits(rotated, expected));
    }
}

TEST(Values, FourByFourProduct) {
    Source source(2);
    for (int round = 0; round < 5000; ++round) {
        double a[16], b[16], expected[16];
        for (int i = 0; i < 16; ++i) {
            a[i] = source.any();
            b[i] = source.any();
        }
        for (int i = 0; i < 16; ++i) {
            expected[i] = 0.0;
            for (int k = 0; k < 4; ++k) {
                expected[i] += a[i / 4 * 4 + k] * b[4 * k + i % 4];
            }
        }
        Matrix4x4 product(a);
        product.multiply(Matrix4x4(b));
        ASSERT_TRUE(sameBits(product.m, expected));
    }
}

TEST(Values, MatrixOperationsOnThemselves) {
    Source source(3);
    for (int round = 0; round < 1000; ++round) {
        const Nine a = source.matrix();
        Matrix3x3 square = asMatrix3x3(a), transposed = square, inverse = square, twice = square;
        square.multiply(square);
        ASSERT_TRUE(sameBits(square.m, Literal::product(a, a).m));
        transposed.multiplyTransposed(transposed);
        ASSERT_TRUE(sameBits(transposed.m, Literal::product(a, a, true).m));
        inverse.inverse();
        twice.inverse(twice);
        ASSERT_TRUE(sameBits(inverse.m, Literal::inverse(a).m));
        ASSERT_TRUE(sameBits(twice.m, Literal::inverse(a).m));
    }
}

TEST(Values, RotationsAndEulerAngles) {
    const double angles[] = {0.0, -0.0, 0.1, Pi / 2, Pi, -3.0, 1e6, Infinity};
    const int planes[][2] = {{0, 1}, {1, 2}, {2, 0}, {0, 2}};
    for (double angle : angles) {
        for (const auto& plane : planes) {
            Matrix3x3 rotation(9, 9, 9, 9, 9, 9, 9, 9, 9);
            rotation.setRotation(plane[0], plane[1], angle);
            EXPECT_TRUE(sameBits(rotation.m, Literal::rotation(plane[0], plane[1], angle).m)) << angle;
        }
        Matrix3x3 euler;
        euler.fromXYZ(angle, 0.2, 0.3);
        Nine expected = Literal::product(Literal::rotation(0, 1, 0.3), Literal::rotation(0, 2, 0.2));
        EXPECT_TRUE(sameBits(euler.m, Literal::product(expected, Literal::rotation(1, 2, angle)).m)) << angle;
        euler.fromRPY(angle, 0.2, 0.3);
        expected = Literal::product(Literal::rotation(1, 2, angle), Literal::rotation(0, 2, 0.2));
        EXPECT_TRUE(sameBits(euler.m, Literal::product(expected, Literal::rotation(0, 1, 0.3)).m)) << angle;
    }
    double x[3] = {1, 0, 0};
    asMatrix3x3(Literal::rotation(0, 1, Pi / 2)).rotateVector(x);
    EXPECT_NEAR(x[0], 0, 1e-16);
    EXPECT_EQ(x[1], 1);
}

TEST(Values, ExactIdentityAndHandedness) {
    EXPECT_TRUE(Matrix3x3().isEye());
    EXPECT_TRUE(Matrix3x3(1, -0.0, 0, 0, 1, 0, 0, 0, 1).isEye());
    EXPECT_FALSE(Matrix3x3(1, 0, 1e-17, 0, 1, 0, 0, 0, 1).isEye());
    EXPECT_FALSE(Matrix3x3(1, 0, NotANumber, 0, 1, 0, 0, 0, 1).isEye());
    EXPECT_TRUE(Matrix3x3().isRightHanded());
    EXPECT_FALSE(Matrix3x3(1, 0, 0, 0, 1, 0, 0, 0, -1).isRightHanded());
    EXPECT_FALSE(Matrix3x3(1, 0, 0, 0, 1, 0, 1, 1, 0).isRightHanded());
    Matrix3x3 diagonal(2, 0, 0, 0, 4, 0, 0, 0, 8), zero(0, 0, 0, 0, 0, 0, 0, 0, 0);
    diagonal.inverse();
    EXPECT_EQ(diagonal(0, 0), 0.5);
    EXPECT_EQ(diagonal(1, 1), 0.25);
    EXPECT_EQ(diagonal(2, 2), 0.125);
    zero.inverse();
    EXPECT_TRUE(std::isnan(zero(0, 0)));
}

TEST(Values, FourByFourConversions) {
    const double elements[16] = {0, 2, 0, 50, 0, 0, 3, 60, 4, 0, 0, 70, 2, 4, 6, 2};
    const Matrix4x4 matrix(elements);
    const Vector position = matrix;
    EXPECT_TRUE(sameBits(position.values, {1, 2, 3, 0}));
    EXPECT_EQ(position.count, 3);
    const Axes axes = matrix;
    EXPECT_EQ(axes.rows, 3);
    EXPECT_TRUE(sameBits(axes.m, {0, 2, 0, 0, 0, 3, 4, 0, 0}));
    const AxesHpb angles = matrix;
    double expected[9] = {};
    Literal::toAxes(expected, Literal::matrix(axes));
    EXPECT_EQ(angles.rows, 2);
    EXPECT_TRUE(sameBits(angles.m, expected));
    const CoordSys system(matrix);
    EXPECT_TRUE(sameBits(system.position, {1, 2, 3}));
    EXPECT_TRUE(sameBits(system.axes.m, axes.m));
    Matrix3x3 linear;
    Matrix4x4(asMatrix3x3({{1, 2, 3, 4, 5, 6, 7, 8, 9}}), 10, 11, 12).toMatrix3x3(linear);
    EXPECT_TRUE(sameBits(linear.m, {1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

// ---- Axes ----

TEST(Values, AnglesAndMatricesMatchTheLiteralEvaluation) {
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

TEST(Values, CompositionMatchesTheLiteralEvaluationInEveryForm) {
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

TEST(Values, CopiesTakeTheRowsInUse) {
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

TEST(Values, Eyes) {
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

TEST(Values, ConversionsByForm) {
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
    Axes::asAxesHpb(matrix, hpb);
    EXPECT_TRUE(sameBits(hpb.m, {1, 2, 3, 4, 5, 6, 0, 0, 0})) << "whatever the form";
    hpb = Matrix3x3(1, 0, 0, 0, 1, 0, 0, 0, -1);
    EXPECT_TRUE(sameBits(hpb.m, {-0.0, -0.0, 0, 1, 1, -1, 0, 0, 0})) << "a mirror is a negative z scale";
    hpb = Matrix3x3(2, 0, 0, 0, 3, 0, 0, 0, 4);
    EXPECT_TRUE(sameBits(hpb.m, {0, -0.0, 0, 2, 3, 4, 0, 0, 0}));
}

TEST(Values, ScalesByForm) {
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

TEST(Values, PointsMatchTheLiteralEvaluation) {
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

TEST(Values, CoordinateSystemsKeepPositionAndForm) {
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

TEST(Values, CoordinateSystemsComposePositionAndAxes) {
    Source source(7);
    for (char inverse : {'\0', '\1'}) {
        const CoordSys system(Vector(1, 2, 3), source.angles());
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

// ---- Round trips ----

TEST(Values, AnglesSurviveTheMatrix) {
    Source source(8);
    for (int round = 0; round < 10000; ++round) {
        const AxesHpb angles = source.angles();
        Matrix3x3 matrix;
        matrix.fromAxes(angles);
        AxesHpb back;
        back = matrix;
        for (int i = 0; i < 6; ++i) {
            ASSERT_NEAR(back.m[i], angles.m[i], 1e-12) << "value " << i;
        }
    }
    double z[3] = {0, 0, 1};
    Matrix3x3 heading;
    heading.fromAxes(AxesHpb(Pi / 2, 0, 0));
    heading.rotateVector(z);
    EXPECT_EQ(z[0], 1) << "heading turns z towards x";
}

TEST(Values, PointsReturn) {
    Source source(10);
    for (int round = 0; round < 10000; ++round) {
        const AxesHpb angles = source.angles();
        Matrix3x3 matrix;
        matrix.fromAxes(angles);
        const Vector position(source.ordinary(), source.ordinary(), source.ordinary());
        const Vector start(source.ordinary(), source.ordinary(), source.ordinary());
        for (const CoordSys& system : {CoordSys(position, angles), CoordSys(position, matrix)}) {
            Vector point = start;
            system.transform(point, 0);
            system.transform(point, 1);
            point -= start;
            ASSERT_LT(point.length(), 1e-12);
        }
    }
}

// ---- Lists ----

TEST(Values, ListsPointAtTheItemsOfTheirArrays) {
    const Vector array[] = {{1, 2}, {3, 4}};
    std::vector<CoordSys> systems(3);
    Symbol* const symbols[] = {nullptr, nullptr};
    const VarLenVector vectors = array;
    EXPECT_EQ(vectors.count, 2u);
    EXPECT_EQ(vectors.items, array);
    EXPECT_EQ(VarLenVector(array, 1).count, 1u);
    EXPECT_EQ(VarLenCoordSys(systems).items, systems.data());
    EXPECT_EQ(VarLenCoordSys(systems).count, 3u);
    EXPECT_EQ(VarLenSymbol(symbols).items, symbols);
    EXPECT_EQ(VarLenSymbol(symbols).count, 2u);
    EXPECT_EQ(VarLenDouble().count, 0u);
    struct Larger : Vector {
        int more;
    };
    EXPECT_FALSE((std::is_convertible_v<std::vector<Larger>, VarLenVector>)) << "another stride";
    EXPECT_FALSE((std::is_convertible_v<std::vector<double>, VarLenDouble>));
    EXPECT_TRUE((std::is_convertible_v<std::vector<Symbol*>, VarLenSymbol>));
}
