#include "plxutils/math/VX4X4Matrix.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

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

void expect_near(const Point3& a, const Point3& b, double tolerance = 1e-12) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "coordinate " << i;
}

TEST(VX4X4Matrix, OperationsMoveThePointAndKeepTheFlags) {
    using M = VX4X4Matrix;
    struct Case {
        const char* name;
        std::function<void(M&)> build;
        Point3 expected;  // of (1, 2, 3)
        bool identity, xy_only;
    };
    const std::vector<Case> table = {
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
    };
    for (const Case& c : table) {
        SCOPED_TRACE(c.name);
        VX4X4Matrix m;
        c.build(m);
        EXPECT_EQ(m.is_Identity(), c.identity);
        EXPECT_EQ(m.is_xylateOnly(), c.xy_only);
        expect_near(transformed(m, {1, 2, 3}), c.expected);
        expect_near(transformed_back(m, c.expected), {1, 2, 3});
    }
}

TEST(VX4X4Matrix, InverseTakesRandomTransformsBack) {
    std::mt19937 generator(3);
    std::uniform_real_distribution<double> value(-2.0, 2.0);
    VX4X4Matrix m;
    for (int trial = 0; trial < 200; ++trial) {
        if (trial % 8 == 0) m.MakeIdentity();
        m.XRot(value(generator));
        m.ZRot(value(generator));
        m.Scale(1.5, 0.75, 1.25);
        m.Translate(value(generator), value(generator), value(generator));
        const Point3 p{value(generator), value(generator), value(generator)};
        const Point3 q = transformed(m, p);
        expect_near(transformed_back(m, q), p, 1e-9);
        VX4X4Matrix copy(m);
        expect_near(transformed(copy.Inverse(), q), p, 1e-9);
        expect_near(transformed(m * copy.Inverse(), p), p, 1e-9);
    }
}

TEST(VX4X4Matrix, FloatsComeBackTransposed) {
    std::array<float, 16> in{}, out{};
    for (std::size_t i = 0; i < 16; ++i) in[i] = static_cast<float>(i) + 0.5F;
    VX4X4Matrix(in.data()).Transpose().MatToFloat(out.data());
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(out[i], in[i % 4 * 4 + i / 4]);
}

template <class M>
concept Resizable = requires(M& m) {
    m.reset_dim(2, 2);
};
static_assert(Resizable<VXMatrix> && !Resizable<VX4X4Matrix>);

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
    struct Case {
        double x_angle, z_angle, elevation, azimuth;
        const char* text;
    };
    const double half = std::atan(0.5) * 180.0 / PI();
    const std::vector<Case> table = {{0, 0, 90, 180, "\nxRot: 0.000000\n"},
                                     {-30, 45, 60, 180 + half, "\nxRot: 30.000000\n"},
                                     {30, 135, -60, half, "\nxRot: -30.000000\n"},
                                     {30, -135, -60, 360 - half, "\nxRot: -30.000000\n"}};
    for (const Case& c : table) {
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
