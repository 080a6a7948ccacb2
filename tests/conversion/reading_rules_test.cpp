// Rules that show in whole conversions only: the same model with plain rules and with one rule more.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "conversion/small_model.h"

namespace fs = std::filesystem;

TEST(ReadingRules, EachRuleMakesItsOwnDifference) {
    using R = plx::ReadingRules;
    const struct {
        const char* name;
        bool R::*flag;
        const char *file, *from, *to;  // a change of the small model
        int heads_at_nodes, heads_of_cells;
        int plain_steps, rule_steps;
        const char *written, *plain, *rule;  // a file of the last step and a text of it
    } cases[] = {
        {"content", &R::result_files_by_content, "small.nam", "small.hds", "SMALL.DAT", 1, 1, 0, 3, "", "",
         ""},
        {"flow steps", &R::steps_from_flow_file, "small.nam", "#", "#", 0, 0, 0, 3, "", "", ""},
        {"cell heads", &R::load_heads_for_cells, "small.nam", "#", "#", 0, 1, 3, 3, "mod_small_90_000.pff",
         "CELL_DATA_START\r\n0.000000 ", "CELL_DATA_START\r\n14.750000 "},
        {"time words", &R::full_time_words, "small.dis", "2 3 4 2 4 2", "2 3 4 2 3 2", 1, 1, 3, 3,
         "mod_small.tcf", "1900-03-30 00:00:00, ", "1900-01-02 18:00:00, "},
    };
    for (const auto& c : cases) {
        for (const bool on : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (on ? " on" : " off"));
            plx::test::SmallModel model;
            fs::copy(model.folder.path() / "small.hds", model.folder.path() / "SMALL.DAT");
            model.replace(c.file, c.from, c.to);
            plx::ReadingRules rules;
            rules.*c.flag = on;
            std::fill(std::begin(model.outputs), std::end(model.outputs), 0);
            model.outputs[2] = c.heads_at_nodes;
            model.outputs[3] = 1;
            model.outputs[8] = c.heads_of_cells;
            const plx::ConversionReport report = model.convert(rules);
            EXPECT_EQ(report.steps, on ? c.rule_steps : c.plain_steps);
            EXPECT_EQ(report.rules_used.*c.flag, on);
            EXPECT_NE(
                ("\n" + model.out.read("MODFLOW/" + std::string(c.written))).find(on ? c.rule : c.plain),
                std::string::npos);
        }
    }
}
