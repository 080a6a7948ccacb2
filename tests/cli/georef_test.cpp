#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "cli/run_tool.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;

// Pixels of 2 by 2 from 1000, 5000 on.
const std::string kExact = "# X, -Y, column, row\n1000 -5000 0 0\n1198,-4902,99,49\r\n1000\t-4902\t0\t49\n";
const std::string kPng("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x64\0\0\0\x32\x08\0\0\0\0", 29);

std::string project(const TempFolder& folder, const std::string& options, const std::string& points) {
    Words words = {"georef", "project", folder.file("site.gcp")};
    std::istringstream more(options);
    for (std::string word; more >> word;) words.push_back(word);
    const ToolRun run = run_tool(words, folder.write("points", points));
    return run.out + (run.code == 0 ? "" : run.err + "failed\n");
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
        {"# " + std::string(70000, 'x') + "\n", "plxconvert: line 1: longer than 65536 bytes\nfailed\n"},
        {"\xef\xbb\xbf\t0 0\n", "1000 5000\n"},
        {"", ""},
    };
    for (const auto& [points, result] : cases) EXPECT_EQ(project(folder, "", points), result);
    for (const char* text : {"", "# only\n", "1 2 3\n", "1 2 3 four\n", "1 2 3 1e200\n"}) {
        SCOPED_TRACE(text);
        expect_refused(run_tool({"georef", "fit", folder.write("bad.gcp", text)}), 1, "");
    }
}

TEST(Georef, FitTellsResidualsAndDrawsThem) {
    const TempFolder folder;
    // The fourth point is 4 too far in X: an affine map of a square's corners leaves a quarter of it to each.
    const std::string file = folder.write("site.gcp", "0 0 0 0\n10 0 10 0\n0 10 0 10\n14 10 10 10\n");
    const auto json = json_of({"georef", "fit", file, "--plot", folder.file("r.svg")});
    EXPECT_NEAR(json["rms"].get<double>(), 1.0, 1e-12);
    EXPECT_NEAR(json["residuals"][3]["dX"].get<double>(), 1.0, 1e-12);
    EXPECT_NEAR(json["X"][1].get<double>(), 1.2, 1e-12);
    EXPECT_THAT(folder.read("r.svg"), HasSubstr("class=\"arrow\""));
}

TEST(Georef, CoefficientsAreThoseOfBothWays) {
    const TempFolder folder;
    using Terms = std::vector<double>;
    const std::tuple<std::string, std::string, Terms> cases[] = {
        {"1", "1010 -5000 10 20\n", {5020, 0, -1, 5020, 0, -1}},
        {"2", kExact, {5000, 0, -2, 2500, 0, -0.5}},
        // The square of the column minus the row, which has no such way back.
        {"5", "0 0 0 0\n1 -1 1 0\n2 -4 2 0\n0 1 0 1\n0 2 0 2\n1 0 1 1\n", {0, 0, -1, 1, 0, 0}}};
    for (const auto& [type, points, terms] : cases) {
        for (const std::string option : {"--json", "--prescribed"}) {
            const std::string file = folder.write("site.gcp", points);
            const auto json = json_of({"georef", "fit", file, "--type", type, option});
            Terms found = json["Y"].get<Terms>();
            for (const auto& term : json["back"]["row"]) found.push_back(term.get<double>());
            found.resize(terms.size());
            EXPECT_THAT(found, testing::Pointwise(testing::DoubleNear(1e-6), terms)) << type + option;
        }
    }
}

