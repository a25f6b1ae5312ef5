// Vectors, matrices and lists; what they compute is compared bit by bit with a literal evaluation.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "client/values/varlen.h"
#include "tests/literalgeometry.h"

using namespace Zant;
using Literal::asMatrix3x3;
using Literal::Nine;
using Literal::sameBits;
using Literal::Source;

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
    // An engine may deliver any count: nothing after the components is touched.
    struct {
        Vector vector{1, 1, 1, 1};
        double after[4] = {1, 1, 1, 1};
    } lying;
    for (int count : {5, 9, 100000}) {
        lying.vector = Vector(1, 1, 1, 1);
        lying.vector.count = count;
        EXPECT_EQ(lying.vector.length(), 2);
        lying.vector += lying.vector;
        lying.vector -= Vector(lying.vector);
        lying.vector *= 2;
        EXPECT_TRUE(sameBits(lying.vector.values, {0, 0, 0, 0}));
        EXPECT_TRUE(sameBits(lying.after, {1, 1, 1, 1}));
        EXPECT_EQ(lying.vector.count, count);
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

// ---- Many at once ----

bool same(const Vector& a, const Vector& b) {
    return sameBits(a.values, b.values) && a.count == b.count;
}

// Into arrays of their own and into those that are read; nothing after the last one is touched.
TEST(Values, ManyAtOnceAreAsEachAlone) {
    constexpr size_t most = 5;
    using Vectors = std::array<Vector, most>;
    Source source(4);
    const auto any = [&] {
        Vector vector(source.any(), source.any(), source.any(), source.any());
        vector.count = std::array{3, 3, 4, 3, 2, 3, 1, 0, 3, -1, 9}[source.pick(11)];
        return vector;
    };
    for (int round = 0; round < 5000; ++round) {
        const size_t number = source.pick(most + 1);
        const Matrix3x3 matrix = asMatrix3x3(source.matrix());
        Vectors a, b, product{};
        std::generate(a.begin(), a.end(), any);
        std::generate(b.begin(), b.end(), any);
        Vectors rotated = a, left = a, right = b;
        std::array<double, most> lengths{}, dots{};
        matrix.rotateVectors(rotated.data(), number);
        Vector::lengths(lengths.data(), a.data(), number);
        Vector::dots(dots.data(), a.data(), b.data(), number);
        Vector::crosses(product.data(), a.data(), b.data(), number);
        Vector::crosses(left.data(), left.data(), b.data(), number);
        Vector::crosses(right.data(), a.data(), right.data(), number);
        for (size_t i = 0; i < most; ++i) {
            const bool isIn = i < number;
            const auto crossed = [&](Vector target) {
                if (isIn) target.cross(a[i], b[i]);
                return target;
            };
            Vector alone = a[i];
            if (isIn) matrix.rotateVector(alone.values);
            EXPECT_TRUE(same(rotated[i], alone));
            EXPECT_TRUE(sameBits(lengths[i], isIn ? a[i].length() : 0.0));
            EXPECT_TRUE(sameBits(dots[i], isIn ? Vector::dot(a[i].values, b[i].values, 3) : 0.0));
            EXPECT_TRUE(same(product[i], crossed(Vector())));
            EXPECT_TRUE(same(left[i], crossed(a[i])) && same(right[i], crossed(b[i])));
        }
    }
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

        Matrix3x3 square = asMatrix3x3(a), squareTransposed = square, itself = square;
        square.multiply(square);
        ASSERT_TRUE(sameBits(square.m, Literal::product(a, a).m));
        squareTransposed.multiplyTransposed(squareTransposed);
        ASSERT_TRUE(sameBits(squareTransposed.m, Literal::product(a, a, true).m));
        itself.inverse(itself);
        ASSERT_TRUE(sameBits(itself.m, Literal::inverse(a).m));

        ASSERT_TRUE(sameBits(asMatrix3x3(a).determinant(), Literal::determinant(a)));
        ASSERT_EQ(asMatrix3x3(a).isRightHanded(), Literal::rightHanded(a));
        double rotated[3] = {b.m[0], b.m[1], b.m[2]}, expected[3] = {b.m[0], b.m[1], b.m[2]};
        asMatrix3x3(a).rotateVector(rotated);
        Literal::rotate(expected, a);
        ASSERT_TRUE(sameBits(rotated, expected));
    }
}

TEST(Values, FourByFourProducts) {
    Source source(2);
    for (int round = 0; round < 5000; ++round) {
        double a[16], b[16], turned[16], expected[16];
        for (int i = 0; i < 16; ++i) {
            a[i] = source.any();
            b[i] = turned[i % 4 * 4 + i / 4] = source.any();
        }
        for (int i = 0; i < 16; ++i) {
            expected[i] = 0.0;
            for (int k = 0; k < 4; ++k) {
                expected[i] += a[i / 4 * 4 + k] * b[4 * k + i % 4];
            }
        }
        Matrix4x4 product(a), byTransposed(a);
        product.multiply(Matrix4x4(b));
        byTransposed.multiplyTransposed(Matrix4x4(turned));
        ASSERT_TRUE(sameBits(product.m, expected));
        ASSERT_TRUE(sameBits(byTransposed.m, expected));
    }
}

TEST(Values, RotationsAndEulerAngles) {
    const double angles[] = {0.0, -0.0, 0.1, Literal::Pi / 2, Literal::Pi, -3.0, 1e6, Literal::Infinity};
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
}

TEST(Values, ExactIdentityAndHandedness) {
    EXPECT_TRUE(Matrix3x3().isEye());
    EXPECT_TRUE(Matrix3x3(1, -0.0, 0, 0, 1, 0, 0, 0, 1).isEye());
    EXPECT_FALSE(Matrix3x3(1, 0, 1e-17, 0, 1, 0, 0, 0, 1).isEye());
    EXPECT_FALSE(Matrix3x3(1, 0, Literal::NotANumber, 0, 1, 0, 0, 0, 1).isEye());
    EXPECT_TRUE(Matrix3x3().isRightHanded());
    EXPECT_FALSE(Matrix3x3(1, 0, 0, 0, 1, 0, 0, 0, -1).isRightHanded());
    EXPECT_FALSE(Matrix3x3(1, 0, 0, 0, 1, 0, 1, 1, 0).isRightHanded());
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
