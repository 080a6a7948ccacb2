#include "plxutils/georef/fit_polynomial.h"

#include <Eigen/QR>
#include <Eigen/SVD>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "georef/fit_types.h"

namespace plx {
namespace {

using Terms = PolynomialFit::Coefficients;
using Points = std::vector<ControlPoint>;

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

int degree_of(int type) { return std::max(type - 3, 1); }
int terms_of_degree(int degree) { return (degree + 1) * (degree + 2) / 2; }
std::size_t position(int x_power, int y_power) {
    const auto degree = static_cast<std::size_t>(x_power) + static_cast<std::size_t>(y_power);
    return degree * (degree + 1) / 2 + static_cast<std::size_t>(y_power);
}

/// 1, u, v, u2, uv, v2, ... up to a degree.
inline void powers(double u, double v, int degree, Terms& t) {
    t[0] = 1.0;
    std::size_t lower = 0, next = 1;
    for (std::size_t d = 1; d <= static_cast<std::size_t>(degree); ++d) {
        for (std::size_t i = 0; i < d; ++i) t[next++] = t[lower + i] * u;
        t[next++] = t[lower + d - 1] * v;
        lower += d;
    }
}

bool is_usable(const ControlPoint& p) {
    const double largest = std::max({std::abs(p.x), std::abs(p.y), std::abs(p.X), std::abs(p.Y)});
    return largest <= kLargestCoordinate && !std::isnan(p.x + p.y + p.X + p.Y);
}

/// The range of one coordinate over all points.
struct Range {
    Range(const Points& points, double ControlPoint::*coordinate) {
        const auto [low, high] = std::minmax_element(
            points.begin(), points.end(),
            [coordinate](const auto& a, const auto& b) { return a.*coordinate < b.*coordinate; });
        centre = ((*low).*coordinate + (*high).*coordinate) / 2;
        half = ((*high).*coordinate - (*low).*coordinate) / 2;
        largest = std::max(std::abs((*low).*coordinate), std::abs((*high).*coordinate));
        // What rounding alone can make is no extent; nor is what has no reciprocal.
        if (half <= 4 * kEpsilon * largest || half < 1 / kLargestCoordinate) half = 0.0;
    }
    double scale() const { return half > 0.0 ? 1 / half : 0.0; }
    /// How much rounding of the coordinates means in scaled ones.
    double noise() const { return half > 0.0 ? kEpsilon * (1 + largest / half) : kEpsilon; }

    double centre, half, largest;
};

/// Least squares of one system with any number of right-hand sides, by scaled columns.
struct Solution {
    Solution(Eigen::MatrixXd system, const Eigen::MatrixXd& wanted, double noise) {
        const Eigen::Index unknowns = system.cols();
        Eigen::VectorXd lengths = system.colwise().norm();
        lengths = (lengths.array() > 0.0).select(lengths, 1.0);
        system = system * lengths.cwiseInverse().asDiagonal();
        Eigen::CompleteOrthogonalDecomposition<Eigen::MatrixXd> factors(system.rows(), unknowns);
        factors.setThreshold(std::min(noise * static_cast<double>(unknowns), 1e-3));
        factors.compute(system);
        coefficients = lengths.cwiseInverse().asDiagonal() * factors.solve(wanted);
        rank = static_cast<int>(factors.rank());
        if (factors.rank() < unknowns) return;
        const Eigen::MatrixXd r =
            factors.matrixQTZ().topLeftCorner(unknowns, unknowns).triangularView<Eigen::Upper>();
        const Eigen::VectorXd values = Eigen::JacobiSVD<Eigen::MatrixXd>(r).singularValues();
        condition = values(0) / values(unknowns - 1);
    }

