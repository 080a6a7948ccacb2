#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>

#include "cli/run_tool.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;

TEST(Usage, WrongOptionsEndWithTwo) {
    const std::pair<Words, const char*> cases[] = {
        {{}, "give a command: info, modflow, gms, interpolate or georef"},
        {{"modflow"}, "PROJECT is required"},
        {{"modflow", "x.nam", "--wave"}, "--wave"},
        {{"modflow", "x.nam", "--kind", "seawat"}, "seawat"},
        {{"modflow", "x.nam", "--outputs", "ccf,heads"}, "'heads' is not known; the names are elevation, "},
        {{"modflow", "x.nam", "--outputs", "boundary_flows,head_cells"}, "boundary_flows needs ccf"},
        {{"modflow", "x.nam", "--outputs", "all,ccf"}, "'all' stands alone"},
        {{"modflow", "x.nam", "--outputs", "ccf,"}, "'' is not known"},
        {{"modflow", "x.nam", "--porosity", "0.3,nan"}, "is not a list of numbers"},
        {{"modflow", "x.nam", "--porosity", "30"}, "fractions from 0 to 1"},
        {{"modflow", "x.nam", "--crop", "0", "0", "1"}, "--crop"},
        {{"modflow", "x.nam", "--crop", "0", "5", "10", "-5"}, "YMIN"},
        {{"modflow", "x.nam", "--crop", "0", "nan", "10", "5"}, "finite"},
        {{"info", "x.nam", "y.nam"}, "y.nam"},
        {{"gms", "x.gpr"}, "--dest is required"},
        {{"gms", "x.gpr", "--dest", "d", "--types", "wells"}, "'wells' is not known; the names are modflow"},
        {{"gms", "x.gpr", "--dest", "d", "--types", "all,tin"}, "'all' stands alone"},
        {{"gms", "x.gpr", "--dest", "d", "--extents", "0", "0", "1"}, "--extents"},
        {{"gms", "x.gpr", "--dest", "d", "--extents", "5", "0", "1", "1"}, "XMIN"},
        {{"gms", "x.gpr", "--dest", "d", "--time", "inf"}, "finite"},
        {{"gms", "x.gpr", "--dest", "d", "--rules", "modflow"}, "modflow"},
    };
    for (const auto& [arguments, message] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        expect_refused(run_tool(arguments), 2, message);
    }
}

TEST(Usage, HelpShowsWorkedExamples) {
    const std::pair<Words, const char*> cases[] = {
        {{"--help"}, "plxconvert modflow site.nam"},
        {{"modflow", "--help"}, "  boundary_flows  flows of wells"},
        {{"modflow", "--help"}, "  gms_hdf5        the model of a GMS project"},
        {{"info", "--help"}, "plxconvert info site.mfs --json"},
        {{"gms", "--help"}, "  borehole        boreholes: a pre-geology file"},
        {{"--version"}, "plxconvert 0."}};
    for (const auto& [arguments, text] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const ToolRun run = run_tool(arguments);
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_THAT(run.out, HasSubstr(text));
    }
}

TEST(Project, UnusableFilesAreRefusedByBothCommands) {
    const TempFolder folder;
    const std::tuple<std::string, std::string, const char*> cases[] = {
        {"folder.nam/x.txt", "", "is not a MODFLOW name file (.nam), GMS super file (.mfs)"},
        {".hidden/site.nam", "BAS 1 a.bas\n", "the folder \".hidden\" begins with a dot"},
        {"gms.mfn", "DIS 1 a.dis\n", "its super file (.mfs) is not beside it; copy it to a .nam file"},
        {"transport.nam", "# MT3D\nBTN 1 a.btn\nADV 2 a.adv\n",
         "neither a discretization file (DIS, BAS6) nor a basic package (BAS, BCF): found btn, adv"},
        {"empty.nam", "", "found no file types at all"},
        {"bytes.nam", {"DIS 1 a.dis\n\0\1\2\377", 16}, "is a binary file, not a MODFLOW name file"},
    };
    for (const auto& [file, bytes, message] : cases) {
        SCOPED_TRACE(file);
        const std::string path = folder.write(file, bytes);
        for (const char* command : {"modflow", "info"}) expect_refused(run_tool({command, path}), 1, message);
    }
    EXPECT_THAT(run_tool({"modflow", folder.file("folder.nam")}).err, HasSubstr("is a folder"));
    EXPECT_THAT(run_tool({"info", folder.file("none.nam")}).err, HasSubstr("does not exist"));
    EXPECT_THAT(run_tool({"info", folder.write("site.any", std::string(300, '\0'))}).err,
                HasSubstr("is no result file of MODFLOW or MT3D"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "MODFLOW"));
}

TEST(Project, NeighbourThatDiffersInCaseIsNotTakenInstead) {
    if (kWindows) GTEST_SKIP() << "no two files differ in case only on this system";
    const TempFolder folder;
    folder.write("site.nam", "DIS 1 a.dis\n");
    const std::string neighbour = folder.write("Site.nam", "DIS 1 b.dis\n");
    expect_refused(run_tool({"info", neighbour}), 1, "only in the case of its letters");
}

}  // namespace
}  // namespace plx::test
