#include "converters/gms_concentrations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "converters/small_grid.h"
#include "converters/transport.h"
#include "support/capture_stdout.h"
#include "support/gms_bytes.h"
#include "support/result_files.h"

using namespace plx;
using namespace plx::test;
using testing::HasSubstr;

namespace {

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

/// The transport results of a model of two cells, found and read: "1: 1 2 5 6; " for every time.
struct GmsRun {
    explicit GmsRun(bool modflow_rules = false) {
        if (modflow_rules) factory.reading_rules = ReadingRules::modflow();
        std::filesystem::create_directory(folder.path() / "site_MT3DMS");
    }
    std::string read() {
        ModelState& model = set_grid(factory, {1, 1, 2}, folder);
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

    TempFolder folder;
    ConverterFactory factory;
    std::string printed;
};

}  // namespace

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
        GmsRun run(modflow_rules);
        run.folder.write(first, con);
        run.folder.write(second, std::string(second).ends_with(".con") ? con : layers.bytes());
        run.folder.write("site.mts", "SPC Tin\nSPC TCE\n");
        EXPECT_EQ(run.read(), expected);
        EXPECT_EQ(run.factory.species_names.GetSize(), modflow_rules ? 2 : 0);
        EXPECT_EQ(run.factory.report.rules_used.result_files_by_content, modflow_rules);
        EXPECT_TRUE(run.factory.report.errors.empty());
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
        GmsRun run;
        run.folder.write(kFirst, bytes);
        EXPECT_EQ(run.read(), expected);
        EXPECT_THAT(run.printed, HasSubstr(printed));
        EXPECT_EQ(run.factory.report.errors.size(), errors);
    }
}
