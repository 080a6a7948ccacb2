#include "converters/time_axis.h"

#include <gtest/gtest.h>

namespace plx {

TEST(TimeAxis, DayFactorsKnowBriefWordsAndFullOnesOnDemand) {
    const struct {
        const char* word;
        bool full;
        double factor;
        bool used;
    } cases[] = {{"yr", false, 365.2425116, false},  {"d", false, 1.0, false},
                 {"h", true, 1.0 / 24.0, false},     {"min", false, 1.0 / 1440.0, false},
                 {"s", false, 1.0 / 86400.0, false}, {"S", false, 1.0, false},
                 {"years", false, 1.0, false},       {"years", true, 365.2425116, true},
                 {"days", true, 1.0, false},         {"seconds", true, 1.0 / 86400.0, true},
                 {"undefined", true, 1.0, false},    {"", true, 1.0, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.word);
        bool used = false;
        EXPECT_EQ(day_factor(c.word, c.full, used), c.factor);
        EXPECT_EQ(used, c.used);
    }
}

TEST(TimeAxis, TextsOfEqualTimesStayApart) {
    UniqueTimeTexts texts;
    EXPECT_EQ(texts.next(365.25), "365_250");
    EXPECT_EQ(texts.next(0.0001), "0_000");
    EXPECT_EQ(texts.next(0.0002), "0_000_2");
    EXPECT_EQ(texts.next(0.0003), "0_000_3");
    EXPECT_EQ(texts.next(1e9), "1000000000_000");
}

TEST(TimeAxis, DatesStopWhereDatesDo) {
    EXPECT_EQ(step_date(36892.0, 12.5), "2001-01-13 12:00:00");
    EXPECT_EQ(step_date(0.0, -3615898.0), "Invalid DateTime");
    EXPECT_EQ(step_date(2958465.0, 2.0), "Invalid DateTime");
}

}  // namespace plx
