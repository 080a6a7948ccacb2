#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_tool.h"
#include "support/gms_bytes.h"
#include "support/golden_files.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// A TIN of two times, a scatter set, a borehole, two materials and a grid that is not converted.
std::string write_gms_project(const TempFolder& folder) {
    folder.write("site.tin",
                 "TIN\nBEGT\nTNAM ground\nID 3\nVERT 3\n0 0 1\n10 0 2\n0 10 3\nTRI 1\n1 2 3\nENDT\n");
    folder.write("wells.xy", "XY1\nBEGSET\nNAME wells\nID 4\nIXY 2\n1 1 1\n2 5 5\nENDSET\n");
    folder.write("bores.bor", "BEGH\nNAME B1\nCONT 2\n1 1 10 1\n1 1 5 2\nENDH\n");
    folder.write("soils.mat", "MAT\nMN 1 sand\nMN 2 clay\n");
    folder.write("heads.dat",
                 "DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 3\nND 3\nNC 1\nNAME head\n"
                 "TS 0 0.0\n5\n6\n7\nTS 0 30.0\n8\n9\n10\nENDDS\n");
    folder.write("wells.dat",
                 "DATASET\nOBJTYPE scat2d\nBEGSCL\nOBJID 4\nND 2\nNC 0\nNAME level\nTS 0 0\n1\n2\nENDDS\n");
    return folder.write("site.gpr",
                        "GMSPROJ\nTIN site.tin\nSCAT2D wells.xy\nBHOLE bores.bor\nMAT soils.mat\n"
                        "GRID2D grid.2dg\nDATA heads.dat\nDATA wells.dat\n");
}

/// An HDF5 file's first bytes, and nothing else that belongs to one.
std::string broken_hdf5() { return "\x89HDF\r\n\x1a\n" + std::string(200, '\x55'); }

/// A binary dataset file with one scalar dataset of three values for TIN 3.
std::string binary_dataset() {
    GmsBytes bytes(false);
    return bytes.head(130).sizes(3, 0).name("depth").step(0, 12.5f, "", {1, -2, 4}).close().text;
}

