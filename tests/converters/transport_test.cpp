#include "converters/transport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "converters/node_mesh.h"
#include "converters/output_paths.h"
#include "converters/small_grid.h"
#include "support/capture_stdout.h"
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

/// A model of two cells beside each other and what became of its transport results.
struct Conversion {
    void convert(bool modflow_rules = false) {
        if (modflow_rules) factory.reading_rules = ReadingRules::modflow();
        ModelState& model = set_grid(factory, {1, 1, 2}, folder);
        NodeMesh mesh(model.size(), model.geometry, model.flags, true);
        mesh.build_weights();
        printed = capture_stdout([&] {
            find_concentrations(model);
            write_transport_results(model, mesh, OutputPaths(factory));
        });
    }

    TempFolder folder;
    ConverterFactory factory;
    plx::ConversionReport& report = factory.report;
    std::string printed;
};

}  // namespace

TEST(Transport, NamesOfASpeciesFollowTheStyle) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(species_file_names("a.b", 7, 0), Names{"a.b7.ucn"});
    EXPECT_EQ(species_file_names("a.b", 50, 1), Names{"a.b.050.ucn"});
    EXPECT_EQ(species_file_names("a.b", 123, 2), (Names{"a.b123.ucn", "a.b.123.ucn"}));
}

TEST(Transport, FieldFileHoldsNodeAndCellValuesOfEverySpecies) {
    Conversion run;
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
    EXPECT_EQ(run.folder.read("MT3D/mt3d_site_12_500000.pff"),
              "# GMStoPLX generated MT3D concentration field file\r\nDEFINITION "
              "Mesh+Node_Data+Cell_Data\r\nNSPACE 3\r\n"
              "NNODES 12\r\nNUM_NODE_DATA 2\r\nNUM_CELL_DATA 2\r\nNCELL_SETS 1\r\n"
              "NODES FILE \"..\\GENERAL\\node_coordinates.xyz\" ROW 2 X 1 Y 2 Z 3\r\n"
              "NODE_DATA_DEF 0 \"species_0\" \"Linear_\" IN_FILE \r\nNODE_DATA_DEF 1 \"TCE\" \"Linear_\" "
              "IN_FILE \r\n"
              "CELL_SET_DEF 0 2 Hex \"Layer_0\" FILE \"..\\GENERAL\\connectivity.conn\" ROW 2\r\n"
              "CELL_DATA_DEF 0 \"species_0\" \"Linear_\" IN_FILE \r\nCELL_DATA_DEF 1 \"TCE\" \"Linear_\" "
              "IN_FILE \r\n"
              "NODE_DATA_START\r\n" +
                  nodes + nodes + nodes + nodes +
                  "CELL_DATA_START\r\n1.000000 10.000000 \r\n3.000000 20.000000 \r\n");
    EXPECT_EQ(run.folder.read("MT3D/mt3d_site.tcf"),
              "2001-01-01 12:30:00, mt3d_site_12_500000.pff, -1\r\n2001-01-02 01:00:00, "
              "mt3d_site_25_000000.pff, -1\r\n");
    EXPECT_THAT(run.printed, HasSubstr("site002.ucn for input\n"));
    EXPECT_TRUE(run.report.errors.empty());
}

TEST(Transport, FileThatEndsEarlyEndsTheResults) {
    // The part of the second time's record that is cut, and how long the second species' file is then.
    const std::string parts[] = {
        "Transport Step", "Timestep Index", "Time Period Index",   "Time", "Text", "NCOL",
        "NROWx",          "ILAY",           "concentration value", ""};
    const std::size_t lengths[] = {55, 59, 63, 67, 83, 87, 91, 95, 103, 52};
    for (const std::string& part : parts) {
        SCOPED_TRACE(part);
        const std::size_t length = lengths[&part - parts];
        Conversion run;
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
        Conversion run;
        run.folder.write(name, bytes);
        run.convert(modflow_rules);
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
        Conversion run;
        run.folder.write("site001.ucn", two_times({value, 3}));
        run.convert(modflow_rules);
        EXPECT_THAT(run.folder.read("MT3D/mt3d_site_12_500000.pff"), HasSubstr(expected));
    }
}
