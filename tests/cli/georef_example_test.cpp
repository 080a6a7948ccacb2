// The example map, placed with the tool as a person does it, and the headers of images that the tool knows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_tool.h"
#include "support/host_system.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;

const std::filesystem::path kExample = std::filesystem::path(PLX_EXAMPLES) / "geomap";

TEST(GeorefExample, IsWhatItsScriptAndTheToolWrite) {
    const TempFolder folder;
    const std::string points = folder.write("geomap.gcp", read_bytes(kExample / "geomap.gcp"));
    const auto json = json_of({"georef", "fit", points, "--plot", folder.file("residuals.svg")});
    EXPECT_EQ(folder.read("residuals.svg"), read_bytes(kExample / "residuals.svg"));
    // The script has a least squares of its own and tells in a comment what it leaves.
    const std::string told = folder.read("geomap.gcp");
    double longest = 0.0;
    for (const auto& r : json["residuals"]) longest = std::max(longest, r["distance"].get<double>());
    EXPECT_NEAR(json["rms"].get<double>(), std::atof(&told[told.find("RMS") + 3]), 6e-5);
    EXPECT_NEAR(longest, std::atof(&told[told.find("longest") + 7]), 6e-5);

    if (kWindows) GTEST_SKIP() << "no python3 for Windows";
    const ProgramRun script = run_program(
        "/usr/bin/env", {"python3", (kExample / "make_geomap.py").string(), folder.path().string()});
    // 127 is for programs that are not there.
    if (script.code == 127 || script.code == -1) GTEST_SKIP() << "no python3";
    ASSERT_EQ(script.code, 0) << script.err;
    for (const char* name : {"geomap.gcp", "geomap.png"})
        EXPECT_TRUE(folder.read(name) == read_bytes(kExample / name)) << name;
}

TEST(GeorefExample, WorldFilePlacesTheMap) {
    const TempFolder folder;
    const std::string points = folder.write("geomap.gcp", read_bytes(kExample / "geomap.gcp"));
    const std::string image = folder.write("geomap.png", read_bytes(kExample / "geomap.png"));
    ASSERT_EQ(run_tool({"georef", "world", points, image}).code, 0);
    std::filesystem::remove(points);
    ASSERT_EQ(run_tool({"georef", "gcp", image}).code, 0);
    const auto json = json_of({"georef", "fit", points});
    EXPECT_LT(json["rms"].get<double>(), 1e-5);
    // The last column and row of the image; pixels are about 6.1 m wide, and north is above.
    expect_values(json, R"({"/residuals/1/column": 479, "/residuals/1/row": 359})");
    EXPECT_NEAR(json["X"][1].get<double>(), 6.1, 0.03);
    EXPECT_NEAR(json["Y"][2].get<double>(), -6.1, 0.03);
}

std::string bytes(const std::vector<int>& values) { return {values.begin(), values.end()}; }

TEST(ImageSize, IsReadFromTheHeader) {
    const std::string app = bytes({0xff, 0xd8, 0xff, 0xe1, 0, 4, 0xff, 0xc0, 0xff, 0xff, 0xff});
    const std::string bitmap = "BM" + std::string(12, '\0');
    const std::string tiff =
        bytes({8, 0, 0, 0, 2, 0, 0, 1, 4, 0, 1, 0, 0, 0, 44, 1, 0, 0, 1, 1, 3, 0, 1, 0, 0, 0, 200, 0, 9, 9});
    const std::string big_tiff = bytes({0, 0, 0, 0, 0, 0, 0, 0, 0, 16, 0, 0, 0, 0, 0, 0, 0, 2}) +
                                 bytes({1, 0, 0, 16, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 44}) +
                                 bytes({1, 1, 0, 3, 0, 0, 0, 0, 0, 0, 0, 1, 0, 200, 9, 9, 9, 9, 9, 9});
    const std::string size = "300 columns, 200 rows", none = "size unknown";
    const std::string cases[][3] = {
        {"progressive JPEG behind a segment and fill bytes", app + bytes({0xc2, 0, 17, 8, 0, 200, 1, 44}),
         size},
        {"JPEG without losses", app + bytes({0xcb, 0, 17, 8, 0, 200, 1, 44}), size},
        {"JPEG cut in its width", app + bytes({0xc2, 0, 17, 8, 0, 200, 1}), none},
        {"JPEG that begins with tables",
         app + bytes({0xc4, 0, 2, 0xff, 1, 0xff, 0xc0, 0, 9, 8, 0, 200, 1, 44}), size},
        {"JPEG whose scan comes first", app + bytes({0xda, 0, 2, 0xff, 0xc0, 0, 17, 8, 0, 200, 1, 44}), none},
        {"JPEG of fill bytes only", bytes({0xff, 0xd8}) + std::string(50000, '\xff'), none},
        {"TIFF, LONG and SHORT", bytes({'I', 'I', 42, 0}) + tiff, size},
        {"TIFF cut in its last entry", bytes({'I', 'I', 42, 0}) + tiff.substr(0, 26), none},
        {"TIFF without a directory", bytes({'M', 'M', 0, 42, 0, 0, 0, 0}) + tiff, none},
        {"TIFF with 64-bit offsets", bytes({'M', 'M', 0, 43, 0, 8}) + big_tiff, size},
        {"bitmap from the top", bitmap + bytes({40, 0, 0, 0, 44, 1, 0, 0, 56, 255, 255, 255}), size},
        {"bitmap of OS/2", bitmap + bytes({12, 0, 0, 0, 44, 1, 200, 0, 1, 0, 8, 0}), size},
        {"a text", "BMW and other cars that stand in the yard", none},
        {"PNG that is cut", bytes({0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'}),
         none},
    };
    const TempFolder folder;
    for (const auto& [what, header, shown] : cases) {
        const ToolRun run = run_tool({"georef", "show", folder.write("image.tif", header)});
        EXPECT_THAT(run.out, HasSubstr(shown)) << what;
    }
}

}  // namespace
}  // namespace plx::test