class Gms : public testing::Test {
protected:
    ToolRun convert(const Words& more) const {
        Words arguments = {"gms", project_, "--dest", folder_.file("Out/made")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run_tool(arguments);
    }
    /// Names below the destination in byte order.
    Words written() const {
        Words names;
        std::filesystem::create_directories(folder_.path() / "Out/made");
        for (const auto& name : files_below(folder_.path() / "Out/made"))
            names.push_back(name.generic_string());
        return names;
    }

    TempFolder folder_;
    std::string project_ = write_gms_project(folder_);
};

TEST_F(Gms, WritesWhatTheProjectHoldsAndListsIt) {
    const ToolRun run = convert({});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(written(), ElementsAre("2ds_wells_level.gmf", "bor_bores.pgf", "ground_head.gmf",
                                       "tin_ground_elevation.gmf", "tin_ground_elevation.pff"));
    const char* const file = kWindows ? "\\out\\made\\ground_head.gmf\n" : "/Out/made/ground_head.gmf\n";
    expect_texts(run.out, {"GMS project (text)\n", file, "  files                5\n", "results in "});
    EXPECT_THAT(run.out, Not(HasSubstr("deleted")));
    EXPECT_THAT(folder_.read("Out/made/ground_head.gmf"), HasSubstr("0.000000 10.000000 7.000000"));
}

TEST_F(Gms, JsonIsOneObjectWithExistingFiles) {
    const ToolRun run = convert({"--json", "--types", "TIN,borehole", "--subfolders"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    const json report = json::parse(run.out);
    EXPECT_EQ(report["project"], project_);
    expect_values(report, R"({"/kind": "gms text", "/errors": []})");
    ASSERT_EQ(report["files"].size(), 4u);
    for (const json& file : report["files"])
        EXPECT_EQ(std::filesystem::file_size(file["file"].get<std::string>()), file["bytes"]) << file;
    EXPECT_THAT(written(), ElementsAre("BORE/bor_bores.pgf", "TINS/ground_head.gmf",
                                       "TINS/tin_ground_elevation.gmf", "TINS/tin_ground_elevation.pff"));
}

TEST_F(Gms, ObjectsOfTheSameNameAreTold) {
    const std::string set = "BEGSET\nNAME wells\nID 4\nIXY 2\n1 1 1\n2 5 5\nENDSET\n";
    folder_.write("wells.xy", "XY1\n" + set + set);
    const ToolRun run = convert({"--json", "--types", "scat2d"});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(written(), ElementsAre("2ds_wells_level.gmf"));
    EXPECT_THAT(run.err,
                HasSubstr("2ds_wells_level.gmf' holds the last of several objects of the same name"));
    EXPECT_EQ(json::parse(run.out)["warnings"].size(), 1u);
}

TEST_F(Gms, TimeChoosesTheNearestStepAndOldRulesRefuseSeveral) {
    EXPECT_EQ(convert({"--time", "25", "--quiet"}).out, "");
    EXPECT_THAT(folder_.read("Out/made/ground_head.gmf"), HasSubstr("0.000000 10.000000 10.000000"));
    const ToolRun cropped = convert({"--extents", "-5", "-5", "1", "1", "--types", "tin"});
    EXPECT_EQ(cropped.code, 0);
    EXPECT_THAT(cropped.err, HasSubstr("plxconvert: warning: --extents does not crop"));
    const ToolRun old = convert({"--rules", "prescribed", "--types", "tin"});
    EXPECT_EQ(old.code, 1);
    EXPECT_THAT(old.err, HasSubstr("End of Data values not reached\nplxconvert: "));
    EXPECT_THAT(old.err, Not(HasSubstr("\n\n")));
    EXPECT_THAT(old.out, HasSubstr("tin_ground_elevation.pff"));
}

TEST_F(Gms, ConversionThatWritesNothingSaysWhy) {
    const std::string tins = "1 TIN, 1 2-D scatter set, 1 borehole, 1 2-D grid";
    const ToolRun run = convert({"--types", "grid2d,image", "--json"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "plxconvert: nothing was written: the project holds " + tins + "\n");
    EXPECT_EQ(json::parse(run.out)["errors"].size(), 1u);

    const std::string cases[][3] = {
        {"broken.gpr", broken_hdf5(), "cannot be read: the HDF5 file is damaged"},
        {"empty.gpr", "", "nothing was written: the project holds no objects"},
        {"cut.gpr", "GMSPROJ\nTIN site.tin", "nothing was written"},
        {"images.gpr", "IMAGE a.tif\nIMG b.tif\n", "the project holds 2 images"},
        {"a.dat", folder_.read("heads.dat"), "is a GMS dataset file; give the project"},
        {"b.bin", binary_dataset(), "is a GMS dataset file"},
        {"model.nam", "DATA 31 a.txt\nDIS 1 a.dis\n", "is no GMS project"},
        {"lower.txt", "tin site.tin\n", "is no GMS project"},
        {"lost.gpr", "TIN none.tin\n", "none.tin"},
    };
    for (const auto& [file, bytes, message] : cases) {
        SCOPED_TRACE(file);
        project_ = folder_.write(file, bytes);
        expect_refused(convert({}), 1, message);
    }
    EXPECT_THAT(written(), ElementsAre());
}

TEST_F(Gms, PathsThatCannotBeProjectsOrFolders) {
    EXPECT_THAT(run_tool({"gms", folder_.path().string(), "--dest", folder_.file("o")}).err,
                HasSubstr("is a folder; give the project file (.gpr) in it"));
    EXPECT_THAT(run_tool({"gms", folder_.file("none.gpr"), "--dest", folder_.file("o")}).err,
                HasSubstr("does not exist"));
    EXPECT_FALSE(std::filesystem::exists(folder_.file("o")));
    expect_refused(run_tool({"gms", project_, "--dest", project_}), 1, "is not a folder");
}

TEST_F(Gms, InfoTellsTheWholeProject) {
    expect_values(json_of({"info", project_}), R"({"/kind": "gms text",
        "/files/4": {"keyword": "GRID2D", "name": "grid.2dg", "exists": false},
        "/objects/0/name": "ground", "/objects/0/id": 3, "/objects/0/points": 3, "/objects/0/triangles": 1,
        "/objects/0/datasets": [{"name": "head", "object_type": "tin", "object_id": 3, "components": 1,
            "values": 3, "times": [0, 30], "min": 5, "max": 10, "file": "heads.dat"}],
        "/objects/1/datasets/0/name": "level", "/objects/2/type": "borehole", "/objects/3/converted": false,
        "/materials": [{"number": 1, "name": "sand"}, {"number": 2, "name": "clay"}]})");
    expect_texts(run_tool({"info", project_}).out,
                 {"site.gpr: GMS project (text), 1 TIN, 1 2-D scatter set", "grid.2dg  (missing)",
                  "2 times, 0 to 30", "(not converted)", "     2   clay\n"});
}

TEST_F(Gms, InfoTellsDatasetFilesByTheirContents) {
    const std::string bytes = binary_dataset();
    expect_values(json_of({"info", folder_.write("depth.any", bytes)})["datasets"][0],
                  R"({"/times": [12.5], "/name": "depth", "/min": -2, "/max": 4})");
    const ToolRun text = run_tool({"info", folder_.file("heads.dat")});
    expect_texts(text.out, {"heads.dat: GMS dataset file\n", "for tin 3"});

    const ToolRun cut = run_tool({"info", folder_.write("cut.dat", bytes.substr(0, 120)), "--json"});
    EXPECT_EQ(cut.code, 1);
    EXPECT_THAT(cut.err, HasSubstr("plxconvert: "));
    EXPECT_EQ(run_tool({"info", folder_.write("bad.h5", broken_hdf5())}).code, 1);
    EXPECT_THAT(run_tool({"info", folder_.write("bytes.gpr", std::string(300, '\0'))}).err,
                HasSubstr("is no GMS project: it is neither text nor an HDF5 file"));
}

/// Objects by type and name, with their sizes and the ranges of their datasets.
Words outline(const json& info) {
    Words lines;
    for (const json& object : info["objects"]) {
        std::string line;
        for (const char* key : {"type", "name", "points", "triangles"}) line += object[key].dump();
        for (const json& set : object["datasets"])
            for (const char* key : {"name", "values", "min", "max"}) line += set[key].dump();
        std::replace(line.begin(), line.end(), '_', ' ');
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST_F(Gms, BothKindsOfTheSameProjectAreToldAlike) {
    const std::string quarry = PLX_EXAMPLES "/quarry/quarry";
    const json text = json_of({"info", quarry + ".gpr"}), hdf5 = json_of({"info", quarry + "_hdf5.gpr"});
    expect_values(hdf5, R"({"/kind": "gms hdf5", "/materials_used": true})");
    EXPECT_EQ(outline(text), outline(hdf5));
    EXPECT_EQ(text["materials"], hdf5["materials"]);
}

}  // namespace
}  // namespace plx::test
