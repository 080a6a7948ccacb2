#pragma once

#include <array>
#include <vector>

#include "plxutils/export.h"

namespace plx {

/// A place in the image and the place in the world that it shall land on.
struct ControlPoint {
    double x, y;  ///< source, in image or map units
    double X, Y;  ///< destination, in world units
};

/// World coordinates, or a difference of such.
struct WorldPoint {
    double X = 0.0, Y = 0.0;
};

/// Larger coordinates, of either sign, are not fitted.
constexpr double kLargestCoordinate = 1e150;

/// What became of a fit.
enum class FitState {
    determined,  ///< the points determine every coefficient
    singular,    ///< they do not: lying on one line, repeated, on one conic ...; the fit is usable near them
    no_points,   ///< nothing was fitted, everything is projected to (0, 0)
    bad_number   ///< a coordinate is not finite or beyond kLargestCoordinate; nothing was fitted
};

/// A polynomial map of the plane, kept in centred and scaled source coordinates u = (x - centre_x) * scale_x
/// and v = (y - centre_y) * scale_y, so that sources far from 0 cost no digits.
struct PLX_EXPORT PolynomialFit {
    static constexpr int kMaxTerms = 15;
    /// Of 1, u, v, u2, uv, v2, u3, u2v, uv2, v3, ..., v4, the same order for X and Y.
    using Coefficients = std::array<double, kMaxTerms>;

    FitState state = FitState::no_points;
    int type = 1;      ///< the type in use, after all limits: 1 to 7
    int unknowns = 1;  ///< coefficients of each axis that were asked for
    int rank = 0;      ///< how many of them the points determine
    double condition =
        1.0;  ///< of the scaled system: 1 is best, 1e8 loses eight digits; infinite if singular
    double centre_x = 0.0, centre_y = 0.0;
    double scale_x = 0.0, scale_y = 0.0;  ///< 0 where the sources have no extent
    Coefficients X{}, Y{};
    std::vector<WorldPoint> residuals;  ///< wanted minus projected, a difference for each point
    double rms = 0.0;                   ///< root of the mean squared distance, in world units

    /// Source to world; y is taken as it is for every type.
    WorldPoint evaluate(double x, double y) const;
    /// X or Y multiplied out for terms of x and y themselves: 1, x, y, x2, xy, y2, ... They are for reading
    /// and for maps of first degree; sums of the higher terms lose digits over sources far from 0.
    Coefficients in_source_units(const Coefficients& centred) const;
};

/// Fits control points by the models of GeoRef, with arithmetic that holds on map coordinates: centred and
/// scaled sources, scaled columns and an orthogonal factorization with column pivoting.
///
/// Type 1 is the mean offset, 2 the similarity through the first two points, 3 scale and offset of each axis,
/// 4 to 7 polynomials of degree 1 to 4 by least squares. Numbers of points limit the type as in GeoRef: 2 and
/// 3 need two points, 4 to 7 need 3, 6, 10 and 15; two points get the similarity. What differs: y has its own
/// sign for every type; two points in one row or column get their similarity too, without a message; two
/// points that coincide, in the source or in the world, get the offset, with state singular.
///
/// A singular set gets the coefficients of smallest norm, which do not vary across a line of points. Points
/// count as collinear when their distance from the line is what rounding of the coordinates makes.
///
/// For the way back fit the exchanged points. Throws std::bad_alloc only.
PLX_EXPORT PolynomialFit fit_polynomial(const std::vector<ControlPoint>& points, int type);

}  // namespace plx
