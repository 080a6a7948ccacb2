// The example project, in both of its forms, converted with the tool as a person does it.

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <regex>
#include <string>

#include "support/golden_files.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

const fs::path kQuarry = fs::path(PLX_EXAMPLES) / "quarry";
const fs::path kGolden = fs::path(PLX_TEST_DATA) / "golden" / "quarry";

/// Runs the tool, which has to succeed and to have nothing to complain about.
void convert(const char* project, const fs::path& out) {
    const auto run = plx::test::run_program(
        PLXCONVERT, {"gms", (kQuarry / project).string(), "--plain", "--quiet", "--dest", out.string()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out + run.err, "");
}

/// Without its first line, which tells the kind of project in a .pgf file.
std::string body(const std::string& text) { return text.substr(text.find('\n') + 1); }

}  // namespace

TEST(Quarry, FilesOfTheTextProjectAreTheGoldens) {
    plx::test::TempFolder out;
    convert("quarry.gpr", out.path());
    plx::test::expect_tree(kGolden, out.path());
}

TEST(Quarry, BothProjectsGiveTheSameSurfaces) {
    plx::test::TempFolder out;
    convert("quarry_hdf5.gpr", out.path());
    const char* const surfaces[][2] = {{"tin_quarry_floor_elevation.gmf", "tin_quarry_floor_elevation.gmf"},
                                       {"tin_quarry_floor_thickness.gmf", "quarry_floor_thickness.gmf"},
                                       {"tin_quarry_floor_water.gmf", "quarry_floor_water.gmf"},
                                       {"2ds_seep_samples_sulfate.gmf", "2ds_seep_samples_sulfate.gmf"}};
    for (const auto& [hdf5, text] : surfaces) {
        EXPECT_NE(out.read(hdf5), "") << hdf5;
        EXPECT_EQ(out.read(hdf5), plx::test::read_bytes(kGolden / text)) << hdf5;
    }
    EXPECT_EQ(body(out.read("bor.pgf")), body(plx::test::read_bytes(kGolden / "bor_quarry.pgf")));
    // The mesh is the same too; only the words for units are the project's own.
    const std::regex units(R"#("(Linear_\w*)?" IN_FILE)#");
    const char* field = "tin_quarry_floor_elevation.pff";
    EXPECT_EQ(std::regex_replace(out.read(field), units, "UNITS"),
              std::regex_replace(plx::test::read_bytes(kGolden / field), units, "UNITS"));
    EXPECT_EQ(plx::test::files_below(out.path()).size(), std::size(surfaces) + 2);
}
