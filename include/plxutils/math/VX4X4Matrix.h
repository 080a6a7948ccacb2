#pragma once

#include <memory>

#include "plxutils/export.h"
#include "plxutils/math/VXMatrix.h"

/// Affine transform of 3-D points: a 4x4 matrix of doubles for column vectors, translation in column 3.
/// Row 3 is never used to transform and nothing is divided by w.
///
/// Every building operation pre-multiplies: it takes effect after all earlier ones. Two flags, identity and
/// pure X/Y translation, and the inverse are kept between changes, so that transforming points is cheap.
/// A matrix whose size was changed through its base class leaves points alone.
class PLX_EXPORT VX4X4Matrix : public VXMatrix {
public:
    VX4X4Matrix();
    /// 16 floats, row by row; null gives the identity.
    VX4X4Matrix(const float* m);
    VX4X4Matrix(const VX4X4Matrix& b);
    VX4X4Matrix& operator=(const VX4X4Matrix& b);
    ~VX4X4Matrix() = default;
    VX4X4Matrix operator*(const VX4X4Matrix& b) const;

    /// @return 1 after storing; 0 and a message when the index is out of bounds.
    int set_element(int row, int col, double value);
    /// 16 floats, row by row; null gives the identity.
    void SetMat(const float* m);
    /// Writes the 16 elements, row by row, narrowed to float.
    void MatToFloat(float* out) const;
    /// X translation, element [0][3].
    double xxlate() const { return return_elem(0, 3); }
    /// Y translation, element [1][3].
    double yxlate() const { return return_elem(1, 3); }
    /// True when every element rounded to 8 decimals is that of the identity.
    bool is_Identity() const { return identityFlag; }
    /// True when all but [0][3] and [1][3] are exactly those of the identity; a Z translation clears it.
    bool is_xylateOnly() const { return xylateOnlyFlag; }
    void display() const;
    int set_to_rref();
    int set_to_identity();
    void swap_rows(int a, int b);
    void swap_columns(int a, int b);
    void divide_row(int r, double d);
    void MakeIdentity();
    /// The identity with a translation in X and Y.
    void SetXYTranslates(double tx, double ty);

    void Translate(double tx, double ty, double tz);
    void Scale(double sx, double sy, double sz);
    /// Rotations: the angle in radians, or its sine and cosine (in this order).
    void XRot(double a);
    void XRot(double s, double c);
    void YRot(double a);
    void YRot(double s, double c);
    void ZRot(double a);
    void ZRot(double s, double c);
    /// Shears by the cotangent of an angle in radians: X by Y, Y by X, and Z by Y. An angle of 0 is not
    /// guarded; the elements become infinite.
    void XShear(double a);
    void YShear(double a);
    void ZShear(double a);
    /// The same with angles in degrees.
    void XRotDeg(double deg);
    void YRotDeg(double deg);
    void ZRotDeg(double deg);
    void XShearDeg(double deg);
    void YShearDeg(double deg);
    void ZShearDeg(double deg);

    /// The inverse, computed at most once between changes. A singular matrix prints VXMatrix::inverse's
    /// warning and gives what the reduction left.
    VX4X4Matrix Inverse();
    VX4X4Matrix Transpose();

    void transformPoint(double& x, double& y, double& z) const {
        if (identityFlag || !is_4x4()) return;
        if (xylateOnlyFlag) {
            x += m[3];
            y += m[7];
            return;
        }
        apply(m.get(), x, y, z);
    }
    /// Not const, because it may fill the cached inverse.
    void invTransformPoint(double& x, double& y, double& z) {
        if (identityFlag || !is_4x4()) return;
        if (xylateOnlyFlag) {
            x -= m[3];
            y -= m[7];
            return;
        }
        if (!invMat) fill_inverse();
        apply(invMat->values(), x, y, z);
    }

private:
    // These would change elements behind the flags.
    using VXMatrix::jacobi;
    using VXMatrix::reset_dim;
    using VXMatrix::set_to_ref;

    explicit VX4X4Matrix(const VXMatrix& b);
    bool is_4x4() const { return rows == 4 && cols == 4; }
    static void fTod(const float* in, double* out);
    static void apply(const double* t, double& x, double& y, double& z) {
        const double x1 = t[0] * x + t[1] * y + t[2] * z + t[3];
        const double y1 = t[4] * x + t[5] * y + t[6] * z + t[7];
        const double z1 = t[8] * x + t[9] * y + t[10] * z + t[11];
        x = x1;
        y = y1;
        z = z1;
    }
    void load_identity();
    void premultiply(const VXMatrix& elementary);
    void fill_inverse();
    void update();

    std::unique_ptr<VXMatrix> invMat;
    bool identityFlag;
    bool xylateOnlyFlag;
};
