#include "plxconvert/image_map.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "plxconvert/console.h"
#include "plxconvert/messages.h"

namespace plx::tool {

namespace {

constexpr int kLattice = 8;

/// Two points make a similarity, whatever was asked for.
int possible_type(int requested, std::size_t points) {
    if (points < 2) return 1;
    return points == 2 ? std::min(requested, 2) : requested;
}

/// A fit as it is, also multiplied out.
ImageMap::Polynomials polynomials_of(const PolynomialFit& fit, std::size_t count) {
    return {fit.centre_x,
            fit.centre_y,
            fit.scale_x,
            fit.scale_y,
            fit.X,
            fit.Y,
            fit.in_source_units(fit.X),
            fit.in_source_units(fit.Y),
            count};
}

/// The greater one; infinite when a distance is not a number.
double greater(double greatest, double distance) {
    return std::isnan(distance) ? std::numeric_limits<double>::infinity() : std::max(greatest, distance);
}

template <class Visit>
void each_lattice_place(const ImageMap::Extent& e, Visit visit) {
    for (int i = 0; i <= kLattice; ++i) {
        for (int j = 0; j <= kLattice; ++j) {
            visit(e.left + (e.right - e.left) * i / kLattice, e.top + (e.bottom - e.top) * j / kLattice);
        }
    }
}

}  // namespace

ImageMap::ImageMap(std::vector<ControlPoint> points, int requested, bool prescribed)
    : points_(std::move(points)) {
    requested = possible_type(requested, points_.size());
    row_sign_ = requested <= 2 ? -1.0 : 1.0;
    std::vector<ControlPoint> there, back;
    for (const ControlPoint& p : points_) {
        const double y = row_sign_ * p.y;
        there.push_back({p.x, y, p.X, p.Y});
        back.push_back({p.X, p.Y, p.x, y});
    }
    fit_ = fit_polynomial(there, requested);
    if (fit_.state == FitState::bad_number) throw InputFault("a coordinate of a control point is too large");
    back_ = fit_polynomial(back, requested);
    type_ = fit_.type;
    if (prescribed) make_georef(requested);
}

void ImageMap::make_georef(int requested) {
    // GeoRef prints its messages on standard output, which belongs to the results; message_ has them.
    const OutputDiversion silence(true, "");
    const auto n = static_cast<int>(points_.size());
    georef_ = std::make_unique<GeoRef>(n, nullptr, nullptr, nullptr, nullptr);
    for (int i = 0; i < n; ++i) {
        const ControlPoint& p = points_[static_cast<std::size_t>(i)];
        georef_->set_gcp_values(i, p.x, row_sign_ * p.y, p.X, p.Y);
    }
    georef_->process_type(requested);
    // Only its line end does not belong to the message.
    message_ = georef_->message();
    if (!message_.empty()) message_.pop_back();
    if (requested == 2) {
        const ControlPoint &a = points_[0], &b = points_[1];
        const bool no_scale = (a.x == b.x || a.X == b.X) && (a.y == b.y || a.Y == b.Y);
        type_ = no_scale ? 1 : 2;
    }
    double x = 0.0, y = 0.0;
    georef_->reverse_project_point(0.0, 0.0, x, y);
}

WorldPoint ImageMap::to_world(double column, double row) {
    if (!georef_) return fit_.evaluate(column, row_sign_ * row);
    WorldPoint world;
    georef_->project_point(column, row, world.X, world.Y);
    return world;
}

WorldPoint ImageMap::to_image(double X, double Y) {
    WorldPoint place;
    if (!georef_) {
        place = back_.evaluate(X, Y);
        place.Y *= row_sign_;
    } else if (type_ == 1) {
        georef_->reverse_project_point(X, -Y, place.X, place.Y);
        place.Y = -place.Y;
    } else {
        georef_->reverse_project_point(X, Y, place.X, place.Y);
    }
    return place;
}

WorldPoint ImageMap::residual(const ControlPoint& point) {
    const WorldPoint found = to_world(point.x, point.y);
    return {point.X - found.X, point.Y - found.Y};
}

bool ImageMap::is_number() {
    for (const ControlPoint& point : points_) {
        const WorldPoint r = residual(point);
        if (!std::isfinite(r.X) || !std::isfinite(r.Y)) return false;
    }
    return true;
}

double ImageMap::rms() {
    double length = 0.0;
    for (const ControlPoint& point : points_) {
        const WorldPoint r = residual(point);
        // The function of three arguments loses what is not a number.
        length = std::hypot(length, std::hypot(r.X, r.Y));
    }
    return length / std::sqrt(static_cast<double>(points_.size()));
}

double ImageMap::pixel() const {
    const double a = fit_.X[1] * fit_.scale_x, b = fit_.X[2] * fit_.scale_y;
    const double d = fit_.Y[1] * fit_.scale_x, e = fit_.Y[2] * fit_.scale_y;
    const double area = std::fabs(a * e - b * d);
    const double longest = std::max(std::hypot(a, d), std::hypot(b, e));
    // Points in one line tell the width of a pixel in its direction only.
    const double width = fit_.state == FitState::determined && area > 0.0 ? std::sqrt(area) : longest;
    return width > 0.0 && std::isfinite(width) ? width : 1.0;
}

ImageMap::Extent ImageMap::extent() const {
    Extent e{points_[0].x, points_[0].y, points_[0].x, points_[0].y};
    for (const ControlPoint& p : points_) {
        e = {std::min(e.left, p.x), std::min(e.top, p.y), std::max(e.right, p.x), std::max(e.bottom, p.y)};
    }
    if (e.right == e.left) e.right += 1.0;
    if (e.bottom == e.top) e.bottom += 1.0;
    return e;
}

double ImageMap::difference(ImageMap& other) {
    double greatest = 0.0;
    const auto compare = [&](double column, double row) {
        const WorldPoint a = to_world(column, row), b = other.to_world(column, row);
        greatest = greater(greatest, std::hypot(a.X - b.X, a.Y - b.Y));
    };
    each_lattice_place(extent(), compare);
    for (const ControlPoint& p : points_) compare(p.x, p.y);
    return greatest;
}

double ImageMap::difference_back(ImageMap& other) {
    double greatest = 0.0;
    for (const ControlPoint& p : points_) {
        const WorldPoint a = to_image(p.X, p.Y), b = other.to_image(p.X, p.Y);
        greatest = greater(greatest, std::hypot(a.X - b.X, a.Y - b.Y));
    }
    return greatest;
}

std::size_t ImageMap::term_count() const {
    const auto degree = static_cast<std::size_t>(std::max(type_ - 3, 1));
    return (degree + 1) * (degree + 2) / 2;
}

ImageMap::Polynomials ImageMap::polynomials() const {
    if (georef_) {
        const auto [x, y] = georef_->coefficients();
        return {0.0, 0.0, 1.0, 1.0, x, y, x, y, term_count()};
    }
    Polynomials p = polynomials_of(fit_, term_count());
    p.centre_y *= row_sign_;
    // Only maps of first degree have negated rows.
    for (Coefficients* of : {&p.X, &p.Y, &p.x_terms, &p.y_terms}) (*of)[2] *= row_sign_;
    return p;
}

ImageMap::Polynomials ImageMap::back_polynomials() {
    if (georef_) {
        auto [x, y] = georef_->reverse_coefficients();
        if (type_ == 1) {
            // GeoRef's way back of a translation takes -Y and gives -row.
            x[2] = -x[2];
            for (const std::size_t k : {0U, 1U}) y[k] = -y[k];
        }
        return {0.0, 0.0, 1.0, 1.0, x, y, x, y, term_count()};
    }
    Polynomials p = polynomials_of(back_, term_count());
    for (Coefficients* of : {&p.Y, &p.y_terms}) {
        for (double& value : *of) value *= row_sign_;
    }
    return p;
}

}  // namespace plx::tool
