#include "plxutils/geometry/cgPoint.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "plxutils/geometry/ElementArray.h"
#include "plxutils/geometry/cgAverage.h"
#include "support/capture_stdout.h"

namespace {

cgPoint with_data(double x, double y, double z, const std::vector<double>& data) {
    return {x, y, z, static_cast<int>(data.size()), data.data()};
}

std::vector<double> data_of(const cgPoint& p) { return {p.data(), p.data() + p.num_data()}; }

TEST(cgPoint, ComparesByTheFirstDifferingCoordinateAndNeverByData) {
    const plx::ElementArray<cgPoint> ascending = {
        {0, 9, 9, 0}, {1, 2, 3, 2}, {1, 2, 4, 0}, {1, 3, 0, 1}, {2, 0, 0, 0}};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            SCOPED_TRACE(std::to_string(i) + " " + std::to_string(j));
            const cgPoint& a = ascending[i];
            const cgPoint b = with_data(ascending[j].x(), ascending[j].y(), ascending[j].z(), {5});
            EXPECT_TRUE((a < b) == (i < j) && (a > b) == (i > j));
            EXPECT_TRUE((a <= b) == (i <= j) && (a >= b) == (i >= j) && (a == b) == (i == j));
            EXPECT_EQ(a.ptCompare(b), (i > j) - (i < j));
        }
    }
}

TEST(cgPoint, ComparesWithinTolerances) {
    double tolerance[] = {0.5, 0.5};
    const auto compare = [&](const cgPoint& a, const cgPoint& b, int first, int last) {
        return a.ptCompareWithData(b, first, last, 0.1, 0.1, 0.1, tolerance);
    };
    const cgPoint a = with_data(0, 0, 0, {1, 5}), b = with_data(0, 0, 0, {1.5, 4});
    EXPECT_EQ(compare({1.0, 0, 0, 0}, {1.1, 0, 0, 0}, 0, 0), 0);
    EXPECT_EQ(compare({1.0, 0, 0, 0}, {1.2, 0, 0, 0}, 0, 0), -1);
    EXPECT_EQ(compare({0, 2, 0, 0}, {0, 1.5, 9, 0}, 0, 0), 1);
    EXPECT_EQ(compare({0, 0, 0, 2}, {0, 0, 0, 3}, 0, 0), -1);
    EXPECT_EQ(compare(a, b, -3, 99), 1);
    EXPECT_EQ(compare(a, b, 0, 0), 0);
    EXPECT_EQ(compare(a, b, 1, 0), 0);
    EXPECT_EQ(a.ptCompareWithData(b, 0, 0, 0, 0, 0, nullptr), -1);
}

TEST(cgPoint, OwnsItsData) {
    cgPoint p = with_data(1, 2, 3, {4, 5, 6});
    p.SetPoint(0, 0, 0, 2, p.data() + 1);
    EXPECT_EQ(data_of(p), (std::vector<double>{5, 6}));
    cgPoint q = with_data(7, 8, 9, {1});
    (p = q).SetPoint(0, 0, 0, 0, nullptr);
    EXPECT_EQ(p, q);
    const cgPoint moved(std::move(q));
    EXPECT_EQ(data_of(moved), data_of(p));
    EXPECT_EQ(q.num_data(), 0);
    EXPECT_EQ(cgPoint(0, 0, 0, -2).data(), nullptr);

    cgPoint none, larger = with_data(0, 0, 0, {2});
    EXPECT_TRUE(p.dataLessThan(larger, 0));
    EXPECT_FALSE(none.dataLessThan(larger, 0) || p.dataLessThan(larger, 1) || p.dataLessThan(larger, -1));
    EXPECT_EQ(plx::test::capture_stdout([&] { p.PrintPoint(); }),
              "Point: [7.000000,8.000000,9.000000-1] [1.0]\n");
}

TEST(cgAverage, MeansWithEqualAndUnequalNumbersOfValues) {
    cgPoint p[] = {with_data(0, 0, 0, {1, 2}), with_data(2, 4, 8, {3, 6}), with_data(4, 8, 1, {5, 1}),
                   with_data(6, 0, 3, {7, 3}), cgPoint(2, 4, 8, 0)};
    const std::vector<std::pair<cgPoint, cgPoint>> table = {
        {AverageTwoPoints(p[0], p[1]), with_data(1, 2, 4, {2, 4})},
        {AverageTwoPoints(p[0], p[4]), with_data(1, 2, 4, {1, 2})},
        {AverageThreePoints(p[0], p[1], p[2]), with_data(2, 4, 3, {3, 3})},
        {AverageThreePoints(p[0], p[4], p[2]), with_data(2, 4, 3, {})},
        {AverageFourPoints(p[0], p[1], p[2], p[3]), with_data(3, 3, 3, {4, 3})},
        {AveragePoints(4, p), with_data(3, 3, 3, {4, 3})},
        {AveragePoints(0, p), cgPoint()},
    };
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_EQ(table[i].first, table[i].second) << "row " << i;
        EXPECT_EQ(data_of(table[i].first), data_of(table[i].second)) << "row " << i;
    }
}

}  // namespace
