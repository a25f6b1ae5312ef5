#ifndef ZANT_MODERN_ANGLES_H
#define ZANT_MODERN_ANGLES_H

#include <type_traits>

#include "client/values/axes.h"
#include "client/values/coordsys.h"

namespace zant {

using vector = Zant::Vector;
using matrix3x3 = Zant::Matrix3x3;
using matrix4x4 = Zant::Matrix4x4;

namespace detail {

/// A record of the client's, named as such: no list of numbers in braces becomes one, as `{{1, 0, 0}}` could.
template <class Record, class Core, class Face>
using if_record = std::enable_if_t<std::is_base_of_v<Core, Record> && !std::is_base_of_v<Face, Record>>;

}  // namespace detail

class degrees;

/// An angle, given in radians. It converts to degrees and back; a plain number is neither.
class radians {
public:
    constexpr explicit radians(double value) : value_(value) {}
    constexpr radians(degrees angle);
    constexpr double value() const { return value_; }

private:
    double value_;
};

/// An angle, given in degrees.
class degrees {
public:
    constexpr explicit degrees(double value) : value_(value) {}
    constexpr degrees(radians angle) : value_(angle.value() * 180 / 3.14159265358979323846) {}
    constexpr double value() const { return value_; }

private:
    double value_;
};

// The operations of the command language, in its order: an angle in degrees is the same number in every encoding.
constexpr radians::radians(degrees angle) : value_(angle.value() * 3.14159265358979323846 / 180) {}

/// A position in space: a vector that is known to have three components.
struct position {
    double x, y, z;
};

/// An orientation. The eye, the identity, by default.
class axes : public Zant::Axes {
public:
    axes() = default;
    /// Heading, pitch and bank, and a scale per axis.
    axes(radians heading, radians pitch, radians bank, double scale_x = 1, double scale_y = 1, double scale_z = 1)
        : Zant::Axes(Zant::AxesHpb(heading.value(), pitch.value(), bank.value(), scale_x, scale_y, scale_z)) {}
    axes(const matrix3x3& matrix) : Zant::Axes(matrix) {}
    template <class Record, class = detail::if_record<Record, ZantAxesCore, axes>>
    explicit axes(const Record& record) : Zant::Axes(record) {}
};

/// A position and an orientation. At the origin with the eye by default.
class coord_sys : public Zant::CoordSys {
public:
    coord_sys() = default;
    coord_sys(zant::position origin, const zant::axes& orientation = {})
        : Zant::CoordSys(vector(origin.x, origin.y, origin.z), orientation) {}
    coord_sys(const matrix4x4& matrix) : Zant::CoordSys(matrix) {}
    template <class Record, class = detail::if_record<Record, ZantCoordSysCore, coord_sys>>
    explicit coord_sys(const Record& record) : Zant::CoordSys(record) {}
};
static_assert(sizeof(axes) == sizeof(Zant::Axes) && sizeof(coord_sys) == sizeof(Zant::CoordSys), "they add nothing");

}  // namespace zant

#endif
