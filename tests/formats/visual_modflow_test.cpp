#include "formats/visual_modflow.h"

#include <gtest/gtest.h>

#include "support/memory_streams.h"
#include "support/temp_folder.h"

using namespace plx;
using namespace plx::test;

namespace {

const std::string kColumns = "COLUMN COORDINATES\n0 100 250\n", kRows = "Row coordinates\r\n0,50\t 100\r\n",
                  kStatus = "# a comment\nActive cells, row by row\n0 1\n\n1 -1 # south\n",
                  kElevations = "CELL ELEVATIONS\n30 30 29.5 29 2e1 2d1 20 20";

std::optional<VmgFault> read(const std::string& text, VisualGrid& grid) {
    TextSource in = TextSource::of_text(text, "a.vmg");
    return read_vmg(in, grid);
}

}  // namespace

TEST(VisualGridFile, SectionsStandInAnyOrder) {
    const std::string files[] = {
        kColumns + kRows + kStatus + kElevations,
        "Brown's model, 3 layers\n" + kElevations + "\n" + kStatus + kRows + kColumns,
        kStatus + "row coordinates\n100 50 0\n" + kElevations + "\n" + kColumns};
    for (const std::string& text : files) {
        SCOPED_TRACE(text);
        VisualGrid grid;
        const auto fault = read(text, grid);
        ASSERT_FALSE(fault) << fault->problem;
        EXPECT_EQ(text_of(grid.column_edges), "0 100 250");
        EXPECT_EQ(text_of(grid.row_edges), "100 50 0");
        EXPECT_EQ(grid.status, (std::vector<std::vector<std::int32_t>>{{0, 1, 1, -1}}));
        ASSERT_EQ(grid.surfaces.size(), 2U);
        EXPECT_EQ(text_of(*grid.surfaces[0]), "30 30 29.5 29");
        EXPECT_EQ(text_of(*grid.surfaces[1]), "20 20 20 20");
    }
}

TEST(VisualGridFile, FaultsNameSectionAndLine) {
    const std::string edges = kColumns + kRows, cells = kStatus + kElevations;
    const std::tuple<std::string, VmgSection, int, std::string> cases[] = {
        {"", VmgSection::kColumns, 0, "the section is missing or empty"},
        {"1 2 3\n" + edges, VmgSection::kColumns, 1, "values before the first section's label"},
        {"COLUMNS\n0 1 1 2\n" + kRows + cells, VmgSection::kColumns, 2,
         "the positions do not rise throughout"},
        {kColumns + "ROWS\n7\n" + cells, VmgSection::kRows, 4, "one position, at least two make a cell"},
        {edges + kColumns, VmgSection::kColumns, 5, "the section is there twice"},
        {edges + "STATUS\n4*1\n", VmgSection::kStatus, 6, "\"4*1\" is no number"},
        {edges + "STATUS\n1 1 1.5 1\n", VmgSection::kStatus, 6, "\"1.5\" is out of range"},
        {edges + "STATUS\n1 1\n1\n" + kElevations, VmgSection::kStatus, 7,
         "3 values are no whole layers of 4 cells (2 rows, 2 columns)"},
        {edges + cells + " 21", VmgSection::kElevations, 11,
         "9 values, 1 layers of 4 cells (2 rows, 2 columns) have 8"},
        {edges + kStatus + "ELEVATIONS\n1 2 1e999\n", VmgSection::kElevations, 11,
         "\"1e999\" is out of range"},
        {edges + kStatus, VmgSection::kElevations, 0, "the section is missing or empty"},
        {"COLUMNS\n" + std::string(70'000, 'z'), VmgSection::kColumns, 2,
         "\"" + std::string(40, 'z') + "\" is no number"},
    };
    for (const auto& [text, section, line, problem] : cases) {
        SCOPED_TRACE(text.substr(0, 200));
        VisualGrid grid;
        const auto fault = read(text, grid);
        ASSERT_TRUE(fault);
        EXPECT_EQ(fault->section, section);
        EXPECT_EQ(fault->line, line);
        EXPECT_TRUE(fault->problem.ends_with(": " + problem)) << fault->problem;
        EXPECT_LE(fault->text.size(), 200U);
    }
}

TEST(VisualGridFile, LinesMayBeLongerThanABlock) {
    std::string columns = "\nCOLUMN\n-1", status = "STATUS\n", elevations = "\nELEVATION\n";
    for (int i = 0; i < 40'000; ++i) {
        columns += " " + std::to_string(i);
        status += i % 3 == 0 ? "0 " : "1 ";
        elevations += std::to_string(200'000 - i) + " 1,";
    }
    VisualGrid grid;
    EXPECT_FALSE(read(status + elevations + "# x " + status.substr(7) + "\nROW\n0 1" + columns, grid));
    EXPECT_EQ(grid.column_edges[39'999], 39'998.0);
    EXPECT_EQ(grid.status[0][39'999], 0);
    EXPECT_EQ(grid.surfaces[1]->at(39'998), 160'001.0);
}

TEST(VisualProjectFile, UnitsAreThoseOfTheBlock) {
    const std::tuple<std::string, std::string, std::string, std::size_t> cases[] = {
        {"<Project a>\n<Units>\nLength = ft\nTime=DAY\n</Units>\n</Project>\n", "ft", "d", 0},
        {"<PROJECT>\r\n<units> length=\"m\" </units>\r\nLength=x\r\n</PROJECT>", "m", "", 0},
        {"<Units>\nLength=ft\n</Units>\n<Project>\n<Units>\nTime\n= sec\n</Units>", "", "", 0},
        {"<Project>\n<Units>\nTime, Sec", "", "s", 0},
        {"<Project>\n<Units>\nTime=fortnight\n", "", "fortnight", 1},
    };
    const TempFolder folder;
    for (const auto& [text, length, time, faults] : cases) {
        SCOPED_TRACE(text);
        VisualUnits units;
        Problems warnings;
        ASSERT_TRUE(read_vmf(VXFile(folder.write("a.vmf", text).c_str()), units, warnings));
        EXPECT_EQ(units.length, length);
        EXPECT_EQ(units.time, time);
        EXPECT_EQ(warnings.size(), faults);
    }
}
