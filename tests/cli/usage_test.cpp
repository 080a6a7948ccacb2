#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/run_tool.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;

TEST(Usage, WrongOptionsEndWithTwo) {
    const struct {
        std::vector<std::string> arguments;
        const char* message;
    } cases[] = {
        {{}, "give a command: info, modflow, gms, interpolate or georef"},
        {{"modflow"}, "PROJECT is required"},
        {{"modflow", "x.nam", "--wave"}, "--wave"},
        {{"modflow", "x.nam", "--kind", "seawat"}, "seawat"},
        {{"modflow", "x.nam", "--outputs", "elevation,heads"},
         "'heads' is not known; the names are elevation, "},
        {{"modflow", "x.nam", "--outputs", "boundary_flows,head_cells"}, "boundary_flows needs ccf"},
        {{"modflow", "x.nam", "--outputs", "all,ccf"}, "'all' stands alone"},
        {{"modflow", "x.nam", "--outputs", "ccf,"}, "'' is not known"},
        {{"modflow", "x.nam", "--outputs", ""}, "'' is not known"},
        {{"modflow", "x.nam", "--porosity", "0.3,nan"}, "is not a list of numbers"},
        {{"modflow", "x.nam", "--porosity", "30"}, "fractions from 0 to 1"},
        {{"modflow", "x.nam", "--crop", "0", "0", "1"}, "--crop"},
        {{"modflow", "x.nam", "--crop", "0", "5", "10", "-5"}, "YMIN"},
        {{"modflow", "x.nam", "--crop", "0", "nan", "10", "5"}, "finite"},
        {{"info", "x.nam", "y.nam"}, "y.nam"},
        {{"gms", "x.gpr"}, "--dest is required"},
        {{"gms", "x.gpr", "--dest", "d", "--types", "tin,wells"},
         "'wells' is not known; the names are modflow"},
        {{"gms", "x.gpr", "--dest", "d", "--types", "all,tin"}, "'all' stands alone"},
        {{"gms", "x.gpr", "--dest", "d", "--extents", "0", "0", "1"}, "--extents"},
        {{"gms", "x.gpr", "--dest", "d", "--extents", "5", "0", "1", "1"}, "XMIN"},
        {{"gms", "x.gpr", "--dest", "d", "--time", "inf"}, "finite"},
        {{"gms", "x.gpr", "--dest", "d", "--rules", "modflow"}, "modflow"},
    };
    for (const auto& [arguments, message] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const ToolRun run = run_tool(arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr("plxconvert: "));
        EXPECT_THAT(run.err, HasSubstr(message));
    }
}

TEST(Usage, HelpShowsWorkedExamples) {
    const struct {
        std::vector<std::string> arguments;
        const char* text;
    } cases[] = {{{"--help"}, "plxconvert modflow site.nam"},
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
    const std::string bas = "BAS 1 a.bas\n";
    const struct {
        std::string file, bytes;
        const char* message;
    } cases[] = {
        {"folder.nam/x.txt", "", "is not a MODFLOW name file (.nam), GMS super file (.mfs)"},
        {".hidden/site.nam", bas, "the folder \".hidden\" begins with a dot"},
        {std::string(124, 'n') + ".nam", bas, "longer than 127 bytes"},
        {"two\"quotes.nam", bas, "double quote"},
        {"back\\slash.nam", bas, "backslash"},
        {"$TAG>.nam", bas, "would be read as a token"},
        {"what?.nam", bas, "wildcard"},
        {"gms.mfn", "DIS 1 a.dis\n", "its super file (.mfs) is not beside it; copy it to a .nam file"},
        {"transport.nam", "# MT3D\nBTN 1 a.btn\nADV 2 a.adv\n",
         "neither a discretization file (DIS, BAS6) nor a "
         "basic package (BAS, BCF): found btn, adv"},
        {"empty.nam", "", "found no file types at all"},
    };
    for (const auto& [file, bytes, message] : cases) {
        // No file of Windows has such a name.
        if (kWindows && file.find_first_of("\"\\>?") != std::string::npos) continue;
        SCOPED_TRACE(file);
        const std::string path = folder.write(file, bytes);
        for (const char* command : {"modflow", "info"}) {
            const ToolRun run = run_tool({command, path});
            EXPECT_EQ(run.code, 1);
            EXPECT_EQ(run.out, "");
            EXPECT_THAT(run.err, HasSubstr(message));
        }
    }
    EXPECT_THAT(run_tool({"modflow", folder.file("folder.nam")}).err, HasSubstr("is a folder"));
    EXPECT_THAT(run_tool({"info", folder.file("none.nam")}).err, HasSubstr("does not exist"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "MODFLOW"));
}

TEST(Project, BinaryBytesAreNoNameFile) {
    const TempFolder folder;
    const std::string path = folder.write("site.nam", std::string("DIS 1 a.dis\n\0\1\2\377", 16));
    for (const char* command : {"modflow", "info"}) {
        const ToolRun run = run_tool({command, path});
        EXPECT_EQ(run.code, 1);
        EXPECT_THAT(run.err, HasSubstr("is a binary file, not a MODFLOW name file"));
    }
    EXPECT_THAT(run_tool({"info", folder.write("site.any", std::string(300, '\0'))}).err,
                HasSubstr("is no result file of MODFLOW or MT3D"));
}

TEST(Project, NeighbourThatDiffersInCaseIsNotTakenInstead) {
    if (kWindows) GTEST_SKIP() << "no two files differ in case only on this system";
    const TempFolder folder;
    folder.write("site.nam", "DIS 1 a.dis\n");
    const ToolRun run = run_tool({"info", folder.write("Site.nam", "DIS 1 b.dis\n")});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("only in the case of its letters"));
}

}  // namespace
}  // namespace plx::test
