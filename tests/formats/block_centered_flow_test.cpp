#include "formats/block_centered_flow.h"

#include <gtest/gtest.h>

#include "support/capture_stdout.h"
#include "support/memory_streams.h"

using namespace plx;

namespace {

struct Read {
    BlockCenteredFlow flow;
    TextRules used;
    Problems problems;
    bool found = false, free_used = false;
};

Read read(const std::string& text, int layers, const TextRules& rules = {}, bool free_record = false) {
    test::MemoryStreams streams;
    TextSource in = TextSource::of_text(text, "a.bcf");
    Read result;
    test::capture_stdout([&] {
        result.found = read_block_centered_flow(in, streams, rules, result.used, {layers, 1, 2}, true,
                                                free_record, result.free_used, result.flow, result.problems);
    });
    return result;
}

const std::string kWidths = "CONSTANT 1\nCONSTANT 10\nCONSTANT 20\n";

std::string constants(const std::vector<int>& values) {
    std::string text;
    for (const int value : values) text += "CONSTANT " + std::to_string(value) + "\n";
    return text;
}

TEST(BlockCenteredFlow, EachLayerTypeHasItsArrays) {
    // Transient with wetting; values of a hundred and more are surfaces.
    const std::string text = "         0         0     -888.         1\n03 12 1 20 LAYCON\n" + kWidths +
                             constants({1, 2, 300, 3, 4, 400, 5}) + constants({1, 2, 3, 4, 200}) +
                             constants({1, 2, 150, 3, 5}) + constants({1, 2});
    const Read result = read(text, 4);
    ASSERT_TRUE(result.found) << testing::PrintToString(result.problems);
    EXPECT_DOUBLE_EQ(result.flow.dry_head, -888.0);
    EXPECT_EQ(result.flow.laycon, (std::vector<int>{3, 2, 1, 0}));
    EXPECT_EQ(test::text_of(result.flow.delr) + ", " + test::text_of(result.flow.delc), "10 10, 20");
    std::vector<double> surfaces;
    for (std::size_t layer : {0U, 1U, 2U, 3U}) {
        surfaces.push_back(result.flow.tops[layer]->back());
        surfaces.push_back(result.flow.bottoms[layer]->back());
    }
    EXPECT_EQ(test::text_of(surfaces), "400 300 200 100 250 150 150 50");
}

TEST(BlockCenteredFlow, FirstRecordByColumnsOrWords) {
    const std::string rest = "\n0\n" + kWidths + constants({1});
    const Read columns = read("1 0 -777.0 0" + rest, 1), words = read("1 0 -777.0 0" + rest, 1, {}, true);
    EXPECT_DOUBLE_EQ(columns.flow.dry_head, 0.0);
    EXPECT_TRUE(words.flow.has_dry_head);
    EXPECT_DOUBLE_EQ(words.flow.dry_head, -777.0);
    EXPECT_TRUE(words.free_used && !columns.free_used);
    EXPECT_FALSE(read("         1         0     -888." + rest, 1, {}, true).free_used);
}

TEST(BlockCenteredFlow, LayerTypesInColumnsOfTwo) {
    const std::string rest = kWidths + constants({1, 2, 3, 4, 5, 6});
    const Read cut = read("         1\n0 1010 LAYCON\n" + rest, 3, test::kModelRules);
    ASSERT_TRUE(cut.found);
    EXPECT_EQ(cut.flow.laycon, (std::vector<int>{0, 0, 0}));
    EXPECT_TRUE(cut.used.obey_formats);
    EXPECT_DOUBLE_EQ(cut.flow.top->front(), 0.0);
    EXPECT_DOUBLE_EQ(cut.flow.bottoms[2]->front(), -300.0);
    const Read words = read("         1\n0, 1, 0\n" + rest, 3, test::kModelRules);
    EXPECT_EQ(words.flow.laycon, (std::vector<int>{0, 1, 0}));
    EXPECT_FALSE(words.used.obey_formats);
}

TEST(BlockCenteredFlow, EveryCutIsNoticed) {
    const std::string text = "         1\n 0 1\n" + kWidths + constants({1, 2, 3, 400});
    for (std::size_t cut = 0; cut < text.size(); cut = text.find('\n', cut) + 1) {
        SCOPED_TRACE(text.substr(0, cut));
        const Read result = read(text.substr(0, cut), 2);
        EXPECT_FALSE(result.found);
        EXPECT_EQ(result.problems.size(), 1u);
    }
    EXPECT_TRUE(read(text, 2).found);
}

TEST(FlowPackage, DryHead) {
    const std::vector<std::tuple<std::string, bool, double>> cases = {
        {"# LPF\n 50 -1E30 0 ILPFCB\n", true, -1e30},
        {"        40-888.00000         3\n", true, -888.0},
        {"              999.D0\n", true, 999.0},
        {"         0\n", false, 0.0},
        {"OPTIONS\n", false, 0.0},
        {"#\n", false, 0.0}};
    for (const auto& [text, found, head] : cases) {
        SCOPED_TRACE(text);
        TextSource in = TextSource::of_text(text, "a");
        double value = 0.0;
        EXPECT_EQ(read_flow_package_dry_head(in, value), found);
        EXPECT_DOUBLE_EQ(value, head);
    }
}

}  // namespace
