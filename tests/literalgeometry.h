// A second evaluation of the geometry, written term by term as it is defined and sharing nothing with the library, the
// comparison of results bit by bit, and the values to compare with.
#ifndef ZANT_TESTS_LITERALGEOMETRY_H
#define ZANT_TESTS_LITERALGEOMETRY_H

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "client/records/zant_records.h"
#include "client/values/matrix.h"

namespace Literal {

inline bool sameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

template <size_t Count>
::testing::AssertionResult sameBits(const double (&a)[Count], const double (&b)[Count]) {
    for (size_t i = 0; i < Count; ++i) {
        if (!sameBits(a[i], b[i])) {
            return ::testing::AssertionFailure() << "element " << i << ": " << std::hexfloat << a[i] << " and " << b[i];
        }
    }
    return ::testing::AssertionSuccess();
}

struct Nine {
    double m[9];
};

inline Nine product(const Nine& a, const Nine& b, bool transposed = false) {
    Nine out;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            double sum = 0.0;
            for (int k = 0; k < 3; ++k) {
                sum += a.m[3 * i + k] * (transposed ? b.m[3 * j + k] : b.m[3 * k + j]);
            }
            out.m[3 * i + j] = sum;
        }
    }
    return out;
}

inline Nine rotation(int i, int j, double angle) {
    Nine out = {{1, 0, 0, 0, 1, 0, 0, 0, 1}};
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    out.m[3 * i + i] = c;
    out.m[3 * i + j] = s;
    out.m[3 * j + i] = -s;
    out.m[3 * j + j] = c;
    return out;
}

inline double determinant(const Nine& a) {
    const double(&m)[9] = a.m;
    double det = (m[3] * m[7]) * m[2] + (m[0] * m[4]) * m[8];
    det = det + (m[6] * m[1]) * m[5];
    det = det - (m[3] * m[1]) * m[8];
    det = det - (m[0] * m[7]) * m[5];
    return det - (m[6] * m[4]) * m[2];
}

inline Nine inverse(const Nine& a) {
    const auto e = [&a](int row, int column) { return a.m[3 * row + column]; };
    Nine out;
    out.m[0] = e(1, 1) * e(2, 2) - e(1, 2) * e(2, 1);
    out.m[3] = e(1, 2) * e(2, 0) - e(1, 0) * e(2, 2);
    out.m[6] = e(1, 0) * e(2, 1) - e(1, 1) * e(2, 0);
    out.m[1] = e(0, 2) * e(2, 1) - e(0, 1) * e(2, 2);
    out.m[4] = e(0, 0) * e(2, 2) - e(0, 2) * e(2, 0);
    out.m[7] = e(0, 1) * e(2, 0) - e(0, 0) * e(2, 1);
    out.m[2] = e(0, 1) * e(1, 2) - e(0, 2) * e(1, 1);
    out.m[5] = e(0, 2) * e(1, 0) - e(0, 0) * e(1, 2);
    out.m[8] = e(0, 0) * e(1, 1) - e(0, 1) * e(1, 0);
    const double factor = 1.0 / determinant(a);
    for (double& element : out.m) {
        element *= factor;
    }
    return out;
}

inline void rotate(double* v, const Nine& a) {
    const double old[3] = {v[0], v[1], v[2]};
    for (int c = 0; c < 3; ++c) {
        double sum = 0.0;
        for (int k = 0; k < 3; ++k) {
            sum += old[k] * a.m[3 * k + c];
        }
        v[c] = sum;
    }
}

inline Nine fromAxes(const double* hpb) {
    Nine out = rotation(0, 1, hpb[2]);
    out = product(out, rotation(1, 2, hpb[1]));
    out = product(out, rotation(2, 0, hpb[0]));
    for (int i = 0; i < 9; ++i) {
        out.m[i] *= hpb[3 + i / 3];
    }
    return out;
}

inline double length(const double* row) {
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        sum += row[i] * row[i];
    }
    return std::sqrt(sum);
}

