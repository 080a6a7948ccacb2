#include "plxutils/math/VX4X4Matrix.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "plxutils/core/VXNumeric.h"
#include "plxutils/math/ViewAngles.h"
#include "support/capture_stdout.h"

namespace {

using Point3 = std::array<double, 3>;

Point3 transformed(const VX4X4Matrix& m, Point3 p) {
    m.transformPoint(p[0], p[1], p[2]);
    return p;
}

Point3 transformed_back(VX4X4Matrix& m, Point3 p) {
    m.invTransformPoint(p[0], p[1], p[2]);
    return p;
}

void expect_near(const Point3& a, const Point3& b, double tolerance = 1e-11) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "coordinate " << i;
}

void stretch_and_turn(VX4X4Matrix& m) {
    m.Scale(1, 2, 4);
    m.ZRotDeg(30);
    m.YRotDeg(60);
    m.YShearDeg(45);
    m.Translate(1, 2, 3);
}

TEST(VX4X4Matrix, OperationsMoveThePointAndKeepTheFlags) {
    using M = VX4X4Matrix;
    const struct {
        const char* name;
        void (*build)(M&);
        Point3 expected;  // of (1, 2, 3)
        bool identity, xy_only;
    } table[] = {
        {"nothing", [](M&) {}, {1, 2, 3}, true, true},
        {"translate", [](M& m) { m.Translate(10, 20, 30); }, {11, 22, 33}, false, false},
        {"translate x y", [](M& m) { m.Translate(5, 6, 0); }, {6, 8, 3}, false, true},
        {"set x y", [](M& m) { m.Scale(2, 2, 2), m.SetXYTranslates(5, 6); }, {6, 8, 3}, false, true},
        {"scale", [](M& m) { m.Scale(2, 3, -1); }, {2, 6, -3}, false, false},
        {"x", [](M& m) { m.XRot(PI() / 2); }, {1, -3, 2}, false, false},
        {"x by sine and cosine", [](M& m) { m.XRot(1, 0); }, {1, -3, 2}, false, false},
        {"y", [](M& m) { m.YRotDeg(90); }, {3, 2, -1}, false, false},
        {"z", [](M& m) { m.ZRotDeg(90); }, {-2, 1, 3}, false, false},
        {"x shear", [](M& m) { m.XShearDeg(45); }, {3, 2, 3}, false, false},
        {"y shear", [](M& m) { m.YShearDeg(45); }, {1, 3, 3}, false, false},
        {"z shear is by y", [](M& m) { m.ZShearDeg(45); }, {1, 2, 5}, false, false},
        {"tiny element", [](M& m) { m.set_element(2, 0, 1e-9); }, {1, 2, 3}, true, false},
        {"small element", [](M& m) { m.set_element(2, 0, 1e-8); }, {1, 2, 3.00000001}, false, false},
        {"rows swapped", [](M& m) { m.swap_rows(0, 1); }, {2, 1, 3}, false, false},
        {"all", stretch_and_turn, {10.825317547305, 15.789419162443, 9.982050807569}, false, false},
    };
    for (const auto& c : table) {
        SCOPED_TRACE(c.name);
        VX4X4Matrix m;
        c.build(m);
        EXPECT_EQ(m.is_Identity(), c.identity);
        EXPECT_EQ(m.is_xylateOnly(), c.xy_only);
        expect_near(transformed(m, {1, 2, 3}), c.expected);
        expect_near(transformed_back(m, c.expected), {1, 2, 3});
        expect_near(transformed(VX4X4Matrix(m).Inverse(), c.expected), {1, 2, 3});
        expect_near(transformed(m * VX4X4Matrix(m).Inverse(), {1, 2, 3}), {1, 2, 3});
        c.build(m);  // the inverse that it keeps by now does not fit any more
        expect_near(transformed_back(m, transformed(m, {1, 2, 3})), {1, 2, 3});
    }
}

TEST(VX4X4Matrix, FloatsComeBackTransposed) {
    std::array<float, 16> in{}, out{};
    for (std::size_t i = 0; i < 16; ++i) in[i] = static_cast<float>(i) + 0.5F;
    VX4X4Matrix(in.data()).Transpose().MatToFloat(out.data());
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(out[i], in[i % 4 * 4 + i / 4]);
}

TEST(VX4X4Matrix, ResizedThroughItsBaseItLeavesPointsAlone) {
    VX4X4Matrix m;
    m.Scale(2, 2, 2);
    static_cast<VXMatrix&>(m).reset_dim(2, 2);
    expect_near(transformed(m, {1, 2, 3}), {1, 2, 3}, 0.0);
    expect_near(transformed_back(m, {1, 2, 3}), {1, 2, 3}, 0.0);
    EXPECT_TRUE(m.Inverse().is_Identity());
    EXPECT_TRUE(m.Transpose().is_Identity());
}

TEST(ViewAngles, ViewsTurnedAboutXAndZ) {
    const double half = std::atan(0.5) * 180.0 / PI();
    const struct {
        double x_angle, z_angle, elevation, azimuth;
        const char* text;
    } table[] = {{0, 0, 90, 180, "\nxRot: 0.000000\n"},
                 {-30, 45, 60, 180 + half, "\nxRot: 30.000000\n"},
                 {30, 135, -60, half, "\nxRot: -30.000000\n"},
                 {30, -135, -60, 360 - half, "\nxRot: -30.000000\n"}};
    for (const auto& c : table) {
        SCOPED_TRACE(c.azimuth);
        VX4X4Matrix view;
        view.ZRotDeg(c.z_angle);
        view.XRotDeg(c.x_angle);
        view.YRotDeg(20);
        view.Scale(3, 3, 3);
        double azimuth, elevation, scale, y_rotation;
        const std::string text = plx::test::capture_stdout(
            [&] { EXPECT_TRUE(GetAzElSettings(-2, 1, view, azimuth, elevation, scale, y_rotation)); });
        EXPECT_EQ(text, std::string("yRot: 20.000000") + c.text);
        EXPECT_NEAR(azimuth, c.azimuth, 1e-9);
        EXPECT_NEAR(elevation, c.elevation, 1e-9);
        EXPECT_NEAR(scale, 1.5, 1e-12);
    }
}

}  // namespace