TEST(Georef, WhatIsWrongIsTold) {
    const TempFolder folder;
    folder.write("good.gcp", kExact), folder.write("\xc3\xbc.gcp", kExact), folder.write("g.gif", "");
    folder.write("minus.gcp", "0 0 0 -1\n"), folder.write("equal.gcp", "5 0 0 0\n5 9 0 1\n");
    folder.write("a.png", ""), folder.write("a.gcp", "1 2 3 x\n"), folder.write("a.pngw", "1\n");
    folder.write("b.jpg", ""), folder.write("b.gcp", "# none\n");
    folder.write("b.jpgw", "1\n0\n0\n-1\n0\n0\n");
    folder.write("degrees.txt", "0 0 7 50\n99 0 7.00012345 50\n0 99 7 49.99987655\n");
    folder.write(
        "utm.gcp",
        "450000 -5640000 0 0\n452000.3 -5640000 999 0\n450000 -5638000 1 990\n451000 -5639000.2 500 500\n"
        "452000 -5638000.7 990 985\n450500 -5638500 245 755\n451500 -5638400.4 760 801\n");
    folder.write("huge.gcp",
                 "1 1 1e100 1\n2 1 2e100 2e99\n3 3 1e99 9e100\n4 1 5e100 7e100\n5 2 3e99 4e99\n6 9 8 2\n");
    folder.write("far.gcp", "1 2 3 4\n-1e200 2 3 4\n");
    folder.write("wide.png", kPng), folder.write("wide.pgw", "1e200\n0\n0\n-1\n0\n0\n");
    folder.write("c.bmp", ""), std::filesystem::create_directory(folder.file("c.bpw"));
    std::tuple<Words, int, std::string> cases[] = {
        {{"fit", "huge.gcp", "--type", "5", "--prescribed", "--json"}, 0, "\"rms\": null"},
        {{"world", "huge.gcp", "g.gif", "--type", "5", "--prescribed"}, 1, "the fit is not a number"},
        {{"fit", "utm.gcp", "--type", "5"}, 0, "the way back of the prescribed fit differs by up to "},
        {{"project", "utm.gcp", "--type", "5", "--reverse"}, 0, "warning: the way back of the prescribed"},
        {{"project", "good.gcp", "--type", "7"}, 0, "7 is not possible with these points; type 4 is used"},
        {{"fit", "far.gcp"}, 1, "far.gcp: line 2: '-1e200' is too large"},
        {{"show", "wide.png"}, 0, "world file, used"},
        {{"gcp", "wide.png"}, 1, "a coordinate of a control point is too large"},
        {{"fit", "minus.gcp"}, 0, "minus.gcp: all rows are negative"},
        {{"fit", "equal.gcp", "--prescribed"}, 0, "texture_map: X inputs are equal."},
        {{"gcp", "g.gif", "--points", "degrees.txt"}, 0, "six decimals move control points by up to 0."},
        {{"gcp", "a.png", "--points", ""}, 1, "an empty path names no file"},
        {{"show", "a.png"}, 1, "a.gcp: broken"},
        {{"show", "b.jpg"}, 0, "b.gcp: no control point, not used"},
        {{"world", "good.gcp", "b.jpg"}, 0, "b.jgw is not used by hosts: b.jpgw comes first"},
        {{"show", "b.jpg"}, 0, "b.jgw: world file, not used, as b.jpgw comes first"},
        {{"world", "good.gcp", "g.gif"}, 0, "g.gfw is not found by hosts"},
        {{"world", "good.gcp", "good.gcp"}, 1, "give the image"},
        {{"world", "good.gcp", "c.bmp"}, 1, "is there and not a regular file"},
        {{"fit", "\xc3\xbc.gcp", "--plot", "r.svg"}, 0, "RMS"},
    };
    for (auto& [words, code, told] : cases) {
        for (std::string& word : words) word = word.find('.') == std::string::npos ? word : folder.file(word);
        words.insert(words.begin(), "georef");
        const ToolRun run = run_tool(words);
        EXPECT_EQ(run.code, code) << told;
        EXPECT_THAT(run.out + run.err, HasSubstr(told));
    }
    EXPECT_THAT(folder.read("r.svg"), HasSubstr("\xc3\xbc.gcp: type 4"));
}

TEST(Georef, FilesBesideAnImageAreWrittenAndShown) {
    const TempFolder folder;
    const std::string image = folder.write("site.png", kPng), points = folder.write("site.gcp", kExact);
    ASSERT_EQ(run_tool({"georef", "world", points, image}).code, 0);
    EXPECT_THAT(folder.text("site.pgw"), HasSubstr("-2.000000\n\n1000.000000\n\n5000.000000\n\n"));
    EXPECT_THAT(run_tool({"georef", "show", image}).out, HasSubstr("not used, as there is a GCP file"));
    ASSERT_EQ(run_tool({"georef", "gcp", image}).code, 0);
    EXPECT_EQ(folder.read("site.gcp.backup"), kExact);
    EXPECT_THAT(folder.text("site.gcp"), HasSubstr("\n1198.000000\t-4902.000000\t99.000000\t49.000000\n"));
}

}  // namespace
}  // namespace plx::test
