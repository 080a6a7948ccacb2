#pragma once

#include <array>
#include <memory>
#include <vector>

#include "plxutils/export.h"
#include "plxutils/math/VXMatrix.h"

/// Maps image (source) coordinates to world (destination) coordinates by ground control points.
///
/// A point pairs a source (x, y) with the world (X, Y) it must land on; indices count from 0. Fit types, with
/// the number of points from which each is available:
///
/// | type | model                                                                   | points |
/// |------|-------------------------------------------------------------------------|--------|
/// | 1    | translation by the mean offset                                          | 0      |
/// | 2    | uniform scale and rotation through the first two points                 | 2      |
/// | 3    | scale and offset of each axis                                           | 2      |
/// | 4    | first-degree polynomial (affine)                                        | 3      |
/// | 5    | second-degree polynomial                                                | 6      |
/// | 6    | third-degree polynomial                                                 | 10     |
/// | 7    | fourth-degree polynomial                                                | 15     |
///
/// Types 3 to 7 are least squares. Two points asked for type 3 or more get the similarity of type 2. Types 1
/// and 2, and every fit of two points, take the source y negated: image rows count downwards.
///
/// The fits work on plain coordinates. Sources that lie within less than about 1e-4, and polynomials of
/// degree 2 and more over sources far from 0, lose their accuracy. No errors are reported but by the messages
/// of process_type. One object serves one thread at a time, also for projecting.
class PLX_EXPORT GeoRef {
public:
    /// Copies four arrays of n coordinates; a null array stands for zeros, n below 0 for no points. Until
    /// the first fit every point is projected to (0, 0).
    GeoRef(int n, const double* srcX, const double* srcY, const double* dstX, const double* dstY);
    GeoRef(const GeoRef& other);
    GeoRef& operator=(const GeoRef& other);
    ~GeoRef();

    /// Stores point i; the fit stays as it is until process_type. @return 1; 0 when there is no such point.
    int set_gcp_values(int i, double sx, double sy, double dx, double dy);
    /// @return 1; 0 when there is no such point, and the arguments are left alone then.
    int get_gcp_values(int i, double& sx, double& sy, double& dx, double& dy) const;
    int get_num_gcps() const { return nGCP; }

    /// Fits the points by a type of the table, limited by the number of points and to 1 ... 7.
    ///
    /// Two-point fits with equal coordinates print a message on standard output and fall back to one scale
    /// for both axes, or to the translation. When type 3 was asked for, they also negate the source y of both
    /// points for good.
    void process_type(int type);

    /// Source to world. For types 1 and 2 the caller passes -y.
    void project_point(double x, double y, double& X, double& Y);
    /// World to source: the fit of the exchanged points, or, for types 1 and 2, of three corners of the
    /// sources' bounding box. For type 2 the result is -y. For type 1, and for two points without equal
    /// coordinates that were asked for type 3 or more, the caller passes -Y and gets y.
    void reverse_project_point(double X, double Y, double& x, double& y);

    /// What the last process_type printed, with its line end; empty when it printed nothing.
    const char* message() const { return message_; }

    /// What project_point multiplies: the coefficients of X and those of Y by 1, x, y, x2, xy, y2, x3, ...,
    /// zeros beyond the degree.
    std::array<std::array<double, 15>, 2> coefficients() const;
    /// Those of reverse_project_point: of x and y by 1, X, Y, X2, ...
    std::array<std::array<double, 15>, 2> reverse_coefficients();

    /// Distance between the world point i and the projection of its source; 0 when there is no such point.
    double rms_error(int i);
    /// Root of the mean squared distance; not a number without points.
    double rms_tot_error();

    /// Prints the points on standard output.
    void debug_print();

    /// Writes the world file of the fit: A, D, B, E, C and F of X = A x + B y + C, Y = D x + E y + F, each
    /// followed by an empty line. Polynomials are replaced by the affine map of three corners of the sources'
    /// bounding box. Numbers have six decimals.
    /// @return 1; 0 and a message on standard output when the file cannot be opened; 0 when it is incomplete.
    int write_world(const char* name);
    /// Writes one line for each point: X, -Y, x and y, separated by tabs; y is negated for types 1 and 2.
    /// Results as for write_world.
    int write_GCP(const char* name);

private:
    static constexpr int kMaxTerms = 15;

    /// Both axes: the coefficients out of their solved systems, which are read but once for each fit. Those
    /// of X and Y stand side by side, so that one instruction multiplies both.
    struct Polynomials {
        alignas(16) std::array<std::array<double, 2>, kMaxTerms> coefficients{};
        int count = 3;

        void take(const VXMatrix& x, const VXMatrix& y);
    };
    struct TwoPoints;

    void say(const char* text);
    bool fit_two_points();
    void fit_scale_by_y(const TwoPoints& d);
    void fit_scale_by_x(const TwoPoints& d);
    void fit_similarity(const TwoPoints& d);
    void negate_rows_of_type_3();
    void fit_translation();
    void fit_least_squares();
    void set_fixed(const std::array<double, 3>& x, const std::array<double, 3>& y);

    bool inside(int i) const { return i >= 0 && i < nGCP; }
    double row_sign() const { return type <= 2 ? -1.0 : 1.0; }
    double error_squared(int i);
    std::unique_ptr<GeoRef> fit_corners(bool from_world);
    std::unique_ptr<GeoRef> fit_reverse();

    VXMatrix xFit, yFit;
    int nGCP;
    int type;
    std::vector<double> srcX, srcY, dstX, dstY;
    Polynomials polynomials_;
    const char* message_ = "";
    std::unique_ptr<GeoRef> reverse_;  // made by the first reverse projection after a change
};
