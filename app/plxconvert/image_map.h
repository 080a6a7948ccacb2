#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plxutils/georef/GeoRef.h"
#include "plxutils/georef/fit_polynomial.h"

namespace plx::tool {

/// Maps image columns and rows to the world by control points, and back. Rows count downwards for every type:
/// types 1 and 2, which know no mirrored images, are fitted with negated rows.
class ImageMap {
public:
    using Coefficients = PolynomialFit::Coefficients;

    /// @param requested  fit type 1 to 7; few points lower it.
    /// @param prescribed  true for the arithmetic of GeoRef, else that of fit_polynomial.
    /// @throws InputFault when a coordinate is too large.
    ImageMap(std::vector<ControlPoint> points, int requested, bool prescribed);

    const std::vector<ControlPoint>& points() const { return points_; }
    bool prescribed() const { return georef_ != nullptr; }
    int type() const { return type_; }
    /// The fit by fit_polynomial, also when the prescribed one is used.
    const PolynomialFit& fit() const { return fit_; }
    /// The fit of the exchanged points.
    const PolynomialFit& back() const { return back_; }
    /// What GeoRef says when it scales two points by one axis or not at all; empty otherwise.
    const std::string& message() const { return message_; }

    WorldPoint to_world(double column, double row);
    /// X becomes the column and Y the row.
    WorldPoint to_image(double X, double Y);

    /// Wanted minus projected.
    WorldPoint residual(const ControlPoint& point);
    /// False when a control point is projected to what is no number.
    bool is_number();
    double rms();
    /// Width of a pixel in world units, in the middle of the points; 1 when the fit has no extent.
    double pixel() const;
    /// Extents of the control points in the image; empty ones are widened by 1.
    struct Extent {
        double left, top, right, bottom;
    };
    Extent extent() const;
    /// The greatest distance between the projections of this map and another over the points and a lattice
    /// between them; infinite when one of them is not a number.
    double difference(ImageMap& other);
    /// Likewise of the way back at the control points, in pixels.
    double difference_back(ImageMap& other);

    /// The polynomials of columns x and rows y, or of world x and y for the way back. Those of the prescribed
    /// fit are about (0, 0).
    struct Polynomials {
        double centre_x, centre_y, scale_x, scale_y;
        Coefficients X, Y;              ///< of u = (x - centre_x) * scale_x and v = (y - centre_y) * scale_y
        Coefficients x_terms, y_terms;  ///< multiplied out: X and Y by 1, x, y, x2, ...
        std::size_t count;
    };
    /// X and Y by columns and rows.
    Polynomials polynomials() const;
    /// Columns, as X, and rows, as Y, by world coordinates.
    Polynomials back_polynomials();

private:
    void make_georef(int requested);
    std::size_t term_count() const;

    std::vector<ControlPoint> points_;
    double row_sign_;
    int type_;
    PolynomialFit fit_, back_;
    std::unique_ptr<GeoRef> georef_;
    std::string message_;
};

}  // namespace plx::tool
