#include "plxutils/georef/fit_polynomial.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <tuple>

#include "plxutils/georef/GeoRef.h"

namespace {

using Points = std::vector<plx::ControlPoint>;
using plx::FitState;

/// Sources around one place; the world follows a polynomial of the degree around another, with noise.
Points spread(int n, int degree, plx::ControlPoint at, double half, double noise) {
    Points points;
    for (int i = 0; i < n; ++i) {
        const double u = 7 * i % 11 * 0.2 - 1, v = 5 * i % 13 / 6.0 - 1, w = std::pow(u - v / 2, degree);
        points.push_back({at.x + half * u, at.y + half * v, at.X + 40 * u - 9 * v + 12 * w + noise * (i % 5),
                          at.Y + 7 * u + 30 * v - 8 * w + noise * (i * i % 7)});
    }
    return points;
}

GeoRef prescribed(const Points& points, int type) {
    GeoRef geo(static_cast<int>(points.size()), nullptr, nullptr, nullptr, nullptr);
    for (int i = 0; const auto& p : points) geo.set_gcp_values(i++, p.x, p.y, p.X, p.Y);
    geo.process_type(type);
    return geo;
}

TEST(FitPolynomial, MapCoordinatesKeepTheirDigits) {
    for (int degree = 1; degree <= 4; ++degree) {
        const Points points = spread(40, degree, {5e5, 4.2e6, 3e5, 4.2e6}, 512, 0);
        const auto fit = plx::fit_polynomial(points, degree + 3);
        EXPECT_EQ(fit.state, FitState::determined);
        EXPECT_LT(fit.rms, 2e-9) << degree;
        EXPECT_GT(prescribed(points, degree + 3).rms_tot_error(), fit.rms * (degree == 1 ? 1e3 : 1e9));
    }
}

TEST(FitPolynomial, AgreesWithThePrescribedFitOfTheTypeThePointsAllow) {
    for (int k = 0; k < 8 * 9; ++k) {
        const int n = std::array{3, 5, 6, 9, 10, 14, 15, 30}[std::size_t(k) / 9], type = k % 9;
        SCOPED_TRACE(testing::Message() << n << " points, type " << type);
        const Points points = spread(n, 2, {0.2, -0.1, 0, 0}, 1, 0.3);
        const auto fit = plx::fit_polynomial(points, type);
        GeoRef geo = prescribed(points, type);
        double X, Y, plain = 0.0;
        geo.project_point(0.5, fit.type <= 2 ? 0.25 : -0.25, X, Y);
        for (std::size_t d = 0, i = 0; d <= 4; ++d)
            for (std::size_t j = 0; j <= d; ++j)
                plain += fit.in_source_units(fit.Y)[i++] * std::pow(0.5, d - j) * std::pow(-0.25, j);
        EXPECT_NEAR(fit.evaluate(0.5, -0.25).X, X, 1e-9 * (1 + std::abs(X)));
        EXPECT_NEAR(fit.evaluate(0.5, -0.25).Y, Y, 1e-9 * (1 + std::abs(Y)));
        EXPECT_NEAR(plain, Y, 1e-9 * (1 + std::abs(Y)));
        EXPECT_NEAR(fit.rms, geo.rms_tot_error(), 1e-9);
    }
}

TEST(FitPolynomial, SingularSetsAreToldAndStayFinite) {
    Points line;
    for (int i = 0; i < 20; ++i) line.push_back({5e5 + 0.1 * i, 4.2e6 + 0.3 * i, 3.0 * i, 2.0 * i});
    const std::tuple<Points, int, FitState, int, int, double> rows[] = {
        {Points{}, 4, FitState::no_points, 1, 0, 0.0},
        {{{1, 2, 5, 9}, {1, 4, 5, 15}}, 7, FitState::determined, 2, 2, 0.0},
        {{{1, 2, 5, 9}, {1, 2, 6, 9}}, 3, FitState::singular, 1, 1, 0.5},
        {{{1, 2, 5, 9}, {1, std::nan(""), 6, 9}}, 3, FitState::bad_number, 1, 0, 0.0},
        {line, 9, FitState::singular, 7, 5, 0.0},
        {Points(20, {5e5, 4.2e6, 7, 8}), 6, FitState::singular, 6, 1, 0.0}};
    for (const auto& [points, type, state, used, rank, rms] : rows) {
        SCOPED_TRACE(testing::Message() << points.size() << " points, type " << type);
        const auto fit = plx::fit_polynomial(points, type);
        EXPECT_EQ(std::tuple(fit.state, fit.type, fit.rank), std::tuple(state, used, rank));
        EXPECT_NEAR(fit.rms, rms, 1e-7);
        EXPECT_TRUE(std::isfinite(fit.evaluate(5e5, 4.2e6).X + fit.evaluate(-3, 8).Y));
    }
}

}  // namespace
