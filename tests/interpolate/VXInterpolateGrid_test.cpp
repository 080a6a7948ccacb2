#include "plxutils/interpolate/VXInterpolateGrid.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <vector>

#include "support/capture_stdout.h"

namespace {

TEST(VXInterpolateGrid, WeightsGrowWithTheSquaredDistance) {
    VXInterpolateGrid grid(2, 2, 1, false);
    cgPointList out;
    grid.set_point(7.0, 1, 1, 0, 1, 0, 0);
    grid.set_point(8.0, 0, 1, 0, 0, 3, 0);
    grid.set_point(-1.0, 1, 0, 0, 0, 0, 1);
    grid.project_point(1, 1, 0, 0, 0, 0, out);
    ASSERT_EQ(out.count(), 2);
    EXPECT_EQ(out[1], cgPoint(0, 3, 0, 0));
    EXPECT_EQ(out[1][1], 8.0);
    EXPECT_NEAR(out[0][2], 0.1, 1e-15);
    EXPECT_NEAR(out[1][2], 0.9, 1e-15);
}

TEST(VXInterpolateGrid, CornersAreVisitedInOrderAndOnlyInsideTheGrid) {
    struct Case {
        bool lower;
        std::array<int, 3> query;
        std::vector<double> nodes;
    };
    const std::vector<Case> table = {
        {false, {1, 2, 1}, {121, 21, 111, 11}},
        {true, {1, 2, 1}, {121, 21, 111, 11, 120, 20, 110, 10}},
        {false, {2, 3, 0}, {120}},
        {true, {0, 3, 2}, {21}},
        {true, {INT_MIN, INT_MIN, INT_MIN}, {}},
    };
    for (const Case& c : table) {
        SCOPED_TRACE(c.query[1]);
        VXInterpolateGrid grid(2, 3, 2, c.lower);
        for (int n = 0; n < 12; ++n) {
            const int i = n % 2, j = n / 2 % 3, k = n / 6;
            grid.set_point(100 * i + 10 * j + k, i, j, k, i, j, k);
        }
        cgPointList out;
        grid.project_point(c.query[0], c.query[1], c.query[2], 0.5, 0.25, 0.125, out);
        std::vector<double> nodes;
        for (int i = 0; i < out.count(); ++i) nodes.push_back(out[i][1]);
        EXPECT_EQ(nodes, c.nodes);
    }
}

TEST(VXInterpolateGrid, NodesOutsideGoToTheFirstSlotWhenThereIsOne) {
    for (int extent : {1, 0, -1, INT_MAX}) {
        VXInterpolateGrid grid(extent, extent, extent, false);
        EXPECT_NE(plx::test::capture_stdout([&] { grid.set_point(4.0, 1, 0, 0, 9, 9, 9); }), "");
        cgPointList out;
        grid.project_point(0, 0, 0, 9, 9, 8, out);
        EXPECT_EQ(out.count(), extent == 1 ? 1 : 0);
    }
}

}  // namespace
