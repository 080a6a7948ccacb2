#include "converters/transport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "converters/gms_concentrations.h"
#include "converters/node_mesh.h"
#include "converters/output_paths.h"
#include "converters/small_grid.h"
#include "support/capture_stdout.h"
#include "support/gms_bytes.h"
#include "support/result_files.h"

using namespace plx;
using namespace plx::test;
using testing::HasSubstr;

namespace {

/// Concentrations of two cells at times 12.5 and 25, of one layer or with each later time a layer below.
std::string two_times(const std::vector<double>& values, ResultStyle style = {}, int rows = 1, int step = 0) {
    ResultWriter writer(style);
    for (const int n : {0, 1}) {
        const ResultStamp at{.time = n == 0 ? 12.5 : 25.0, .rows = rows, .columns = 2 / rows};
        writer.layer(at, 1 + n * step, values, "CONCENTRATION", 1);
    }
    return writer.bytes();
}

constexpr const char* kFirst = "site_MT3DMS/site001.con";

/// A dataset file of `count` times 1, 2, ... whose two cells have the values and 10 more with each time.
std::string con_file(std::vector<float> values, int count, int set_card = 130) {
    GmsBytes bytes(false);
    bytes.head(set_card).sizes(static_cast<int>(values.size()), 0);
    for (int n = 1; n <= count; ++n) {
        bytes.step(0, static_cast<float>(n), "", values);
        for (float& v : values) v += 10;
    }
    return bytes.close().text;
}

/// A model of two cells beside each other and what becomes of its transport results.
struct TransportRun : GridModel {
    explicit TransportRun(bool modflow_rules = false) : GridModel({1, 1, 2}, modflow_rules) {}
    /// What is found and read: "1: 1 2 5 6; " for every time, then their number.
    std::string read() {
        std::ostringstream text;
        printed = capture_stdout([&] {
            find_gms_concentrations(model);
            VXArray<double> values;
            float time = 0.0F;
            const int times = count_transport_times(model);
            while (read_transport_time(model, values, time)) {
                text << time << ":";
                for (int i = 0; i < 2 * values.dims.jres(); ++i) text << ' ' << values.data[i];
                text << "; ";
            }
            text << times;
        });
        return text.str();
    }
    void convert() {
        NodeMesh mesh(model.size(), model.geometry, model.flags, true);
        mesh.build_weights();
        printed = capture_stdout([&] {
            find_concentrations(model);
            write_transport_results(model, mesh, OutputPaths(factory));
        });
    }
};

}  // namespace

TEST(Transport, NamesOfASpeciesFollowTheStyle) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(species_file_names("a.b", 7, 0), Names{"a.b7.ucn"});
    EXPECT_EQ(species_file_names("a.b", 50, 1), Names{"a.b.050.ucn"});
    EXPECT_EQ(species_file_names("a.b", 123, 2), (Names{"a.b123.ucn", "a.b.123.ucn"}));
}

TEST(Transport, FiftySpeciesAreLookedFor) {
    TransportRun run;
    for (const char* number : {"000", "001", "009", "010", "049", "050", "051", "100"})
        run.folder.write(std::string("site") + number + ".ucn", two_times({1, 3}));
    run.factory.species_names.SetSize(60, String("name"));
    run.convert();
    std::vector<int> found;
    for (const SpeciesFile& species : run.model.transport.species) found.push_back(species.number);
    EXPECT_THAT(found, testing::ElementsAre(1, 9, 10, 49, 50));
}

