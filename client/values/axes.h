#ifndef ZANT_CLIENT_VALUES_AXES_H
#define ZANT_CLIENT_VALUES_AXES_H

#include "client/values/matrix.h"

namespace Zant {

class CoordSys;

/// Heading, pitch and bank in radians, and a scale per axis (command text shows degrees).
///
/// Always in the angles-and-scale form. Copying takes the six values and leaves the rest of the target as it was.
///
/// Threads: a plain record; several threads may read it, or one thread at a time changes it.
class AxesHpb : public ZantAxesCore {
public:
    /// Angles 0, scales 1.
    AxesHpb() : AxesHpb(0.0, 0.0, 0.0) {}
    AxesHpb(double heading, double pitch, double bank, double scaleX = 1.0, double scaleY = 1.0, double scaleZ = 1.0)
        : ZantAxesCore{{heading, pitch, bank, scaleX, scaleY, scaleZ, 0.0, 0.0, 0.0}, 2} {}
    /// Converts axes of any form, see Axes::toAxesHpb().
    explicit AxesHpb(const ZantAxesCore& axes);
    /// Decomposes the matrix.
    explicit AxesHpb(const Matrix3x3& matrix);
    /// Decomposes the upper-left block.
    explicit AxesHpb(const Matrix4x4& matrix);

    AxesHpb(const AxesHpb& other);
    AxesHpb& operator=(const AxesHpb& other);

    /// Decomposes the matrix.
    AxesHpb& operator=(const Matrix3x3& matrix);
    /// Appends a map: the decomposition of this * matrix.
    AxesHpb& operator*=(const Matrix3x3& matrix);
    AxesHpb& operator*=(const AxesHpb& other);
    Matrix3x3 operator*(const AxesHpb& other) const;
    Matrix3x3 operator*(const Matrix3x3& matrix) const;
};
static_assert(sizeof(AxesHpb) == 80, "the stride of axes in lists");

/// An orientation in one of three forms, told apart by `rows`: eye, the identity (0), angles and scale (2, see
/// AxesHpb), matrix (3, its rows are the images of the axes, possibly scaled). A failed read from the engine leaves -1.
///
/// The form is visible to the engine and kept by every operation as stated there. Copying takes `rows` and the rows in
/// use, and leaves the rows beyond as they were in the target. Comparisons are exact.
///
/// Threads: a plain record; several threads may read it, or one thread at a time changes it.
class Axes : public ZantAxesCore {
public:
    /// The eye.
    Axes() : ZantAxesCore{{}, 0} {}
    /// Takes over axes of any form, AxesHpb among them.
    Axes(const ZantAxesCore& axes);
    /// Matrix form.
    Axes(const Matrix3x3& matrix);
    /// The upper-left block in matrix form.
    explicit Axes(const Matrix4x4& matrix);

    Axes(const Axes& other);
    Axes& operator=(const Axes& other);

    /// Takes the angles and multiplies out's scales by those of the record, whatever its form.
    static void asAxesHpb(const ZantAxesCore& source, AxesHpb& out);
    /// Takes the nine doubles, whatever the form of the record.
    static void asMatrix(const ZantAxesCore& source, Matrix3x3& out);
    /// Whether the record is exactly the identity, in any form.
    static bool isEye(const ZantAxesCore& axes);
    /// Copies `rows` and the rows in use.
    static void copy(ZantAxesCore& target, const ZantAxesCore& source);
    /// Matrix form is decomposed and the eye gives the default; of other forms, the scales multiply those of out.
    static void toAxesHpb(const ZantAxesCore& source, AxesHpb& out);
    /// The matrix of axes in any form.
    static void toMatrix(const ZantAxesCore& source, Matrix3x3& out);

    /// In the angles-and-scale form, fills out as asAxesHpb() does.
    /// @return false in any other form, out being left alone.
    bool isAxesHpb(AxesHpb& out) const;
    /// In the matrix form, fills out.
    /// @return false in any other form, out being left alone.
    bool isMatrix(Matrix3x3& out) const;

    /// A coordinate system with these axes at the origin.
    CoordSys toCoordSys() const;
    /// A coordinate system with these axes at a position.
    CoordSys toCoordSys(double x, double y, double z) const;

    /// Composes this orientation (its inverse, when inverse is not 0) onto target: target becomes target * this.
    /// The result has angles when either of the two has them, and is a matrix otherwise. With angles, the x scale is
    /// the product (quotient, when inverse) of the two x scales. The target may be this object.
    void transform(ZantAxesCore& target, char inverse) const;

    /// Multiplies the three scales (angles form) or the three columns (matrix form); leaves other forms unchanged.
    Axes& scale(double x, double y, double z);
    /// Writes three scales: the lengths of the rows (matrix form), the scales (angles form) or ones.
    void getScale(double* out) const;
};
static_assert(sizeof(Axes) == 80, "one record");

}  // namespace Zant

#endif
