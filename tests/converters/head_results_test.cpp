#include "converters/head_results.h"

#include <gtest/gtest.h>

#include <cmath>

#include "converters/small_grid.h"
#include "support/capture_stdout.h"
#include "support/result_files.h"

namespace plx {
namespace {

/// A parsed model of two layers with one row and two columns; the first cell of each layer has a constant
/// head.
struct HeadModel : test::GridModel {
    explicit HeadModel(bool modflow_rules) : GridModel({2, 1, 2}, modflow_rules) {
        factory.nper = 1;
        model.periods.periods = {{10.0, 3, 1.0, true}};
        model.no_flow_head = 999.0;
        model.has_no_flow_head = true;
        model.dry_head = 0.0;
        for (const std::size_t cell : {0U, 2U}) model.flags.set(cell, -1, true, true);
    }
    /// Scans these bytes and loads the first step; returns what was printed.
    std::string load(const std::string& bytes) {
        model.streams.open_unit(30, folder.write("site.hds", bytes));
        factory.hed_unit = 30;
        return test::capture_stdout([this] {
            scan_heads(model);
            load_heads(model);
        });
    }
};

test::ResultStamp stamp(int step) { return {step, 1, 2.5 * step, 2, 1, 2}; }

}  // namespace

TEST(Heads, MarkersMeanWhatTheRulesSay) {
    const float none = std::nanf("");
    const struct {
        double value;
        float plain, constant, free;  // the latter by modflow rules: a constant-head cell and another one
    } cases[] = {{12.5, 12.5F, 12.5F, 12.5F},     {1.0e30, -11.0F, none, none},
                 {-1.0e30, -1.0e30F, none, none}, {250000.0, -11.0F, 250000.0F, 250000.0F},
                 {-888.0, -1.0F, none, none},     {-999.0, -999.0F, none, none},
                 {999.0, 999.0F, 999.0F, none},   {0.0, 0.0F, 0.0F, none}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        test::ResultWriter file;
        for (int k = 1; k <= 2; ++k) file.layer(stamp(1), k, {c.value, c.value});
        HeadModel plain(false), modflow(true);
        plain.load(file.bytes());
        modflow.load(file.bytes());
        EXPECT_EQ(plain.model.heads.values[1], c.plain);
        const auto same = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
        EXPECT_TRUE(same(modflow.model.heads.values[0], c.constant)) << modflow.model.heads.values[0];
        EXPECT_TRUE(same(modflow.model.heads.values[1], c.free)) << modflow.model.heads.values[1];
    }
}

TEST(Heads, LabelAndLayerOfARecordCountWithTheModflowRules) {
    test::ResultWriter file;
    file.layer(stamp(1), 2, {3.0, 4.0});
    file.layer(stamp(1), 1, {5.0, 6.0}, "DRAWDOWN");
    file.layer(stamp(4), 1, {7.0, 8.0});
    HeadModel modflow(true), plain(false);
    const std::string printed = modflow.load(file.bytes());
    // The fourth step is outside the table of one period and three steps.
    EXPECT_NE(printed.find("Index out of bounds! (j: 3>=3)\n"), std::string::npos);
    EXPECT_EQ(modflow.model.times, (StepTimes{{{0, 0}, 2.5}}));
    EXPECT_TRUE(std::isnan(modflow.model.heads.values[0]));
    EXPECT_EQ(modflow.model.heads.values[3], 4.0F);
    EXPECT_NE(plain.load(file.bytes()).find("Layer check failed\n"), std::string::npos);
    EXPECT_EQ(plain.model.heads.values, (std::vector<float>{3.0F, 4.0F, 5.0F, 6.0F}));
}

}  // namespace plx
