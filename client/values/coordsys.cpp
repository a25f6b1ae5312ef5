#include "client/values/coordsys.h"

#include <algorithm>

#include "client/values/arithmetic.inl"

namespace Zant {

namespace {

using Arithmetic::Row3;

/// A system ready to move points: the rows of its matrix, or of the inverse, and its position.
struct Mover {
    Row3 x, y, z, offset;

    Mover(const double* matrix, const double* position) : x(matrix), y(matrix + 3), z(matrix + 6), offset(position) {}

    void moveOut(Vector& point) const {
        Row3 moved = Arithmetic::times(Row3(point.values), x, y, z);
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): set with the base class
        if (point.count == 3) moved = moved + offset;
        moved.store(point.values);
    }

    void moveInto(Vector& point) const {
        Row3 moved(point.values);
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): the same
        if (point.count == 3) moved = moved - offset;
        Arithmetic::times(moved, x, y, z).store(point.values);
    }
};

/// For a system in the matrix form. Not inline, or the way out would make room for the inverse, too.
ZANT_NOINLINE void moveInto(const CoordSys& system, Vector& point) {
    double inverted[9];
    Arithmetic::invert(inverted, system.axes.m);
    Mover(inverted, system.position).moveInto(point);
}

}  // namespace

CoordSys Axes::toCoordSys() const {
    return toCoordSys(0.0, 0.0, 0.0);
}

CoordSys Axes::toCoordSys(double x, double y, double z) const {
    return CoordSys(Vector(x, y, z), *this);
}

CoordSys::CoordSys(const Vector& where, const Axes& orientation) : CoordSys() {
    set(where);
    set(orientation);
}

CoordSys::CoordSys(const ZantCoordSysCore& core) : CoordSys() {
    std::copy_n(core.position, 3, position);
    set(core.axes);
}

CoordSys::CoordSys(const Matrix4x4& matrix) : CoordSys(static_cast<Vector>(matrix), Axes(matrix)) {}

CoordSys::CoordSys(const CoordSys& other) : CoordSys(static_cast<const ZantCoordSysCore&>(other)) {}

CoordSys& CoordSys::operator=(const CoordSys& other) {
    set(other.getVector());
    set(other.axes);
    return *this;
}

void CoordSys::set(const ZantVectorCore& where) {
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): the same
    if (where.count == 3) std::copy_n(where.values, 3, position);
}

void CoordSys::set(const ZantAxesCore& orientation) {
    Axes::copy(axes, orientation);
}

int CoordSys::transform(Vector& point, char inverse) const {
    if (axes.rows != 3) return transform(&point, 1, inverse);
    if (inverse) {
        moveInto(*this, point);
    } else {
        Mover(axes.m, position).moveOut(point);
    }
    return 1;
}

int CoordSys::transform(Vector* points, size_t number, char inverse) const {
    double room[9];
    const double* matrix = Arithmetic::matrixOf(axes, room);
    if (inverse) {
        Arithmetic::invert(room, matrix);
        const Mover mover(room, position);
        std::for_each(points, points + number, [&mover](Vector& point) { mover.moveInto(point); });
    } else {
        const Mover mover(matrix, position);
        std::for_each(points, points + number, [&mover](Vector& point) { mover.moveOut(point); });
    }
    return 1;
}

int CoordSys::transform(CoordSys& target, char inverse) const {
    Vector point = target.getVector();
    transform(point, inverse);
    target.set(point);
    getAxes().transform(target.axes, inverse);
    return 1;
}

void CoordSys::clear() {
    std::fill_n(position, 3, 0.0);
    axes.rows = 0;
}

Axes CoordSys::getAxes() const {
    return axes;
}

Vector CoordSys::getVector() const {
    return {position[0], position[1], position[2]};
}

bool CoordSys::isCenteredAtZero() const {
    return position[0] == 0.0 && position[1] == 0.0 && position[2] == 0.0;
}

bool CoordSys::isEyeAxes() const {
    return Axes::isEye(axes);
}

}  // namespace Zant
