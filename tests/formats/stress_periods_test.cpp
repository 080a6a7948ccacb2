#include "formats/stress_periods.h"

#include <gtest/gtest.h>

#include <climits>

#include "formats/grid_geometry.h"
#include "support/memory_streams.h"

using namespace plx;

TEST(StressPeriods, EndTimesFollowTheMultiplier) {
    const StressPeriods table{{{10.0, 1, 1.0}, {70.0, 3, 2.0}, {5.0, 2, 0.25}, {4.0, 2, 0.0}}};
    const std::vector<std::tuple<int, int, double>> cases = {
        {0, 0, 10.0}, {1, 0, 20.0}, {1, 1, 40.0},  {1, 2, 80.0},  {2, 0, 84.0}, {2, 1, 85.0},
        {3, 0, 87.0}, {0, 1, -1.0}, {0, -1, -1.0}, {-1, 0, -1.0}, {4, 0, -1.0},
    };
    for (const auto& [period, step, time] : cases) {
        EXPECT_DOUBLE_EQ(table.end_time(period, step), time) << period << " " << step;
    }
}

TEST(StressPeriods, AbsurdStepCountsStayFinite) {
    const StressPeriods table{{{1.0, INT_MAX, 1.5}, {1.0, INT_MAX, 0.5}, {1.0, -4, 1.0}}};
    EXPECT_EQ(table.total_steps(), INT_MAX);
    EXPECT_DOUBLE_EQ(table.end_time(0, 0), 0.0);
    EXPECT_DOUBLE_EQ(table.end_time(0, INT_MAX - 1), 1.0);
    EXPECT_DOUBLE_EQ(table.end_time(1, 0), 1.5);
}

TEST(GridGeometry, RowEdgesInEachDirection) {
    const std::vector<double> delc = {1.0, 2.0, 4.0};
    EXPECT_EQ(test::text_of(row_edges(delc, false, true)), "0 1 3 7");
    EXPECT_EQ(test::text_of(row_edges(delc, true, false)), "7 3 1 0");
    EXPECT_EQ(test::text_of(row_edges(delc, true, true)), "7 6 4 0");
}
