// The example programs that write field files by themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace {

/// The field file that a program writes.
std::string field_of(const std::string& command) {
    const plx::test::TempFolder folder;
    EXPECT_EQ(std::system((command + " '" + folder.file("field.pff") + "' >/dev/null").c_str()), 0);
    return folder.read("field.pff");
}

}  // namespace

TEST(FieldExamples, HouseHasJoinedCorners) {
    const char* expected =
        "# A house of five cells\r\nDEFINITION Mesh+Cell_Data\r\nNSPACE 3\r\nNNODES 16\r\nNUM_CELL_DATA 1\r\n"
        "NCELL_SETS 3\r\nNODES IN_FILE\r\n0.000000 0.000000 0.000000 \r\n0.000000 0.000000 6.000400 \r\n";
    const std::string field = field_of(PLX_BUILD_HOUSE);
    EXPECT_EQ(field.substr(0, std::string(expected).size()), expected);
    // Joined corners are numbered by x, then y, then z.
    const char* cells =
        "CELL_SET_DEF 0 2 Hex \"Rooms\" IN_FILE\r\nCELL_SET_DEF 1 2 Pyr \"Roofs\" IN_FILE\r\n"
        "CELL_SET_DEF 2 1 Prism \"Lean_to\" IN_FILE\r\nCELL_DATA_DEF 0 \"MATERIAL\" \"Linear_\" IN_FILE\r\n"
        "CELL_START\r\n0 5 7 2 1 6 8 3 \r\n5 10 12 7 6 11 13 8 \r\n4 1 6 8 3 \r\n9 6 11 13 8 \r\n"
        "10 14 11 12 15 13 \r\nCELL_DATA_START\r\n1 \r\n2 \r\n3 \r\n3 \r\n4 \r\n";
    EXPECT_EQ(field.substr(field.find("CELL_SET_DEF")), cells);
}

TEST(FieldExamples, NodesAndCellsOfWellsAreWeightedMeans) {
    std::istringstream field(field_of(PLX_INTERPOLATE_WELLS " '" PLX_WELLS "'"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(field, line);) lines.push_back(line);
    const auto after = [&](const char* start, int i) {
        const auto at = std::find(lines.begin(), lines.end(), start) - lines.begin() + 1 + i;
        return static_cast<std::size_t>(at) < lines.size() ? lines[static_cast<std::size_t>(at)] : "";
    };
    // At (400, 400, -12), from 12 of the wells, and in the cell around (25, 25, -27), from two.
    EXPECT_EQ(after("NODE_DATA_START\r", 8 + 41 * (8 + 25 * 3)), "15.204799 \r");
    EXPECT_EQ(after("CELL_DATA_START\r", 0), "4.540258 204.902416 \r");
    EXPECT_EQ(after("CELL_DATA_START\r", 40 * 24 * 5), "");
    EXPECT_NE(after("CELL_DATA_START\r", 40 * 24 * 5 - 1), "");
    // Above the first corner stands the first node of the next layer.
    EXPECT_EQ(after("CELL_START\r", 0), "1025 1026 1067 1066 0 1 42 41 \r");
}