inline bool rightHanded(const Nine& a) {
    const double(&m)[9] = a.m;
    const double cross[3] = {m[1] * m[5] - m[2] * m[4], m[2] * m[3] - m[0] * m[5], m[0] * m[4] - m[1] * m[3]};
    double dot = 0.0;
    for (int i = 0; i < 3; ++i) {
        dot += cross[i] * m[6 + i];
    }
    return dot > 0;
}

/// Writes angles and scales to hpb; returns what is left of the matrix.
inline Nine toAxes(double* hpb, Nine a) {
    for (int r = 0; r < 3; ++r) {
        hpb[3 + r] = length(a.m + 3 * r);
        const double factor = 1.0 / hpb[3 + r];
        for (int c = 0; c < 3; ++c) {
            a.m[3 * r + c] *= factor;
        }
    }
    if (!rightHanded(a)) {
        for (int c = 0; c < 3; ++c) {
            a.m[6 + c] = -a.m[6 + c];
        }
        hpb[5] = -hpb[5];
    }
    hpb[0] = std::atan2(a.m[6], a.m[8]);
    a = product(a, rotation(2, 0, hpb[0]), true);
    hpb[1] = std::atan2(-a.m[7], a.m[8]);
    a = product(a, rotation(1, 2, hpb[1]), true);
    hpb[2] = std::atan2(a.m[1], a.m[0]);
    return a;
}

inline Nine matrix(const ZantAxesCore& axes) {
    Nine out = {{1, 0, 0, 0, 1, 0, 0, 0, 1}};
    if (axes.rows == 3) std::memcpy(out.m, axes.m, sizeof out.m);
    return axes.rows == 3 || axes.rows == 0 ? out : fromAxes(axes.m);
}

inline void angles(double* hpb, const ZantAxesCore& axes) {
    const double neutral[6] = {0, 0, 0, 1, 1, 1};
    std::memcpy(hpb, neutral, sizeof neutral);
    if (axes.rows == 3) {
        toAxes(hpb, matrix(axes));
    } else if (axes.rows != 0) {
        for (int i = 0; i < 3; ++i) {
            hpb[i] = axes.m[i];
            hpb[3 + i] *= axes.m[3 + i];
        }
    }
}

inline ZantAxesCore compose(const ZantAxesCore& axes, ZantAxesCore target, bool inverted) {
    ZantAxesCore before = {};  // a copy, which takes the rows in use
    before.rows = target.rows;
    for (int i = 0; i < 3 * target.rows; ++i) {
        before.m[i] = target.m[i];
    }
    Nine other = matrix(axes);
    if (inverted) other = inverse(other);
    const Nine composed = product(matrix(before), other);
    if (before.rows != 2 && axes.rows != 2) {
        std::memcpy(target.m, composed.m, sizeof composed.m);
        target.rows = 3;
        return target;
    }
    double targetAngles[6], otherAngles[6];
    angles(targetAngles, before);
    angles(otherAngles, axes);
    toAxes(target.m, composed);
    target.m[3] = inverted ? targetAngles[3] / otherAngles[3] : targetAngles[3] * otherAngles[3];
    target.rows = 2;
    return target;
}

constexpr double Pi = 3.14159265358979323846;
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

/// The same matrix as the library has it.
inline Zant::Matrix3x3 asMatrix3x3(const Nine& a) {
    Zant::Matrix3x3 out;
    std::memcpy(out.m, a.m, sizeof a.m);
    return out;
}

/// Random values: ordinary ones, and now and then one that is easily got wrong.
class Source {
public:
    explicit Source(unsigned seed) : generator(seed) {}

    double ordinary() { return std::uniform_real_distribution<double>(-10, 10)(generator); }

    double any() {
        const double odd[] = {0.0, -0.0, 1.0, -1.0, 1e-310, 1e300, Infinity, NotANumber};
        const unsigned pick = generator() % 64;
        return pick < 8 ? odd[pick] : pick < 24 ? odd[pick % 4] : ordinary();
    }

    /// A number below a limit.
    size_t pick(size_t limit) { return generator() % limit; }

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

private:
    std::mt19937 generator;
};

}  // namespace Literal

#endif
