#include "formats/fortran_format.h"

#include <gtest/gtest.h>

#include "formats/list_directed.h"
#include "support/memory_streams.h"

using namespace plx;

namespace {

/// Values that are missing stay -9. Findings: "L" when the layout matters, "E" for empty words.
std::string read(const std::string& format, const std::string& text, int columns, std::size_t count,
                 ArrayFindings* findings = nullptr) {
    const auto known = FortranFormat::parse(format);
    TextSource in = TextSource::of_text(text, "x");
    std::vector<double> values(count, -9.0);
    const ArrayData data{values, columns, 1.0};
    const ArrayFindings found = known ? read_formatted(in, *known, data) : read_list_directed(in, data, true);
    if (findings) *findings = found;
    return test::text_of(values) + (found.layout_matters ? " L" : "") + (found.empty_words ? " E" : "") +
           " " + std::string(in.peek_line());
}

TEST(FortranFormat, RowsByColumnsOrAsLists) {
    const std::vector<std::tuple<std::string, std::string, int, std::size_t, std::string>> cases = {
        {"(40i2)", "-1 1-1\n 2 3 4\n", 3, 6, "-1 1 -1 2 3 4 L"},
        {"(F8.2)", "12345678\n", 1, 1, "123456.78 L"},
        {"(7E14.6)", "  0.100000E+01 -0.200000D-01\n", 2, 2, "1 -0.02"},
        {"(2F8.0)", "   1.5+3  2.5-2\n", 2, 2, "1500 0.025 L"},
        {"(2PF6.1,F6.1)", " 250.0 1.0E0\n", 2, 2, "2.5 1 L"},
        {"(8G6.5)", "     1      2\n", 2, 2, "1e-05 0 L"},
        {"(I2/1X,I2)", " 1\n  2\n 3\n  4\n", 4, 4, "1 2 3 4"},
        {"(I2,2(I1,I2))", " 112345678\n1 23 4\n", 7, 7, "1 1 23 4 56 1 2 L"},
        {"(2F3.0)", "1 23 4 9 \n 5\n", 2, 4, "12 34 5 0 L E"},
        {"(bn, 1p, 2es10.3e2)", " 1.000E+00 2.000E+00\n", 2, 2, "1 2"},
        {"(SP,F4.0,SS,-1PEN5.1:G8.2E2)", "+12. +2.5-3.0E+01\n", 3, 3, "12 25 -30 L"},
        {"(2I3,X,S,I1.1)", " -1 +2 3 rest\n", 3, 3, "-1 2 3"},
        {"list", "1\n\n2 3\n4 5 6\n", 3, 6, "1 2 3 4 5 6 E"},
        {"list", "1 2 3 4\n5 6\n", 2, 4, "1 2 5 6 L"},
        {"list", "2*1.5 2*\n7 999999999999*8\n", 4, 8, "1.5 1.5 0 0 7 8 8 8 L"},
        {"list", "1,2 , 3,,5\n", 5, 5, "1 2 3 -9 5"},
        {"list", "1 /2 3\n4 5 6\n", 3, 6, "1 -9 -9 4 5 6 L"},
        {"list", "1.5+3 2D1 3.e0\n", 3, 3, "1500 20 3"},
    };
    for (const auto& [format, text, columns, count, expected] : cases) {
        SCOPED_TRACE(format + " " + text);
        EXPECT_EQ(read(format, text + "end", columns, count), expected + " end");
    }
}

TEST(FortranFormat, RefusesWhatItDoesNotKnow) {
    for (const char* text : {"",        "()",       "(",          "(5X)",
                             "(A10)",   "(10F8.2",  "(10F8.2)x",  "(F)",
                             "(T5,I2)", "(0I2)",    "(I3,(X))",   "(99999999I1)",
                             "(-5I2)",  "10F8.2",   "(2(3(X)))",  "(999(999(I1,X)))",
                             "(F5.X)",  "(E9.2EX)", "(100PF5.1)", "(3",
                             "(BX,I2)"}) {
        EXPECT_FALSE(FortranFormat::parse(text).has_value()) << text;
    }
    EXPECT_FALSE(FortranFormat::parse("(" + std::string(5000, '(')).has_value());
}

TEST(FortranFormat, FaultsAreFound) {
    ArrayFindings findings;
    for (const char* format : {"(2I4)", "list"}) {
        EXPECT_EQ(read(format, " 1.0   2\n abc x*y\nend", 2, 4, &findings).substr(0, 7), "1 2 0 0");
        EXPECT_EQ(findings.bad_word, "abc");
        EXPECT_EQ(findings.bad_line, 2);
        for (const char* cut : {" 1.0   2\n   3", "1", ""}) {
            read(format, cut, 2, 4, &findings);
            EXPECT_EQ(findings.found, std::string(cut).size() > 9 ? 3u : *cut ? 1u : 0u) << cut;
        }
    }
}

}  // namespace