TEST(Transport, FieldFileHoldsNodeAndCellValuesOfEverySpecies) {
    TransportRun run;
    // The second species is not there: the third keeps its own name.
    run.folder.write("SITE001.UCN", two_times({1, 3}));
    run.folder.write("site.003.ucn", two_times({10, 20}));
    const char* const cards = "SPC \"\"\nSPC Tin\nSPC TCE\nREFTIME 2001 1 1 0 0 0\n";
    run.factory.mt3d_project_file = VXFile(run.folder.write("a.mts", cards).c_str());
    run.factory.time_units = "h";
    EXPECT_EQ(capture_stdout([&] { run.factory.parseMTS(); }),
              "GMS_HDF5_Converter parseMTS\nEnd of species list\n");
    run.convert();
    const std::string nodes = "1.000000 10.000000 \r\n2.000000 15.000000 \r\n3.000000 20.000000 \r\n";
    const std::string field = run.folder.read("MT3D/mt3d_site_12_500000.pff");
    EXPECT_THAT(field, HasSubstr("NNODES 12\r\nNUM_NODE_DATA 2\r\nNUM_CELL_DATA 2\r\nNCELL_SETS 1\r\n"));
    for (const std::string kind : {"NODE", "CELL"})
        EXPECT_THAT(field, HasSubstr(kind + "_DATA_DEF 0 \"species_0\" \"Linear_\" IN_FILE \r\n" + kind +
                                     "_DATA_DEF 1 \"TCE\" \"Linear_\" IN_FILE \r\n"));
    EXPECT_THAT(field,
                testing::EndsWith("\r\nNODE_DATA_START\r\n" + nodes + nodes + nodes + nodes +
                                  "CELL_DATA_START\r\n1.000000 10.000000 \r\n3.000000 20.000000 \r\n"));
    EXPECT_EQ(run.folder.read("MT3D/mt3d_site.tcf"),
              "2001-01-01 12:30:00, mt3d_site_12_500000.pff, -1\r\n2001-01-02 01:00:00, "
              "mt3d_site_25_000000.pff, -1\r\n");
    EXPECT_THAT(run.printed, HasSubstr("site002.ucn for input\n"));
    EXPECT_TRUE(run.report.errors.empty());
}

TEST(Transport, FileThatEndsEarlyEndsTheResults) {
    // The part of the second time's record that is cut, and how long the second species' file is then.
    const std::pair<std::string, std::size_t> cases[] = {{"Transport Step", 55},
                                                         {"Timestep Index", 59},
                                                         {"Time Period Index", 63},
                                                         {"Time", 67},
                                                         {"Text", 83},
                                                         {"NCOL", 87},
                                                         {"NROWx", 91},
                                                         {"ILAY", 95},
                                                         {"concentration value", 103},
                                                         {"", 52}};
    for (const auto& [part, length] : cases) {
        SCOPED_TRACE(part);
        TransportRun run;
        run.folder.write("site001.ucn", two_times({1, 3}));
        run.folder.write("site002.ucn", two_times({1, 3}).substr(0, length));
        run.convert();
        EXPECT_THAT(run.printed, HasSubstr("MT3D : parseConcentration - Invalid " + part));
        EXPECT_EQ(run.report.transport_times, 1);
        EXPECT_EQ(run.report.errors.size(), part.empty() ? 0U : 1U);
        ASSERT_EQ(run.report.warnings.size(), 1U);
        EXPECT_TRUE(run.report.warnings[0].starts_with("site002.ucn"));
    }
}

TEST(Transport, RulesDecideWhichFilesCount) {
    const std::string plain = two_times({1, 3}), marked = two_times({1, 3}, {true, 8}),
                      column = two_times({1, 3}, {}, 2), layers = two_times({1, 3}, {}, 1, 1);
    const std::tuple<bool, const char*, std::string, int, const char*> cases[] = {
        {false, "MT3D001.UCN", plain, 0, ""},
        {true, "MT3D001.UCN", plain, 2, ""},
        {true, "MT3D001S.UCN", plain, 0, ""},
        {false, "site001.ucn", marked, 0, "64-bit reals or Fortran record markers"},
        {true, "site001.ucn", marked, 2, ""},
        {true, "site001.ucn", column, 0, "2 rows and 1 columns, the model has 1 and 2"},
        {true, "site001.ucn", layers, 0, "byte 52: concentrations of layer 2 where layer 1 of 1 must follow"},
        {true, "site001.ucn", "no result file", 0, "byte 0: no concentration record begins here"}};
    for (const auto& [modflow_rules, name, bytes, times, error] : cases) {
        SCOPED_TRACE(testing::Message() << modflow_rules << name << error);
        TransportRun run(modflow_rules);
        run.folder.write(name, bytes);
        run.convert();
        EXPECT_EQ(run.report.transport_times, times);
        EXPECT_EQ(run.report.errors.empty(), *error == '\0');
        EXPECT_THAT(run.printed, HasSubstr(error));
        EXPECT_EQ(std::filesystem::exists(run.folder.path() / "MT3D"), times > 0);
    }
}

