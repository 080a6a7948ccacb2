#include "formats/basic_package.h"

#include <gtest/gtest.h>

#include "support/capture_stdout.h"
#include "support/memory_streams.h"

using namespace plx;

TEST(BasicPackage, HeaderAndOptions) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", ""},         {"FREE", "free "},           {" chtoch, free XSection", "free section chtoch "},
        {"  # FREE", ""}, {" 11 12 00  0", "list 11"},
    };
    for (const auto& [options, expected] : cases) {
        SCOPED_TRACE(options);
        TextSource in =
            TextSource::of_text("# a\nb\n 2 3 4 5 1 x\n" + options + "\n 0\n-1 IAPART\nnext", "a");
        BasicHeader header;
        Problems problems;
        EXPECT_TRUE(read_basic_header(in, test::MemoryStreams(), {}, header, problems));
        EXPECT_EQ(header.size.cells(), 24u);
        EXPECT_EQ(header.periods, 5);
        std::string found = header.free_format ? "free " : "";
        if (header.cross_section) found += "section ";
        if (header.chtoch) found += "chtoch ";
        if (header.unit_list) found += "list " + std::to_string(header.first_unit);
        EXPECT_EQ(found, expected);
        skip_iapart(in, {});
        EXPECT_DOUBLE_EQ(read_no_flow_head(in, {}), -1.0);
        EXPECT_EQ(in.peek_line(), "next");
    }
}

TEST(BasicPackage, LaterOptionsLineIsOneLine) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"# a\n#b\nfree ShowProgress\nnext", "10 next"},
        {"\nFREE\n", "00 FREE"},
        {"FREE xsection # FREE\nnext", "11 next"},
        {"SHOWPROGRESS # XSECTION\nnext", "00 next"}};
    for (const auto& [text, expected] : cases) {
        TextSource in = TextSource::of_text(text, "a");
        const Bas6Options options = read_bas6_options(in);
        const std::string found = {options.free_format ? '1' : '0', options.cross_section ? '1' : '0', ' '};
        EXPECT_EQ(found + std::string(in.peek_line()), expected) << text;
    }
}

TEST(BasicPackage, LayersUntilTheFileEnds) {
    const std::vector<std::tuple<std::string, std::string, bool>> cases = {
        {"INTERNAL 1\n1 -1\nEXTERNAL 9 1\nCONSTANT 5\nnext", "0: 1 -1, 1: 0 0, 2: 5 5, ", false},
        {"CONSTANT 1\nCONSTANT 2\nCONSTANT 3\nnext", "0: 1 1, 1: 2 2, 2: 3 3, ", true},
        {"CONSTANT 1\nINTERNAL 1\n1", "0: 1 1, ", false},
        {"CONSTANT 1\n", "0: 1 1, ", false},
    };
    for (const auto& [text, layers, whole] : cases) {
        SCOPED_TRACE(text);
        test::MemoryStreams streams;
        TextSource in = TextSource::of_text(text, "a");
        TextRules used;
        Problems problems;
        std::string stored;
        bool found = false;
        test::capture_stdout([&] {
            const auto store = [&](int layer, const std::vector<double>& values) {
                stored += std::to_string(layer) + ": " + test::text_of(values) + ", ";
            };
            found = read_ibound(in, streams, {}, used, {3, 1, 2}, store, problems);
        });
        EXPECT_EQ(found, whole);
        EXPECT_EQ(problems.empty(), whole);
        EXPECT_EQ(stored, layers);
    }
}

TEST(BasicPackage, StressPeriodLines) {
    TextSource in = TextSource::of_text("100.0 5 1.2 SS ignored\n2D1 3\n# c\n\n7\n", "a");
    StressPeriods table;
    Problems problems;
    EXPECT_FALSE(read_stress_periods(in, {}, 9, false, table, problems));
    const char* const kNoPeriod = "\" is no length and number of steps of a stress period";
    EXPECT_EQ(problems,
              (Problems{std::string("a: line 4: \"") + kNoPeriod, std::string("a: line 5: \"7") + kNoPeriod,
                        "a: line 6: 9 stress periods expected, 4 found"}));
    std::vector<double> found;
    for (const StressPeriod& p : table.periods)
        found.insert(found.end(), {p.length, 1.0 * p.steps, p.multiplier});
    EXPECT_EQ(test::text_of(found), "100 5 1.2 20 3 1 0 0 1 7 0 1");
    EXPECT_FALSE(table.periods[0].steady);
}
