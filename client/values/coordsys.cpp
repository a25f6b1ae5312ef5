#include "client/values/coordsys.h"

#include <algorithm>

#include "client/values/arithmetic.inl"

namespace Zant {

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
    if (where.count == 3) std::copy_n(where.values, 3, position);
}

void CoordSys::set(const ZantAxesCore& orientation) {
    Axes::copy(axes, orientation);
}

int CoordSys::transform(Vector& point, char inverse) const {
    Matrix3x3 matrix;
    Axes::toMatrix(axes, matrix);
    if (inverse) {
        matrix.inverse();
        point -= getVector();
        Arithmetic::rotate(point.values, matrix.m);
    } else {
        Arithmetic::rotate(point.values, matrix.m);
        point += getVector();
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