TEST(Transport, CellsWithoutDataStayOutOfNodeMeans) {
    const std::tuple<bool, double, const char*> cases[] = {
        {true, 1e30, "5040.000000 \r\n3.000000 \r\n3.000000 \r\n"},
        {true, -999, "-999.000000 \r\n3.000000 \r\n3.000000 \r\n"},
        {false, -999, "-999.000000 \r\n-498.000000 \r\n3.000000 \r\n"}};
    for (const auto& [modflow_rules, value, expected] : cases) {
        TransportRun run(modflow_rules);
        run.folder.write("site001.ucn", two_times({value, 3}));
        run.convert();
        EXPECT_THAT(run.folder.read("MT3D/mt3d_site_12_500000.pff"), HasSubstr(expected));
    }
}

TEST(GmsConcentrations, FilesOfBothKindsCountWhereTheRulesFindThem) {
    ResultWriter layers;
    for (const int n : {1, 2})
        layers.layer({.time = 1.0 * n, .columns = 2}, 1, {5.0 + 10 * n, 6}, "CONCENTRATION", 1);
    const std::string con = con_file({1, 2}, 2), both = "1: 1 2 15 6; 2: 11 12 25 6; 2";
    const std::tuple<bool, const char*, const char*, std::string> cases[] = {
        {false, kFirst, "site_MT3DMS/site0010.con", "1: 1 2 1 2; 2: 11 12 11 12; 2"},
        {false, "site001.con", "site001.ucn", "0"},
        {true, kFirst, "site_MT3DMS/site002.ucn", both},
        {true, "site001.con", "MT3D002.UCN", both}};
    for (const auto& [modflow_rules, first, second, expected] : cases) {
        SCOPED_TRACE(testing::Message() << modflow_rules << second);
        TransportRun run(modflow_rules);
        run.folder.write(first, con);
        run.folder.write(second, std::string(second).ends_with(".con") ? con : layers.bytes());
        run.folder.write("site.mts", "SPC Tin\nSPC TCE\n");
        EXPECT_EQ(run.read(), expected);
        EXPECT_EQ(run.factory.species_names.GetSize(), modflow_rules ? 2 : 0);
        EXPECT_EQ(run.report.rules_used.result_files_by_content, modflow_rules);
        EXPECT_TRUE(run.report.errors.empty());
        EXPECT_THAT(run.printed, HasSubstr("site_mt3dms\\site003.con for input\n"));
    }
}

TEST(GmsConcentrations, DamagedFilesAreTold) {
    const std::string two = con_file({1, 2}, 2);
    GmsBytes odd(false);
    odd.ints({3000, 99, 110, 4, 120, 1, 130, 170, 2}).step(0, 1.0F, "", {1, 2});
    const std::tuple<std::string, std::string, const char*, std::size_t> cases[] = {
        {odd.text, "1: 1 2; 1", "MT3D : Write File - Invalid Card [99] found\n", 0},
        {two.substr(0, two.size() - 5), "1: 1 2; 1", "MT3D - Write FileInvalid Data Value 0.000000\n", 1},
        {two.substr(0, two.size() - 15), "1: 1 2; 1", "MT3D : Write File - Invalid Time Size Time\n", 1},
        {"DATASET", "0", "MT3D : Write_File - Invalid Version number in species file [1]\t\n", 1},
        {two.substr(0, 10), "0", "MT3D : Write_File - Invalid Type\n", 1},
        {two.substr(0, 26), "0", "MT3D : Write_File - Invalid status flag size", 1},
        {con_file({1}, 1), "0", "site001.con: 1 concentrations in a time step, the model has 2 cells", 1},
        {con_file({1, 2}, 1, 140), "0", "site001.con: byte 28: vectors where concentrations must be", 1},
        {con_file({1, 2}, 0), "0", "the file ends before any time step", 1}};
    for (const auto& [bytes, expected, printed, errors] : cases) {
        SCOPED_TRACE(printed);
        TransportRun run;
        run.folder.write(kFirst, bytes);
        EXPECT_EQ(run.read(), expected);
        EXPECT_THAT(run.printed, HasSubstr(printed));
        EXPECT_EQ(run.report.errors.size(), errors);
    }
}
