#include "plxutils/georef/GeoRef.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <utility>

#include "support/capture_stdout.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace {

/// The points of make_references.py.
GeoRef sample_points(int n) {
    GeoRef geo(n, nullptr, nullptr, nullptr, nullptr);
    for (int i = 0; i < n; ++i) {
        const double x = 7 * i % 11 * 0.4 - 2.0, y = 5 * i % 13 * 0.3 - 1.8;
        geo.set_gcp_values(i, x, y, 1.0 + 1.1 * x - 0.2 * y + 0.05 * ((3 * i * i + i) % 7),
                           0.5 + 0.3 * x - 0.9 * y + 0.04 * ((i * i + 2 * i) % 5));
    }
    return geo;
}

struct Fit {
    int n, requested;
    double expected[6];  ///< forward of (0.7, -1.1), backward of (1.5, 0.4), rms of point 2, total rms
};
// clang-format off
const Fit kFits[] = {
    {20, 3, {1.849740229, 1.495711675, 0.360616073, 0.166671624, 0.454422364, 0.465775280}},
    {3, 4, {2.210000000, 1.794000000, 0.399052851, 0.387535518, 0.000000000, 0.000000000}},
    {20, 4, {2.076102488, 1.796322615, 0.423801141, 0.345075582, 0.128947535, 0.096031722}},
    {5, 6, {2.103129101, 1.741974981, 0.428694498, 0.387221699, 0.071536531, 0.067412008}},
    {6, 5, {2.686883381, 1.622709451, 0.409581835, 0.432102140, 0.000000000, 0.000000000}},
    {9, 7, {2.491965744, 1.611860221, 0.454768120, 0.440601590, 0.079166394, 0.053842167}},
    {10, 6, {6.927873126, 1.848548787, 0.485373533, 0.440763101, 0.000000000, 0.000000000}},
    {14, 9, {2.280088907, 1.749776072, 0.454175295, 0.424429554, 0.003021234, 0.045433980}},
    {15, 7, {1.417579927, 1.617319350, 1.111714671, 0.549265881, 0.000000000, 0.000000000}},
    {30, 12, {2.092210103, 1.881862871, 0.410576654, 0.399145889, 0.044591815, 0.067020255}},
};

TEST(GeoRef, FitsAreLeastSquaresOfTheTypeThePointsAllow) {
    for (const Fit& row : kFits) {
        SCOPED_TRACE(std::to_string(row.n) + " points, type " + std::to_string(row.requested));
        GeoRef geo = sample_points(row.n);
        geo.process_type(row.requested);
        double found[6] = {0, 0, 0, 0, geo.rms_error(2), geo.rms_tot_error()};
        geo.project_point(0.7, -1.1, found[0], found[1]);
        geo.reverse_project_point(1.5, 0.4, found[2], found[3]);
        for (int k = 0; k < 6; ++k) EXPECT_NEAR(found[k], row.expected[k], 2e-7) << k;
    }
}

struct TwoPointFit {
    double s[8];  ///< source and world of point 0, of point 1
    int requested;
    const char* printed;
    double expected[7];  ///< both at (x, -y) of s projected, both residuals (-1: any), y of point 0 now
};
constexpr double kOff = 38.078865529;  // of (35, 15)
constexpr char kEqual[] = "texture_map: X and Y points are equal.  Switching to Translate.\n";
constexpr char kByY[] = "texture_map: X inputs are equal.  Using Y values for scaling.\n";
constexpr char kByX[] = "texture_map: Y inputs are equal.  Using X values for scaling.\n";

const TwoPointFit kTwoPoints[] = {
    {{0, 0, 100, 200, 10, 20, 140, 210}, 2, "", {100, 200, 140, 210, 0, 0, 0}},
    {{0, 0, 100, 200, 10, 20, 140, 210}, 7, "", {100, 200, 140, 210, -1, -1, 0}},
    {{10, 20, 100, 200, 10, 40, 100, 260}, 2, kByY, {100, 200, 100, 140, 0, 120, 20}},
    {{10, 20, 100, 200, 10, 40, 100, 260}, 3, kByY, {100, 80, 100, 20, 0, 0, -20}},
    {{10, 20, 100, 200, 30, 20, 160, 200}, 2, kByX, {100, 200, 160, 200, 0, 0, 20}},
    {{10, 20, 100, 200, 30, 20, 160, 200}, 5, kByX, {100, 320, 160, 320, 0, 0, -20}},
    {{10, 20, 100, 200, 10, 50, 170, 200}, 2, kEqual, {135, 185, 135, 215, kOff, kOff, 20}},
    {{10, 20, 100, 200, 10, 50, 170, 200}, 3, kEqual, {135, 255, 135, 285, kOff, kOff, -20}},
};
// clang-format on