    Eigen::MatrixXd coefficients;
    int rank = 0;
    double condition = std::numeric_limits<double>::infinity();
};

void fit_translation(const Points& points, PolynomialFit& fit) {
    double dX = 0.0, dY = 0.0;
    for (const ControlPoint& p : points) {
        dX += p.X - p.x;
        dY += p.Y - p.y;
    }
    const double n = static_cast<double>(points.size());
    fit.type = 1;
    fit.rank = 1;
    fit.centre_x = points[0].x;
    fit.centre_y = points[0].y;
    fit.scale_x = fit.scale_y = 1.0;
    fit.X = {fit.centre_x + dX / n, 1.0, 0.0};
    fit.Y = {fit.centre_y + dY / n, 0.0, 1.0};
}

void fit_similarity(const Points& points, PolynomialFit& fit) {
    const ControlPoint &p = points[0], &q = points[1];
    const double dx = q.x - p.x, dy = q.y - p.y, dX = q.X - p.X, dY = q.Y - p.Y;
    const double length = std::hypot(dx, dy);
    fit.unknowns = 2;
    if (length < 1 / kLargestCoordinate || std::hypot(dX, dY) < 1 / kLargestCoordinate) {
        fit_translation(points, fit);
        fit.condition = std::numeric_limits<double>::infinity();
        return;
    }
    const double scaling = (dX * (dx / length) + dY * (dy / length)) / length;
    const double turning = (dY * (dx / length) - dX * (dy / length)) / length;
    fit.rank = 2;
    fit.centre_x = p.x;
    fit.centre_y = p.y;
    fit.scale_x = fit.scale_y = 1.0;
    fit.X = {p.X, scaling, -turning};
    fit.Y = {p.Y, turning, scaling};
}

/// The system of scaled sources, the first `terms` of the powers or 1 and one coordinate; world less its
/// centre.
void fit_least_squares(const Points& points, PolynomialFit& fit) {
    const Range x(points, &ControlPoint::x), y(points, &ControlPoint::y);
    const Range X(points, &ControlPoint::X), Y(points, &ControlPoint::Y);
    fit.centre_x = x.centre;
    fit.centre_y = y.centre;
    fit.scale_x = x.scale();
    fit.scale_y = y.scale();
    const int degree = degree_of(fit.type);
    const auto n = static_cast<Eigen::Index>(points.size());
    Eigen::MatrixXd system(n, terms_of_degree(degree)), wanted(n, 2);
    Terms t{};
    for (Eigen::Index i = 0; i < n; ++i) {
        const ControlPoint& p = points[static_cast<std::size_t>(i)];
        powers((p.x - x.centre) * fit.scale_x, (p.y - y.centre) * fit.scale_y, degree, t);
        for (Eigen::Index k = 0; k < system.cols(); ++k) system(i, k) = t[static_cast<std::size_t>(k)];
        wanted(i, 0) = p.X - X.centre;
        wanted(i, 1) = p.Y - Y.centre;
    }
    if (fit.type == 3) {
        const Solution of_x(system.leftCols(2), wanted.col(0), x.noise());
        const Solution of_y(system(Eigen::all, {0, 2}), wanted.col(1), y.noise());
        fit.X = {of_x.coefficients(0), of_x.coefficients(1)};
        fit.Y = {of_y.coefficients(0), 0.0, of_y.coefficients(1)};
        fit.unknowns = 2;
        fit.rank = std::min(of_x.rank, of_y.rank);
        fit.condition = std::max(of_x.condition, of_y.condition);
    } else {
        fit.unknowns = static_cast<int>(system.cols());
        const Solution both(std::move(system), wanted, std::max(x.noise(), y.noise()));
        for (int k = 0; k < fit.unknowns; ++k) {
            fit.X[static_cast<std::size_t>(k)] = both.coefficients(k, 0);
            fit.Y[static_cast<std::size_t>(k)] = both.coefficients(k, 1);
        }
        fit.rank = both.rank;
        fit.condition = both.condition;
    }
    fit.X[0] += X.centre;
    fit.Y[0] += Y.centre;
}

void take_residuals(const Points& points, PolynomialFit& fit) {
    double length = 0.0;
    fit.residuals.reserve(points.size());
    for (const ControlPoint& p : points) {
        const WorldPoint found = fit.evaluate(p.x, p.y);
        fit.residuals.push_back({p.X - found.X, p.Y - found.Y});
        length = std::hypot(length, p.X - found.X, p.Y - found.Y);
    }
    fit.rms = length / std::sqrt(static_cast<double>(points.size()));
}

/// The compiler knows the degree, which keeps the terms in registers.
template <int kDegree>
WorldPoint sums(const Terms& X, const Terms& Y, double u, double v) {
    Terms t;
    powers(u, v, kDegree, t);
    WorldPoint sum;
    // The constants are the largest numbers on maps and come last.
    for (int k = terms_of_degree(kDegree) - 1; k >= 0; --k) {
        const auto term = static_cast<std::size_t>(k);
        sum.X += X[term] * t[term];
        sum.Y += Y[term] * t[term];
    }
    return sum;
}

}  // namespace

WorldPoint PolynomialFit::evaluate(double x, double y) const {
    const double u = (x - centre_x) * scale_x, v = (y - centre_y) * scale_y;
    switch (degree_of(type)) {
        case 1:
            return sums<1>(X, Y, u, v);
        case 2:
            return sums<2>(X, Y, u, v);
        case 3:
            return sums<3>(X, Y, u, v);
        default:
            return sums<4>(X, Y, u, v);
    }
}

PolynomialFit::Coefficients PolynomialFit::in_source_units(const Coefficients& centred) const {
    Coefficients plain{};
    const int degree = degree_of(type);
    // From the highest power down: p = p * (x - centre_x) * scale_x + what stands at the next lower power of
    // u, each of which is made likewise from the powers of v.
    for (int i = degree; i >= 0; --i) {
        for (int p = degree; p >= 0; --p) {
            for (int q = degree - p; q >= 0; --q) {
                const double lower = p > 0 ? plain[position(p - 1, q)] : 0.0;
                plain[position(p, q)] = (lower - centre_x * plain[position(p, q)]) * scale_x;
            }
        }
        std::array<double, 5> of_y{};
        for (int j = degree - i; j >= 0; --j) {
            for (std::size_t q = of_y.size(); q-- > 0;)
                of_y[q] = ((q > 0 ? of_y[q - 1] : 0.0) - centre_y * of_y[q]) * scale_y;
            of_y[0] += centred[position(i, j)];
        }
        for (int q = 0; q <= degree - i; ++q) plain[position(0, q)] += of_y[static_cast<std::size_t>(q)];
    }
    return plain;
}

PolynomialFit fit_polynomial(const std::vector<ControlPoint>& points, int type) {
    PolynomialFit fit;
    if (points.empty()) return fit;
    if (!std::all_of(points.begin(), points.end(), is_usable)) {
        fit.state = FitState::bad_number;
        return fit;
    }
    fit.type = limited_fit_type(type, points.size());
    if (points.size() == 2) fit.type = std::min(fit.type, 2);
    if (fit.type == 1) {
        fit_translation(points, fit);
    } else if (fit.type == 2) {
        fit_similarity(points, fit);
    } else {
        fit_least_squares(points, fit);
    }
    fit.state = fit.rank < fit.unknowns ? FitState::singular : FitState::determined;
    take_residuals(points, fit);
    return fit;
}

}  // namespace plx
