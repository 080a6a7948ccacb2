#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli/run_tool.h"
#include "cli/small_model.h"
#include "support/holds_regex.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

class Modflow : public testing::Test {
protected:
    TempFolder folder_;
    std::string project_ = write_small_model(folder_);
};

TEST_F(Modflow, WritesEverythingAndClosesWithATable) {
    const ToolRun run = run_tool({"modflow", project_});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    // 20 corners on each of four surfaces, less the corner that only the inactive cell touches.
    for (const char* line :
         {"  nodes +78\n", "  cells +23\n", "  steps +2\n", "  files +8\n", "  warnings +0\n",
          "\n  seconds +[0-9.]+\n", "\nrules that changed this conversion: [a-z_, ]+\n"}) {
        EXPECT_THAT(run.out, HoldsRegex(line));
    }
    EXPECT_THAT(run.out, HasSubstr("\nresults in " + folder_.path().string() + "\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("Writing to PLX")));
    EXPECT_THAT(folder_.read("plxconvert.log"), HasSubstr("Writing to PLX"));
    EXPECT_THAT(folder_.read("MODFLOW/mod_site_15_000.pff"), HasSubstr("NUM_CELL_DATA 5\r\n"));
    EXPECT_THAT(folder_.read("MODFLOW/flow_data.dwr"), HasSubstr("WELLS\r\n"));
}

TEST_F(Modflow, QuietPrintsNothingAndDestinationIsMade) {
    const auto count = entry_count(folder_);
    const ToolRun run = run_tool({"modflow", project_, "--dest", folder_.file("New/Deep/"), "--quiet",
                                  "--compress", "--porosity", "0.3,0.2", "--outputs", "porosity"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(entry_count(folder_), count + 1);
    EXPECT_TRUE(fs::exists(folder_.path() / "New/Deep/plxconvert.log"));
    EXPECT_EQ(folder_.read("New/Deep/MODFLOW/mod_site_30_000.pfz").substr(0, 2), "\x1f\x8b");
}

TEST_F(Modflow, PorosityCountThatDoesNotFitTheLayersIsAWarning) {
    EXPECT_EQ(run_tool({"modflow", project_, "--porosity", "0.3"}).err, "");
    const ToolRun run = run_tool({"modflow", project_, "--porosity", "0.3,0.2,0.1"});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.err, HasSubstr("warning: --porosity has 3 values for 2 layers"));
    EXPECT_THAT(run.out, HasSubstr("  warnings             1\n"));
}

TEST_F(Modflow, RulesAreNamedOnlyWhenTheyChangedSomething) {
    folder_.write("site.dis",
                  "2 3 4 1 4 2\n0 0\nCONSTANT 100\nINTERNAL 1 (FREE) 0\n10 20 40\nCONSTANT 20\nCONSTANT 10\n"
                  "CONSTANT 0\n30 2 1.0 TR\n");
    EXPECT_THAT(run_tool({"modflow", project_}).out, HasSubstr("true_row_edges"));
    EXPECT_THAT(run_tool({"modflow", project_, "--rules", "prescribed"}).out,
                HasSubstr("rules that changed this conversion: none\n"));
}

TEST_F(Modflow, KindDecidesTheReader) {
    const char* const cases[][3] = {{"DIS 10 site.dis\n", "auto", "MODFLOW2000_Converter parseNAM"},
                                    {"bas6 11 site.ba6\n", "auto", "MODFLOW2000_Converter parseNAM"},
                                    {"BAS 11 site.ba6\nBCF 12 site.ba6\n", "auto", "Generic parseNAM"},
                                    {"DIS 10 site.dis\n", "modflow", "Generic parseNAM"},
                                    {"BAS 11 site.ba6\n", "modflow2000", "MODFLOW2000_Converter parseNAM"}};
    for (const auto& [types, kind, status] : cases) {
        SCOPED_TRACE(std::string(kind) + " " + types);
        folder_.write("site.nam", types);
        const ToolRun run = run_tool({"modflow", project_, "--kind", kind, "--trace"});
        EXPECT_THAT(run.out, HasSubstr(status));
        EXPECT_FALSE(fs::exists(folder_.path() / "plxconvert.log"));
    }
}

TEST_F(Modflow, FaultsOfTheInputEndWithOneAndAMessage) {
    const char* const cases[][4] = {
        {"site.lst", "", "elevation,mt3d", "output 'mt3d' was asked for, but the model has none"},
        {"site.hds", "", "head_cells", "output 'head_cells' was asked for, but the model has none"},
        {"site.dis", "2 3 4 1 4 2\n0 0\nCONSTANT 100\nINTERNAL 1 (FREE) 0\n10 20\n", "all", "site.dis"},
        {"site.dis", "-2 3 4 1 4 2\n", "all", "site.dis"},
        {"site.dis", "2000000000 2000000000 4 1 4 2\n", "all", "site.dis"},
        {"site.nam", "DIS 10 site.dis\nDATA(BINARY) 30 site.hds\n", "all", "BAS6"},
    };
    for (const auto& [file, bytes, outputs, message] : cases) {
        SCOPED_TRACE(std::string(file) + ": " + bytes);
        write_small_model(folder_);
        folder_.write(file, bytes);
        expect_refused(run_tool({"modflow", project_, "--outputs", outputs, "--quiet"}), 1, message);
    }
}

TEST_F(Modflow, UnusableDestinationEndsWithOne) {
    // A file where a folder of the results must stand stops even the super-user.
    folder_.write("taken/MODFLOW", "");
    const std::string cases[][2] = {{project_, "is not a folder"},
                                    {project_ + "/x", "cannot be made"},
                                    {folder_.file(".out"), "begins with a dot"},
                                    {folder_.file("taken"), "Cannot open"}};
    for (const auto& [dest, message] : cases) {
        const ToolRun run = run_tool({"modflow", project_, "--dest", dest});
        EXPECT_EQ(run.code, 1) << dest;
        EXPECT_THAT(run.err, HasSubstr(message));
    }
    EXPECT_FALSE(fs::exists(folder_.path() / ".out"));
}

}  // namespace
}  // namespace plx::test
