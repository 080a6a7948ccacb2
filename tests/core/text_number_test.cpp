#include "core/text_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Limits = std::numeric_limits<double>;

// Doubles of every kind: all bit patterns, all sizes, everyday numbers, exact ties at the last decimal.
std::vector<double> many_doubles() {
    std::vector<double> values = {0.0,     5e-7,   4.9999999e-7,  1.5e-6, 2.5e-6,     0x1p-7,     3 * 0x1p-7,
                                  1e30,    1e22,   1e23,          0x1p53, 0x1p53 - 1, 0x1p53 + 2, 8e12,
                                  1e13,    1e-300, 0.9999995,     0.5,    0.0005,     0x1p-21,    0x1p-27,
                                  0x1p-28, 0x1p63, 999999.999999, 99.5,   12345678.9};
    values.insert(values.end(), {std::nextafter(8e12, 0.0), Limits::min(), Limits::denorm_min(),
                                 Limits::max(), Limits::infinity(), Limits::quiet_NaN()});
    for (std::size_t i = 0, n = values.size(); i < n; ++i) values.push_back(-values[i]);
    std::mt19937_64 random(20240607);
    for (int i = 0; i < 50000; ++i) {
        values.push_back(std::bit_cast<double>(random()));
        values.push_back(std::ldexp(static_cast<double>(random() >> 11), -static_cast<int>(random() % 90)));
        values.push_back(static_cast<double>(random() % 2000001) / -128.0);
        values.push_back(static_cast<double>(random() % 100000000) / 1e4);
    }
    return values;
}

TEST(TextNumber, PrintsTheBytesOfPrintf) {
    char ours[plx::kFixedMax], theirs[2 * plx::kFixedMax];
    for (const double v : many_doubles()) {
        char* end = plx::format_fixed6(ours, v);
        const std::string six(ours, end), three(ours, plx::format_fixed3(ours, v));
        std::snprintf(theirs, sizeof theirs, "%lf %.3lf", v, v);
        // Not every system's printf tells the sign of what is not a number.
        if (std::isnan(v)) std::strcpy(theirs, std::signbit(v) ? "-nan -nan" : "nan nan");
        ASSERT_EQ(six + " " + three, theirs) << std::hexfloat << v;
    }
    for (const int v : {0, -1, 10, INT_MAX, INT_MIN}) {
        EXPECT_EQ(std::string(ours, plx::format_int(ours, v)), std::to_string(v));
    }
}

TEST(TextNumber, ReadsTheNearestDouble) {
    std::vector<std::string> texts = {"1" + std::string(400, '0') + "e-400",
                                      "0." + std::string(400, '0') + "1e401",
                                      "9007199254740993." + std::string(1000, '0') + "1"};
    std::istringstream hard(
        "9007199254740993 9007199254740993.00000000000000000000001 1e23 8.5e-23 4.9e-324 2.4e-324 -0.0 "
        "0e999999 2.4703282292062328e-324 2.2250738585072011e-308 1.7976931348623158e308 1e400 1e-400 "
        "1.7976931348623159e308 -1e999999999999999999999 1e-999999999999999999999 18446744073709551616 "
        "0000000000000000000000001.5 0.00000000000000000000000000000000000012345 "
        "123456789012345678901234567890");
    for (std::string word; hard >> word;) texts.push_back(word);
    std::mt19937_64 random(7);
    char text[400];
    for (const double v : many_doubles()) {
        if (!std::isfinite(v)) continue;
        std::snprintf(text, sizeof text, random() % 2 ? "%.*e" : "%.*f", static_cast<int>(random() % 22), v);
        texts.emplace_back(text);
    }
    for (const std::string& t : texts) {
        ASSERT_EQ(std::bit_cast<std::uint64_t>(plx::to_double(t)),
                  std::bit_cast<std::uint64_t>(std::strtod(t.c_str(), nullptr)))
            << t;
    }
}

TEST(TextNumber, TakesTheLongestDecimalPrefix) {
    // With the number and its end; -1: no number.
    const std::tuple<std::string, double, int> cases[] = {
        {"1.5D3", 1500, 5}, {"1.5d+3x", 1500, 6},   {"1.5D", 1.5, 3}, {"2e+", 2, 1},   {"2e-x", 2, 1},
        {".5", 0.5, 2},     {" \t\r\n\v\f7", 7, 7}, {"5.", 5, 2},     {".", 0, -1},    {"", 0, -1},
        {"+.e5", 0, -1},    {"--1", 0, -1},         {"nan", 0, -1},   {"-inf", 0, -1}, {"0x1A", 0, -1},
        {"0x", 0, 1},       {"1.2.3", 1.2, 3},      {"+4", 4, 2},     {"- 4", 0, -1},  {"1.0E-02", 0.01, 7}};
    for (const auto& [text, number, length] : cases) {
        SCOPED_TRACE(text);
        double value = 99;
        // What stands behind the end of the range must not count.
        const std::string longer = text + "5e5";
        const char* end = plx::parse_double(longer.data(), longer.data() + text.size(), value);
        EXPECT_EQ(value, number);
        EXPECT_EQ(end ? end - longer.data() : -1, length);
    }
}

TEST(TextNumber, IntegersClampAndTruncate) {
    const std::vector<std::pair<const char*, int>> texts = {
        {" 42x", 42}, {"-7", -7}, {"x", 0}, {"99999999999999999999", INT_MAX}, {"-99999999999", INT_MIN},
        {"+3.9", 3}};
    for (const auto& [text, value] : texts) EXPECT_EQ(plx::to_int(text), value) << text;
    const std::vector<std::pair<double, int>> doubles = {
        {3.9, 3},          {-3.9, -3},       {2147483647.9, INT_MAX},
        {0x1p31, INT_MIN}, {-1e20, INT_MIN}, {std::nan(""), INT_MIN}};
    for (const auto& [from, value] : doubles) EXPECT_EQ(plx::truncate_to_int(from), value) << from;
}

}  // namespace
