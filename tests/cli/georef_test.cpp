#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_tool.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;

// Pixels of 2 by 2 from 1000, 5000 on.
const std::string kExact = "# X, -Y, column, row\n1000 -5000 0 0\n1198,-4902,99,49\r\n1000\t-4902\t0\t49\n";
const std::string kPng("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x64\0\0\0\x32\x08\0\0\0\0", 29);

std::string project(const TempFolder& folder, const std::string& options, const std::string& points) {
    const std::string command = std::string(PLXCONVERT) + " georef project " + folder.file("site.gcp") +
                                options + " <" + folder.write("points", points) + " >" + folder.file("out") +
                                " 2>&1";
    const int status = std::system(command.c_str());
    return folder.read("out") + (status == 0 ? "" : "failed\n");
}

TEST(Georef, RowsCountDownwardsForEveryTypeAndArithmetic) {
    const TempFolder folder;
    folder.write("site.gcp", kExact);
    for (const char* options :
         {" --type 2", " --type 3", " --type 4", " --type 7", " --type 2 --prescribed"}) {
        SCOPED_TRACE(options);
        EXPECT_EQ(project(folder, options, "0 0\n# kept\r\n\n10,20\r\n5\t+4e0"),
                  "1000 5000\n# kept\n\n1020 4960\n1010 4992\n");
    }
    EXPECT_EQ(project(folder, " --reverse --type 2", "1020 4960\n"), "10 20\n");
    folder.write("site.gcp", "1010 -5000 10 20\n");
    for (const char* options : {" --type 7", " --prescribed"}) {
        SCOPED_TRACE(options);
        EXPECT_EQ(project(folder, options, "11 21\n"), "1011 4999\n");
        EXPECT_EQ(project(folder, std::string(" --reverse") + options, "1011 4999\n"), "11 21\n");
    }
}

TEST(Georef, BadLinesAreToldWithTheirNumber) {
    const TempFolder folder;
    folder.write("site.gcp", kExact);
    const std::string cases[][2] = {
        {"0 0\n\n1 x\n2 2\n", "1000 5000\n\nplxconvert: line 3: 'x' is not a number\nfailed\n"},
        {"1\n", "plxconvert: line 1: two numbers are wanted, here is one\nfailed\n"},
        {"1 2 3\n", "plxconvert: line 1: '3' follows the two numbers\nfailed\n"},
        {"nan 2\n", "plxconvert: line 1: 'nan' is not a number\nfailed\n"},
        {std::string(400000, '1'), "plxconvert: line 1: longer than 65536 bytes\nfailed\n"},
        {"", ""},
    };
    for (const auto& [points, result] : cases) EXPECT_EQ(project(folder, "", points), result);
    for (const char* text : {"", "# only\n", "1 2 3\n", "1 2 3 four\n", "1 2 3 1e200\n"}) {
        SCOPED_TRACE(text);
        const ToolRun run = run_tool({"georef", "fit", folder.write("bad.gcp", text)});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
    }
}

TEST(Georef, FitTellsResidualsAndDrawsThem) {
    const TempFolder folder;
    // The fourth point is 4 too far in X: an affine map of a square's corners leaves a quarter of it to each.
    const std::string file = folder.write("site.gcp", "0 0 0 0\n10 0 10 0\n0 10 0 10\n14 10 10 10\n");
    const ToolRun run = run_tool({"georef", "fit", file, "--json", "--plot", folder.file("r.svg")});
    const auto json = nlohmann::json::parse(run.out);
    EXPECT_NEAR(json["rms"].get<double>(), 1.0, 1e-12);
    EXPECT_NEAR(json["residuals"][3]["dX"].get<double>(), 1.0, 1e-12);
    EXPECT_NEAR(json["X"][1].get<double>(), 1.2, 1e-12);
    EXPECT_THAT(folder.read("r.svg"), HasSubstr("marker-end"));
}

TEST(Georef, FilesBesideAnImageAreWrittenAndShown) {
    const TempFolder folder;
    const std::string image = folder.write("site.png", kPng), points = folder.write("site.gcp", kExact);
    ASSERT_EQ(run_tool({"georef", "world", points, image}).code, 0);
    EXPECT_THAT(folder.read("site.pgw"), HasSubstr("-2.000000\n\n1000.000000\n\n5000.000000\n\n"));
    EXPECT_THAT(run_tool({"georef", "show", image}).out, HasSubstr("not used, as there is a GCP file"));
    ASSERT_EQ(run_tool({"georef", "gcp", image}).code, 0);
    EXPECT_EQ(folder.read("site.gcp.backup"), kExact);
    EXPECT_THAT(folder.read("site.gcp"), HasSubstr("\n1198.000000\t-4902.000000\t99.000000\t49.000000\n"));
}

}  // namespace
}  // namespace plx::test
