#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_tool.h"
#include "cli/small_model.h"
#include "support/holds_regex.h"
#include "support/result_files.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// The small model as one of GMS, moved and turned; concentrations of two species stand beside it.
std::string write_gms_model(const TempFolder& folder) {
    write_small_model(folder);
    fs::rename(folder.file("site.hds"), folder.file("site.hed"));
    fs::rename(folder.file("site.cbb"), folder.file("site.ccf"));
    fs::remove(folder.file("site.nam"));
    folder.write(
        "site.mfn",
        "LIST 6 \"site.lst\"\nDIS 10 \"site.dis\"\nBAS6 11 \"site.ba6\"\nDATA(BINARY) 30 \"site.hed\"\n"
        "DATA(BINARY) 31 \"site.ccf\"\n");
    folder.write("site.mts", "MT3DSUP\nSPC \"salt\" 1\nSPC \"dye\" 1\nBTN 1 \"site.btn\"\nCON\n");
    std::string transport = "salt\nand dye\n 2 3 4 1 2 2\n d ft kg\n T T F F F\n 1 1\n";
    for (int array = 0; array < 7; ++array) transport += "         0       0.3\n";
    folder.write("site.btn", transport);
    ResultWriter salt;
    for (const int transport_step : {3, 6}) {
        for (const int layer : {1, 2}) {
            salt.layer({1, 1, 2.5 * transport_step, 2, 3, 4}, layer, std::vector<double>(12, 0.5),
                       "CONCENTRATION", transport_step);
        }
    }
    folder.write("site001.ucn", salt.bytes());
    folder.write("site002.ucn", salt.bytes());
    return folder.write(
        "site.mfs",
        "MF2KSUP\nNAME 99 \"site.mfn\"\nIJK -y +x -z\nORIG 1000.5 2000.0 0.0\nROTZ 30\nDMAT 4\n"
        "REFTIME s 0 1999 12 31 12 0 0\nUNITS \"ft\"\t\"d\"\n");
}

TEST(ModelKinds, FilesThatDoNotGiveTheModelAreRefused) {
    const TempFolder folder;
    folder.write("beside.mfs", "MF2KSUP\n");
    const std::string binary("MF2KSUP\0\1\2", 10), name_file = "DIS 1 a.dis\n";
    const std::string cases[][4] = {
        {"text.gpr", "GMSPROJ\nTIN a.tin\n", "auto",
         "'plxconvert gms' converts it; its MODFLOW model is given by"},
        {"bytes.gpr", binary, "auto", "is neither text nor an HDF5 file"},
        {"bytes.mfs", binary, "auto", "is a binary file, not a GMS super file"},
        {"bytes.vmf", binary, "visual", "is a binary file, not a Visual MODFLOW project"},
        {"bytes.hds", binary, "auto", "is a binary file, and not a MODFLOW name file (.nam), GMS super file"},
        {"beside.mfn", name_file, "auto", "is the name file of a GMS model: give its super file beside.mfs"},
        {"site.nam", name_file, "gms", "is no GMS super file: those of --kind gms end in .mfs"},
        {"site.mfs", "MF2KSUP\n", "gms_hdf5", "is no GMS project: those of --kind gms_hdf5 end in .gpr"},
        {"site.mfs", "MF2KSUP\n", "modflow", "is no MODFLOW name file: those of --kind modflow end in .nam"},
        {"site.vmf", "<Project>\n", "gms", "is no GMS super file"},
        {"site.txt", "DIS 1 a.dis\n", "visual", "or Visual MODFLOW project (.vmf)"},
    };
    for (const auto& [file, bytes, kind, message] : cases) {
        SCOPED_TRACE(file + " as " + kind);
        expect_refused(run_tool({"modflow", folder.write(file, bytes), "--kind", kind}), 1, message);
    }
    EXPECT_FALSE(fs::exists(folder.path() / "MODFLOW"));
}

TEST(ModelKinds, SuperFileGivesAModelThatConvertsWithAllOptions) {
    const TempFolder folder;
    const std::string project = write_gms_model(folder);
    const auto count = entry_count(folder);
    // Centres in the world, in which the third column is at the edge: one of its rows lies beyond it.
    for (const char* kind : {"auto", "gms"}) {
        SCOPED_TRACE(kind);
        const ToolRun run =
            run_tool({"modflow", project, "--kind", kind, "--dest", folder.file("out"), "--crop", "900",
                      "1900", "1200", "2500", "--porosity", "0.25", "--compress"});
        EXPECT_EQ(run.code, 0);
        EXPECT_THAT(run.err, testing::EndsWith(
                                 "porosity of the model itself is written, not the one that was given\n"));
        expect_texts(run.out, {"site.mfs: GMS model, rules modflow\n", "  cells               16\n",
                               "  transport            2\n"});
    }
    EXPECT_TRUE(fs::exists(folder.path() / "out/MT3D/mt3d_site_7_500000.pfz"));
    EXPECT_EQ(entry_count(folder), count + 1);
    EXPECT_EQ(run_tool({"modflow", project, "--quiet"}).code, 0);
    EXPECT_THAT(folder.read("MODFLOW/mod_site.tcf"), HasSubstr("2000-01-15 12:00:00"));
}

TEST(ModelKinds, InfoTellsThePlaceAndTheConcentrations) {
    const TempFolder folder;
    const std::string project = write_gms_model(folder);
    const auto count = entry_count(folder);
    const json model = json_of({"info", project});
    expect_values(model, R"({"/kind": "gms", "/origin": [1000.5, 2000], "/rotation": 30, "/active_cells": 23,
        "/start": "1999-12-31 12:00:00", "/results/1/kind": "flows", "/results/3/file": "site002.ucn",
        "/results/3/species": "dye", "/results/3/steps/1": {"period": 1, "step": 1, "time": 15}})");
    EXPECT_EQ(model["results"].size(), 4u);
    expect_texts(run_tool({"info", project}).out,
                 {"site.mfs: GMS model\n", "  origin  x 1000.5, y 2000; rotated by 30 degrees\n",
                  "  start   1999-12-31 12:00:00\n", "site001.ucn: concentrations, species salt, "});
    const json alone = json_of({"info", folder.file("site001.ucn")});
    expect_values(alone, R"({"/kind": "concentrations", "/label": "CONCENTRATION", "/layers": 2})");
    EXPECT_EQ(alone["steps"].size(), 2u);
    EXPECT_EQ(entry_count(folder), count);
}

TEST(ModelKinds, InfoBlamesACutResultOnceAndNoTransportPackage) {
    for (const char* file : {"site002.ucn", "site.hed"}) {
        const TempFolder folder;
        const std::string project = write_gms_model(folder);
        folder.write("site.btn", "salt\n");
        const std::string whole = folder.read(file);
        folder.write(file, whole.substr(0, whole.size() - 7));
        const ToolRun run = run_tool({"info", project});
        EXPECT_EQ(run.code, 1);
        EXPECT_THAT(run.err, HoldsRegex("^plxconvert: " + std::string(file) + ": byte [^\n]+\n$"));
    }
}

}  // namespace
}  // namespace plx::test
