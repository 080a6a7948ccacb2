// Rules that show in whole conversions only: the same model with plain rules and with one rule more.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "support/capture_stdout.h"
#include "support/temp_folder.h"

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
            const plx::test::TempFolder folder;
            for (const auto& entry : fs::directory_iterator(fs::path(PLX_TEST_DATA) / "small")) {
                fs::copy(entry.path(), folder.path());
            }
            fs::copy(folder.path() / "small.hds", folder.path() / "SMALL.DAT");
            std::string text = folder.read(c.file);
            folder.write(c.file, text.replace(text.find(c.from), std::string(c.from).size(), c.to));
            MODFLOW2000_Converter factory;
            factory.reading_rules.*c.flag = on;
            factory.keep_log = false;
            VXFile project(folder.file("small.nam").c_str());
            int outputs[Converter::kOutputs] = {0, 0, c.heads_at_nodes, 1, 0, 0,
                                                0, 0, c.heads_of_cells, 0, 0};
            plx::test::capture_stdout([&] {
                Converter().create_converter(factory, project, 0, nullptr, false, outputs, false, 0, 0, 0, 0);
            });
            EXPECT_EQ(factory.report.steps, on ? c.rule_steps : c.plain_steps);
            EXPECT_EQ(factory.report.rules_used.*c.flag, on);
            EXPECT_NE(("\n" + folder.read("MODFLOW/" + std::string(c.written))).find(on ? c.rule : c.plain),
                      std::string::npos);
        }
    }
}
