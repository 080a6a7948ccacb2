#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "platform/platform.h"

namespace plx::platform {
namespace {

TEST(OleDate, TextOfADate) {
    constexpr double kLate = 86399.6 / 86400;
    // clang-format off
    const std::vector<std::pair<double, std::string>> cases = {
        {0.0, "1899-12-30 00:00:00"}, {1.5, "1899-12-31 12:00:00"}, {-1.25, "1899-12-29 06:00:00"},
        {-0.5, "1899-12-30 12:00:00"}, {61.0, "1900-03-01 00:00:00"}, {36585.0, "2000-02-29 00:00:00"},
        {45657.0 + 86399.4 / 86400, "2024-12-31 23:59:59"}, {45657.0 + kLate, "2025-01-01 00:00:00"},
        {-2.0 - kLate, "1899-12-29 00:00:00"}, {-693593.0, "0001-01-01 00:00:00"},
        {-693594.0, "Invalid DateTime"}, {2958465.0 + kLate, "Invalid DateTime"}, {2958466.0, "Invalid DateTime"},
        {-HUGE_VAL, "Invalid DateTime"}, {std::nan(""), "Invalid DateTime"}};
    // clang-format on
    for (const auto& [date, expected] : cases) EXPECT_EQ(date_text(date), expected) << date;
}

TEST(OleDate, DaysAgreeWithTheStandardCalendar) {
    CalendarDate date;
    for (int day = -693593; day <= 2958465; day += 11) {
        ASSERT_TRUE(ole_to_calendar(day, date)) << day;
        ASSERT_EQ(std::chrono::year(date.year) / date.month / date.day,
                  std::chrono::year_month_day(std::chrono::sys_days(std::chrono::days(day - 25569))));
        ASSERT_EQ(calendar_to_ole(date), day);
    }
}

TEST(OleDate, ImpossibleCalendarDatesAreNotNumbers) {
    for (const CalendarDate& date : std::vector<CalendarDate>{
             {2023, 2, 29}, {1900, 2, 29}, {2023, 13, 1}, {0, 1, 1}, {2023, 4, 31}, {2023, 1, 1, 24}})
        EXPECT_TRUE(std::isnan(calendar_to_ole(date))) << date.year << ' ' << date.month << ' ' << date.day;
    EXPECT_EQ(calendar_to_ole({1899, 12, 29, 6, 0, 0}), -1.25);
}

}  // namespace
}  // namespace plx::platform
