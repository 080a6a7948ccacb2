#include "plxutils/core/VXNumeric.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <thread>
#include <vector>

#include "plxutils/core/VXDebugTimer.h"
#include "plxutils/core/VXTimer.h"
#include "support/capture_stdout.h"

TEST(VXNumeric, RoundsHalfAwayFromZero) {
    const std::tuple<double, int, double> cases[] = {
        {2.345, 2, 2.35}, {-2.5, 0, -3},       {2.5, 0, 3},      {1234, -2, 1200}, {1250, -2, 1300},
        {1.5, 309, 1.5},  {1e300, 10, 1e300},  {0, 400, 0},      {5, -400, 0},     {5e-9, 8, 1e-8},
        {4.9e-9, 8, 0},   {1.5, INT_MAX, 1.5}, {0.125, 2, 0.13}, {7, INT_MIN, 0}};
    for (const auto& [v, digits, rounded] : cases)
        EXPECT_DOUBLE_EQ(RoundDouble(v, digits), rounded) << v << " " << digits;
}

TEST(VXNumeric, PiLiesOneStepAboveTheNearestDouble) {
    EXPECT_EQ(PI(), std::nextafter(3.14159265358979323846, 4.0));
    EXPECT_EQ(rad_to_deg(PI()), 180.00000000000003);
    EXPECT_DOUBLE_EQ(deg_to_rad(90), PI() / 2);
}

TEST(VXNumeric, Blends) {
    EXPECT_DOUBLE_EQ(blend_vals(0, 10, 0.5, false, true), 5);
    EXPECT_DOUBLE_EQ(blend_vals(1, 3, 0.5, true, false), std::log10(505.0));
    EXPECT_DOUBLE_EQ(blend_vals(2, 6, 0.25, false, false), 3);
    EXPECT_NEAR(blend_vals(0, 1, 0.25, false, true), 0.5 - std::sqrt(0.125), 1e-12);
}

TEST(VXTimings, TellsTheDurationInWords) {
    const std::vector<std::pair<double, const char*>> cases = {
        {0.04, "0.04 seconds"}, {0.7, "0.7 seconds"},          {1, "1 second"},
        {59.9, "59 seconds"},   {61, "1 minute, 1 second"},    {5399, "89 minutes, 59 seconds"},
        {18000, "5.00 hours"},  {5400, "1 hour, 30 minutes"},  {7260, "2 hours, 1 minute"},
        {-3, "-3.00 seconds"},  {14400, "4 hours, 0 minutes"}, {std::nan(""), "nan seconds"}};
    for (const auto& [seconds, text] : cases) EXPECT_STREQ(VXTimings(10, 10 + seconds).text, text);
}

TEST(VXTimer, MeasuresElapsedTime) {
    VXTimer timer;
    VXDebugTimer sections;
    sections.start();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    sections.stop();
    EXPECT_GE(timer.timings().seconds, 0.02);
    EXPECT_EQ(sections.seconds(), 0) << "whole seconds only";
    EXPECT_EQ(plx::test::capture_stdout([&] { timer.print(); }).substr(0, 3), "[0.");
}