TEST(GeoRef, TwoPointsFallBackWithAMessage) {
    for (const TwoPointFit& row : kTwoPoints) {
        const auto& s = row.s;
        GeoRef geo(2, nullptr, nullptr, nullptr, nullptr);
        for (int i = 0; i < 2; ++i) geo.set_gcp_values(i, s[4 * i], s[4 * i + 1], s[4 * i + 2], s[4 * i + 3]);
        EXPECT_EQ(plx::test::capture_stdout([&] { geo.process_type(row.requested); }), row.printed);
        double x, X, Y, found[7] = {0, 0, 0, 0, geo.rms_error(0), geo.rms_error(1), 0};
        geo.project_point(s[0], -s[1], found[0], found[1]);
        geo.project_point(s[4], -s[5], found[2], found[3]);
        EXPECT_EQ(geo.get_gcp_values(0, x, found[6], X, Y), 1);
        for (int k = 0; k < 7; ++k) {
            const double error = row.expected[k] == -1 ? 0.0 : found[k] - row.expected[k];
            EXPECT_NEAR(error, 0.0, 1e-8) << row.printed << row.requested << ' ' << k;
        }
    }
}

TEST(GeoRef, ReverseProjectionFollowsEveryChange) {
    GeoRef geo = sample_points(20), other = sample_points(20);
    double x, y, X, Y;
    for (const int type : {7, 1, 2}) {  // nothing of a larger system stays, either
        const double sign = type == 1 ? -1 : 1, error = type == 7 ? 0.3 : 1e-9;
        geo.process_type(type);
        geo.project_point(1, -1.5, X, Y);
        geo.reverse_project_point(X, sign * Y, x, y);
        EXPECT_TRUE(std::fabs(x - 1) < error && std::fabs(y + sign * 1.5) < error) << type;
    }
    other.process_type(4);
    other.reverse_project_point(1, 1, X, Y);
    geo = other;
    for (const bool changed : {false, true}) {
        if (changed) geo.set_gcp_values(1, 6, -5, -3, 8);
        geo.reverse_project_point(1, 1, x, y);
        EXPECT_EQ(x != X, changed);
    }
}

TEST(GeoRef, OddSetsOfPointsAreHarmless) {
    double x, y, X, Y;
    GeoRef none(-3, nullptr, nullptr, nullptr, nullptr), one = sample_points(1);
    none.process_type(4);
    EXPECT_TRUE(none.get_num_gcps() == 0 && std::isnan(none.rms_tot_error()));
    one.project_point(3, 4, X, Y);
    EXPECT_TRUE(X == 0 && Y == 0);  // not fitted yet
    for (const int requested : {-5, 0, 7}) {
        one.process_type(requested);
        EXPECT_NEAR(one.rms_tot_error(), 0.0, 1e-12) << requested;
    }
    for (const int i : {-1, 1}) {
        EXPECT_EQ(one.set_gcp_values(i, 1, 2, 3, 4) + one.get_gcp_values(i, x, y, X, Y) + one.rms_error(i),
                  0);
    }
    GeoRef same(6, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(plx::test::capture_stdout([&] { same.process_type(5); }), "");
    same.project_point(3, 4, X, Y);
    EXPECT_TRUE(std::isfinite(X) && std::isfinite(Y));
}

TEST(GeoRef, WorldFileHoldsTheAffineMapOfTheCorners) {
    const plx::test::TempFolder folder;
    const double x[] = {10, 30}, y[] = {20, 20}, X[] = {100, 160}, Y[] = {200, 200};
    GeoRef row(2, x, y, X, Y), curved = sample_points(20);
    plx::test::capture_stdout([&] { row.process_type(2); });
    curved.process_type(5);
    const std::string world = folder.file("a.tfw"), nowhere = folder.file("no/a.tfw");
    for (GeoRef* geo : {&row, &curved}) {
        ASSERT_EQ(geo->write_world(world.c_str()), 1);
        std::istringstream text(folder.read("a.tfw"));
        double A, D, B, E, C, F, px, py;
        ASSERT_TRUE(text >> A >> D >> B >> E >> C >> F);
        for (const auto& [cx, cy] : {std::pair(-2.0, -1.8), {2.0, -1.8}, {-2.0, 1.8}}) {  // the curved one's
            geo->project_point(cx, cy, px, py);
            EXPECT_NEAR(A * cx + B * cy + C, px, 1e-5);
            EXPECT_NEAR(D * cx + E * cy + F, py, 1e-5);
        }
    }
    EXPECT_EQ(folder.read("a.tfw").find("\r\n") != std::string::npos, plx::test::kWindows);
    const auto refused = [&] { EXPECT_EQ(row.write_world(nowhere.c_str()) + row.write_GCP(nullptr), 0); };
    EXPECT_EQ(plx::test::capture_stdout(refused),
              "The file " + nowhere + " could not be opened.\nThe file was not opened\n");
}

}  // namespace
