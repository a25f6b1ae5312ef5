#ifndef ZANT_CLIENT_VALUES_COORDSYS_H
#define ZANT_CLIENT_VALUES_COORDSYS_H

#include "client/values/axes.h"

namespace Zant {

/// A position and an orientation: a point p of the system lies at p * axes + position outside of it.
///
/// Copying takes the position and, of the axes, the form and the rows in use. Comparisons are exact.
///
/// Threads: a plain record; several threads may read it, or one thread at a time changes it.
class CoordSys : public ZantCoordSysCore {
public:
    /// At the origin with the eye.
    CoordSys() : ZantCoordSysCore{{}, {{}, 0}} {}
    /// Takes the position when its count is 3, and is at the origin otherwise.
    CoordSys(const Vector& position, const Axes& axes);
    CoordSys(const ZantCoordSysCore& core);
    /// The translation divided by its weight, and the upper-left block in matrix form.
    CoordSys(const Matrix4x4& matrix);

    CoordSys(const CoordSys& other);
    CoordSys& operator=(const CoordSys& other);

    /// Replaces the position when the vector's count is 3; changes nothing otherwise.
    void set(const ZantVectorCore& position);
    /// Replaces the axes.
    void set(const ZantAxesCore& axes);

    /// Takes a point out of this system (into it, when inverse is not 0). A vector whose count is not 3 has its first
    /// three components rotated and is not moved.
    /// @return 1
    int transform(Vector& point, char inverse) const;
    /// The same for each of a number of points; the matrix of the axes, or its inverse, is formed once for all of them.
    int transform(Vector* points, size_t number, char inverse) const;
    /// Takes a coordinate system out of this one (into it, when inverse is not 0): its position as a point, its axes as
    /// Axes::transform() does. The target may be this object.
    /// @return 1
    int transform(CoordSys& target, char inverse) const;

    /// Back to the origin and the eye.
    void clear();

    Axes getAxes() const;
    /// The position, with count 3.
    Vector getVector() const;

    bool isCenteredAtZero() const;
    bool isEyeAxes() const;
};
static_assert(sizeof(CoordSys) == 104, "the stride of coordinate systems in lists");

}  // namespace Zant

#endif
