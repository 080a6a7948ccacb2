#include "formats/discretization.h"

#include <gtest/gtest.h>

#include "support/capture_stdout.h"
#include "support/memory_streams.h"

using namespace plx;

namespace {

using test::text_of;

struct Read {
    Discretization grid;
    Problems problems;
    bool known = false;
};

Read read(const std::string& text, const TextRules& rules = {}) {
    test::MemoryStreams streams;
    TextSource in = TextSource::of_text(text, "site.dis");
    Read result;
    TextRules used;
    test::capture_stdout(
        [&] { result.known = read_discretization(in, streams, rules, used, result.grid, result.problems); });
    return result;
}

const std::string kWidths = "CONSTANT 10\nINTERNAL 1 (FREE)\n5 6\n";
const std::string kSurfaces = "CONSTANT 30\nINTERNAL 1 (FREE)\n20 21 22\n23 24 25\nCONSTANT 1\n";
const std::string kPeriods = "1.0 1 1.0 SS # first\n 20.0  3  1.5  tr\n";

TEST(Discretization, WholeFile) {
    const Read result = read("# site\n#\n2 2 3 2 4 2 NLAY...\n0 0\n" + kWidths + kSurfaces + kPeriods);
    ASSERT_TRUE(result.known && result.problems.empty());
    const Discretization& grid = result.grid;
    EXPECT_EQ(text_of(grid.delr) + ", " + text_of(grid.delc), "10 10 10, 5 6");
    EXPECT_EQ(text_of(*grid.tops[0]), "30 30 30 30 30 30");
    EXPECT_EQ(text_of(*grid.bottoms[0]), "20 21 22 23 24 25");
    EXPECT_EQ(grid.tops[1], grid.bottoms[0]);
    EXPECT_EQ(text_of(*grid.bottoms[1]), "1 1 1 1 1 1");
    EXPECT_EQ(time_unit_word(grid.time_unit) + length_unit_word(grid.length_unit), "daysmeters");
    EXPECT_EQ(time_unit_word(6) + time_unit_word(-1) + length_unit_word(4), "");
    ASSERT_EQ(grid.periods.periods.size(), 2u);
    EXPECT_TRUE(grid.periods.periods[0].steady && !grid.periods.periods[1].steady);
    EXPECT_DOUBLE_EQ(grid.periods.periods[1].multiplier, 1.5);
}

TEST(Discretization, ConfiningBedLineInAllItsForms) {
    const std::vector<std::tuple<std::string, std::string, bool>> cases = {
        {"2 2 3 0 4 2", "1 0\n", true}, {"2 2 3 0 4 2", "1 # upper\n\n 1\n", true},
        {"2 2 3 0", "0 1\n", false},    {"2 2 3 0 4 2", "1 0 LAYCBD (quasi 3-D)\n", true},
        {"2 2 3 0 4 2", "2*1\n", true}, {"2\n2 3\n0 4 2", "1 0 # (x)\n", true},
        {"2 2 3 0 4 2", "", false},
    };
    for (const auto& [sizes, line, bed] : cases) {
        SCOPED_TRACE(sizes + "; " + line);
        // A control record in columns may look like the line itself.
        for (const char* delr : {"CONSTANT 7\n", "         0        7.(10F8.0)\n"}) {
            const Read result = read(sizes + "\n" + line + delr + "CONSTANT 7\nCONSTANT 30\nCONSTANT 20\n" +
                                         (bed ? "CONSTANT 15\n" : "") + "CONSTANT 2\n",
                                     test::kModelRules);
            ASSERT_TRUE(result.known && result.problems.empty());
            EXPECT_EQ(text_of(result.grid.delr), "7 7 7");
            EXPECT_DOUBLE_EQ(result.grid.tops[1]->front(), bed ? 15.0 : 20.0);
            EXPECT_DOUBLE_EQ(result.grid.bottoms[1]->front(), 2.0);
        }
    }
}

TEST(Discretization, EveryCutIsNoticed) {
    const std::string text = "2 2 3 2 4 2\n0 0\n" + kWidths + kSurfaces + kPeriods;
    for (const TextRules& rules : {TextRules{}, test::kModelRules}) {
        for (std::size_t cut = 0; cut < text.size(); cut = text.find('\n', cut) + 1) {
            SCOPED_TRACE(text.substr(0, cut));
            const Read result = read(text.substr(0, cut), rules);
            EXPECT_EQ(result.known, cut >= text.size() - kPeriods.size());
            EXPECT_EQ(result.problems.size(), 1u);
        }
    }
}

TEST(Discretization, FaultsAreNamed) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"-1 2 3 1 4 2\n", "site.dis: line 1: -1 layers, 2 rows and 3 columns are no grid"},
        {"# x\nnonsense\n", "site.dis: line 2: 0 layers, 0 rows and 0 columns are no grid"},
        {"101 1000 1000 1 4 2\n", "site.dis: line 1: 101 layers, 1000 rows and 1000 columns are no grid"},
        {"9999999 1 1 1 4 2\n0\n", "site.dis: line 1: 9999999 layers, but only 2 bytes follow"},
        {"1 1 9000000 1 4 2\n0\nINTERNAL 1\n1 2\n",
         "site.dis: line 4: 9000000 values expected for DELR, but only 4 bytes follow"},
        {"3 2 2 1 4 2\n0 0\nCONSTANT 1\n", "site.dis: line 2: LAYCBD is no list of 3 integers"},
    };
    for (const auto& [text, problem] : cases) {
        const Read result = read(text);
        EXPECT_FALSE(result.known);
        EXPECT_EQ(result.problems, Problems{problem});
    }
    const Read missing = read("1 2 1 1 4 2\n0\n" + kWidths + "EXTERNAL 33 1\nCONSTANT -5\n2 4 1 TR\n");
    EXPECT_EQ(missing.problems, Problems{"site.dis: line 6: no open file at unit 33 (TOP)"});
    EXPECT_EQ(text_of(*missing.grid.top) + ", " + text_of(*missing.grid.bottoms[0]), "0 0, -5 -5");
    EXPECT_EQ(missing.grid.periods.total_steps(), 4);
    const Read negative = read("2 2 3 -1 4 2\n0 0\n" + kWidths + kSurfaces + kPeriods);
    ASSERT_EQ(negative.problems.size(), 1u);
    EXPECT_TRUE(negative.problems[0].ends_with(": -1 stress periods"));
    EXPECT_EQ(negative.grid.periods.total_steps(), 0);
}

}  // namespace
