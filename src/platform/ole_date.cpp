#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/platform.h"

namespace plx::platform {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::int64_t kFirstDay = -693593;  // 1 January of year 1
constexpr std::int64_t kLastDay = 2958465;   // 31 December 9999
// Days from 1 March of year 0, from which leap days fall at the end of a year, to 30 December 1899.
constexpr std::int64_t kMarchOffset = 693899;
constexpr std::int64_t kDaysPer400Years = 146097;

/// Days since 1 March of year 0 for a month counted from March (0 to 11).
std::int64_t march_days(std::int64_t year, std::int64_t month_from_march, std::int64_t day) {
    const std::int64_t month_days = (153 * month_from_march + 2) / 5;
    return year * 365 + year / 4 - year / 100 + year / 400 + month_days + day - 1;
}

std::int64_t ole_day(int year, int month, int day) {
    const bool before_march = month < 3;
    return march_days(before_march ? year - 1 : year, before_march ? month + 9 : month - 3, day) -
           kMarchOffset;
}

void set_day(std::int64_t ole_day_number, CalendarDate& date) {
    const std::int64_t days = ole_day_number + kMarchOffset;
    const std::int64_t cycle = days / kDaysPer400Years;
    const std::int64_t in_cycle = days % kDaysPer400Years;
    const std::int64_t year_in_cycle =
        (in_cycle - in_cycle / 1460 + in_cycle / 36524 - in_cycle / (kDaysPer400Years - 1)) / 365;
    const std::int64_t in_year = in_cycle - (365 * year_in_cycle + year_in_cycle / 4 - year_in_cycle / 100);
    const std::int64_t month_from_march = (5 * in_year + 2) / 153;
    const std::int64_t month = month_from_march < 10 ? month_from_march + 3 : month_from_march - 9;
    date.year = static_cast<int>(cycle * 400 + year_in_cycle + (month < 3 ? 1 : 0));
    date.month = static_cast<int>(month);
    date.day = static_cast<int>(in_year - (153 * month_from_march + 2) / 5 + 1);
}

bool valid(const CalendarDate& date) {
    if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > 31)
        return false;
    if (date.hour < 0 || date.hour > 23 || date.minute < 0 || date.minute > 59 || date.second < 0 ||
        date.second > 59)
        return false;
    CalendarDate back;
    set_day(ole_day(date.year, date.month, date.day), back);
    return back.month == date.month;
}

}  // namespace

bool ole_to_calendar(double ole_date, CalendarDate& date) {
    if (!(std::fabs(ole_date) < 4.0e6)) return false;
    const double whole = std::trunc(ole_date);
    auto day = static_cast<std::int64_t>(whole);
    auto seconds =
        static_cast<std::int64_t>(std::floor(std::fabs(ole_date - whole) * double{kSecondsPerDay} + 0.5));
    if (seconds >= kSecondsPerDay) {
        ++day;
        seconds = 0;
    }
    if (day < kFirstDay || day > kLastDay) return false;
    set_day(day, date);
    date.hour = static_cast<int>(seconds / 3600);
    date.minute = static_cast<int>(seconds / 60 % 60);
    date.second = static_cast<int>(seconds % 60);
    return true;
}

double calendar_to_ole(const CalendarDate& date) {
    if (!valid(date)) return std::numeric_limits<double>::quiet_NaN();
    const auto day = static_cast<double>(ole_day(date.year, date.month, date.day));
    const double fraction = (date.hour * 3600 + date.minute * 60 + date.second) / double{kSecondsPerDay};
    return day < 0 ? day - fraction : day + fraction;
}

std::string date_text(double ole_date) {
    CalendarDate date;
    if (!ole_to_calendar(ole_date, date)) return "Invalid DateTime";
    char text[96];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year, date.month, date.day,
                  date.hour, date.minute, date.second);
    return text;
}

}  // namespace plx::platform
