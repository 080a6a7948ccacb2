#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "platform/host_runtime.h"
#include "plxutils/geometry/cgBox.h"
#include "plxutils/geometry/cgRay.h"
#include "plxutils/geometry/cgSegment.h"
#include "plxutils/geometry/cgTriangle.h"
#include "support/capture_stdout.h"

namespace {

/// Points in a small cube; whole numbers now and then, so that some fall on edges, faces and axes.
cgPoint random_point(std::mt19937& generator) {
    const bool whole = generator() % 2 == 0;
    const auto value = [&] {
        const double v = std::uniform_real_distribution<double>(-3.0, 3.0)(generator);
        return whole ? std::round(v) : v;
    };
    return {value(), value(), value(), 0};
}

/// Distance to p0 + t d, t held in [low, high]; an end of the range stands for the nearest of all points.
double reference_distance(const cgPoint& p0, const cgPoint& p1, const cgPoint& p, double low, double high) {
    const cgVector d = p1 - p0;
    const double t = std::clamp((p - p0).DotProduct(d) / d.SquaredLength(), low, high);
    return p.GetDistance(p0 + d * t);
}

/// Distance to a triangle: the plane where the foot lies inside, else the nearest edge.
double reference_distance(const cgPoint& a, const cgPoint& b, const cgPoint& c, const cgPoint& p) {
    const cgVector n = (b - a) * (c - a);
    const bool inside = n.DotProduct((b - a) * (p - a)) >= 0 && n.DotProduct((c - b) * (p - b)) >= 0 &&
                        n.DotProduct((a - c) * (p - c)) >= 0;
    if (inside) return std::fabs(n.DotProduct(p - a)) / n.Length();
    return std::min({reference_distance(a, b, p, 0, 1), reference_distance(b, c, p, 0, 1),
                     reference_distance(c, a, p, 0, 1)});
}

TEST(cgBox, DistancesAreThoseToTheNearestAndFarthestPoints) {
    std::mt19937 random(5);
    for (int trial = 0; trial < 5000; ++trial) {
        const cgPoint a = random_point(random), b = random_point(random), p = random_point(random);
        const cgBox box = cgSegment(a, b).GetExtents();
        const auto chosen = [&](double (*choose)(double v, double low, double high)) {
            return cgPoint(choose(p.x(), box.min.x(), box.max.x()), choose(p.y(), box.min.y(), box.max.y()),
                           choose(p.z(), box.min.z(), box.max.z()), 0);
        };
        const cgPoint nearest =
            chosen([](double v, double low, double high) { return std::clamp(v, low, high); });
        const cgPoint farthest =
            chosen([](double v, double low, double high) { return v - low > high - v ? low : high; });
        double min_distance, max_distance;
        box.GetMinMaxDistance(p, min_distance, max_distance);
        EXPECT_DOUBLE_EQ(min_distance, p.GetDistance(nearest));
        EXPECT_DOUBLE_EQ(max_distance, p.GetDistance(farthest));
        EXPECT_DOUBLE_EQ(box.GetDistance2D(p), p.GetDistance2D(nearest));
        EXPECT_EQ(box.ContainsPoint(p), p == nearest);
    }
}

TEST(cgBox, OverlapsIncludeItsFaces) {
    const cgBox unit(0, 0, 0, 1, 1, 1), touching(1, 0, 0, 2, 1, 1), reversed(2, 0, 0, 0.5, 1, 1);
    EXPECT_TRUE(unit.IntersectsBox(touching) && unit.IntersectsBox(reversed) && reversed.IntersectsBox(unit));
    EXPECT_FALSE(unit.IntersectsBox({0, 0, 1.5, 1, 1, 2}) || reversed.ContainsPoint({1, 0.5, 0.5, 0}));
    EXPECT_FALSE(unit.ContainsBox({5, 0, 0, 0.5, 1, 1}));
    EXPECT_TRUE(unit.ContainsBox({0, 0, 0.5, 1, 1, 1}) && !unit.ContainsBox({0, 0, 0.5, 1, 1.5, 1}));
}

TEST(cgLine, LineRayAndSegmentAgreeWithAClampedParameter) {
    std::mt19937 random(9);
    for (int trial = 0; trial < 5000; ++trial) {
        const cgPoint a = random_point(random), b = random_point(random), p = random_point(random);
        if (a == b) continue;
        const cgSegment segment(a, b);
        const cgElement& line = segment;
        EXPECT_NEAR(line.GetDistance(p), reference_distance(a, b, p, -1e9, 1e9), 1e-12);
        EXPECT_NEAR(cgRay(a, b).GetDistance(p), reference_distance(a, b, p, 0, 1e9), 1e-12);
        cgPoint closest;
        const double distance = segment.GetDistance(p, &closest);
        EXPECT_NEAR(distance, reference_distance(a, b, p, 0, 1), 1e-12);
        EXPECT_NEAR(p.GetDistance(closest), distance, 1e-12);

        const cgPoint a2(a.x(), a.y(), 0, 0), b2(b.x(), b.y(), 0, 0), p2(p.x(), p.y(), 0, 0);
        const double flat = a2 == b2 ? p2.GetDistance(a2) : reference_distance(a2, b2, p2, 0, 1);
        EXPECT_NEAR(segment.GetDistance2D(p, nullptr), flat, 1e-12);
    }
}

TEST(cgSegment, ClosestPointCarriesDataAndMayBeTheQuery) {
    const double start_data[] = {1.0}, end_data[] = {2.0};
    const cgSegment segment(cgPoint(0, 0, 0, 1, start_data), cgPoint(10, 5, 10, 1, end_data));
    cgPoint p(20, 20, 20, 0);
    EXPECT_EQ(segment.GetDistanceSquared(p, &p), 425.0);
    EXPECT_EQ(p, segment.p1);
    EXPECT_EQ(p[0], 2.0);
    EXPECT_EQ(segment.GetDistance2DSquared(cgPoint(3, 9, 0, 0), &p), 45.0);
    EXPECT_EQ(p, cgPoint(6, 3, 6, 0));
    EXPECT_EQ(p[0], 1.0);
    EXPECT_EQ(cgSegment(2, 10, 0, 2, 0, 0).GetDistance2DSquared(cgPoint(5, 5, 0, 0), &p), 9.0);
    EXPECT_EQ(p, cgPoint(6, 3, 6, 0));
}

template <class Shape>
concept MeasuresWithOneArgument = requires(const Shape& s, const cgPoint& p) {
    s.GetDistance(p);
};
static_assert(MeasuresWithOneArgument<cgRay> && !MeasuresWithOneArgument<cgSegment>);

TEST(cgTriangle, HasNoSideInItsPlaneAndNoDistanceWhenDegenerate) {
    const cgPoint o(0, 0, 0, 0), x(1, 0, 0, 0), y(0, 1, 0, 0);
    const std::tuple<cgPoint, cgPoint, double, int> table[] = {
        {y, {0.25, 0.25, 0, 0}, 0, 0}, {y, {3, 4, 0, 0}, 18, 0}, {y, {2, -1, 2, 0}, 6, 1}, {x, y, NAN, 0}};
    for (const auto& [corner, p, expected, expected_side] : table) {
        int side = 9;
        const double squared = cgTriangle(o, x, corner).GetSquaredDistance(p, &side, nullptr);
        EXPECT_TRUE(std::isnan(expected) ? std::isnan(squared) : std::fabs(squared - expected) < 1e-12);
        EXPECT_EQ(side, expected_side) << expected;
    }
}

TEST(cgTriangle, LongestEdgeComesFirst) {
    const cgPoint v[] = {{0, 0, 0, 0}, {1, 0, 0, 0}, {0, 5, 0, 0}};
    for (std::size_t i = 0; i < 3; ++i) {
        cgTriangle t(v[i], v[(i + 1) % 3], v[(i + 2) % 3]);
        EXPECT_TRUE(t.V0 == v[1] && t.V1 == v[2] && t.V2 == v[0]) << i;
        EXPECT_DOUBLE_EQ(t.Area(), 2.5);
        t.SetTriangle(t.V2, t.V0, t.V1);
        EXPECT_EQ(t.Origin(), v[1]);
    }
}

int host_calls = 0;

TEST(cgTriangle, BothMethodsGiveDistancesAndSides) {
    plx::platform::host_runtime().MATmat4_identity = [](float* m) {
        for (int i = 0; i < 16; ++i) m[i] = i % 5 == 0 ? 1.0F : 0.0F;
        ++host_calls;
    };
    std::mt19937 random(21);
    for (int trial = 0; trial < 6000; ++trial) {
        longestEdgeFirst = trial < 5000;  // the other method works in single precision
        const double tolerance = longestEdgeFirst ? 1e-6 : 1e-4;
        const cgPoint a = random_point(random), b = random_point(random), c = random_point(random),
                      p = random_point(random);
        cgTriangle t(a, b, c);
        const double height = ((b - a) * (c - a)).DotProduct(p - a);
        if (t.Area() < 0.05 || std::fabs(height) < 1e-3) continue;
        const double expected = reference_distance(a, b, c, p);
        cgPoint closest;
        EXPECT_NEAR(t.GetSignedDistance(p, &closest), height > 0 ? expected : -expected, tolerance);
        EXPECT_TRUE(longestEdgeFirst || std::fabs(p.GetDistance(closest) - expected) < tolerance) << trial;
    }
    cgTriangle flat(cgPoint(0, 0, 0, 0), cgPoint(2, 0, 0, 0), cgPoint(0, 2, 0, 0));
    const cgPoint beside(3, 0, 0, 0);
    EXPECT_EQ(plx::test::capture_stdout([&] { flat.GetDistance(beside, nullptr, nullptr); }),
              "Point at [3.000000,0.000000,0.000000]: Side==0\n");
    longestEdgeFirst = true;
    EXPECT_EQ(flat.GetSignedDistance(beside, nullptr), 0.0);
    plx::platform::host_runtime() = {};
    EXPECT_GT(host_calls, 0);
}

}  // namespace
