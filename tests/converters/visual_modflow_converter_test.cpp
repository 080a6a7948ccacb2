#include <gtest/gtest.h>

#include <filesystem>

#include "converters/model_state.h"
#include "plxutils/converters/Converter.h"
#include "plxutils/converters/Visual_MODFLOW_Converter.h"
#include "support/capture_stdout.h"
#include "support/result_files.h"
#include "support/temp_folder.h"

namespace plx {
namespace {

/// Heads of two stress periods of two steps, 1 row, 2 columns: 100 * period + 10 * step + layer.
std::string head_file(int layers, bool gaps) {
    std::string bytes;
    for (const auto& [period, step] : {std::pair{1, 1}, {1, 2}, {2, 1}, {2, 2}}) {
        for (int k = 1; k <= layers; ++k) {
            test::ResultWriter record;
            const double head = 100.0 * period + 10.0 * step + k;
            record.layer({step, period, 5.0 * step, layers, 1, 2}, k, {head, head + 0.5});
            bytes += gaps && k > 1 ? std::string(29, '\x07') + record.bytes().substr(44) : record.bytes();
        }
    }
    return bytes;
}

struct Project {
    test::TempFolder folder;
    Visual_MODFLOW_Converter converter;
    ModelState& model = plx_model_state(converter);

    explicit Project(const ReadingRules& rules, int layers = 1) {
        folder.write("site.vmf", "<Project>\n<Units>\nLength=ft\nTime=hr\n</Units>\n</Project>\n");
        std::string status = "STATUS\n", elevations = "ELEVATIONS\n0 0\n";
        for (int k = 1; k <= layers; ++k) {
            status += "1 1\n";
            elevations += std::to_string(-k) + " " + std::to_string(-k) + "\n";
        }
        folder.write("site.vmg", "COLUMNS\n5 6 7\nROWS\n0 1\n" + status + elevations);
        converter.reading_rules = rules;
    }
    std::string convert(const std::string& name = "site.vmf") {
        VXFile file(folder.file(name).c_str());
        int outputs[Converter::kOutputs] = {0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1};
        return test::capture_stdout([&] {
            Converter().create_converter(converter, file, 0, nullptr, false, outputs, false, 0, 0, 0, 0);
        });
    }
    std::vector<float> heads(int period, int step) {
        model.current = {period, step, 0.0};
        test::capture_stdout([this] { converter.parseHED_data(); });
        return model.heads.values;
    }
};

}  // namespace

TEST(VisualModflow, HeadsAreThoseOfTheFile) {
    const struct {
        const char* what;
        ReadingRules rules;
        int layers;
        bool gaps;
    } cases[] = {{"plain rules, one layer", ReadingRules::prescribed(), 1, false},
                 {"one layer", ReadingRules::modflow(), 1, false},
                 {"headers", ReadingRules::modflow(), 3, false},
                 {"gaps", ReadingRules::modflow(), 3, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Project project(c.rules, c.layers);
        project.folder.write("site.hds", head_file(c.layers, c.gaps));
        project.convert();
        EXPECT_EQ(project.converter.report.errors, std::vector<std::string>{});
        EXPECT_EQ(project.model.times, (StepTimes{{{0, 0}, 5}, {{0, 1}, 10}, {{1, 0}, 5}, {{1, 1}, 10}}));
        EXPECT_EQ(project.converter.total_steps, 4);
        EXPECT_EQ(project.model.periods.periods[1].length, 10.0);
        std::vector<float> expected;
        for (int k = 1; k <= c.layers; ++k) {
            for (const float east : {0.0F, 0.5F}) expected.push_back(220.0F + static_cast<float>(k) + east);
        }
        EXPECT_EQ(project.heads(1, 1), expected);
        EXPECT_EQ(project.converter.report.rules_used.head_records_only, c.layers > 1);
    }
}

TEST(VisualModflow, PlainScanAssumesGapsBetweenLayers) {
    Project gaps(ReadingRules::prescribed(), 3), headers(ReadingRules::prescribed(), 3);
    gaps.folder.write("site.hds", head_file(3, true));
    headers.folder.write("site.hds", head_file(3, false));
    gaps.convert();
    EXPECT_EQ(gaps.model.heads.positions.size(), 4U);
    EXPECT_EQ((gaps.model.heads.positions[{0, 1}]), std::vector<std::int64_t>{44 + 3 * 8 + 2 * 29});
    const std::string printed = headers.convert();
    EXPECT_NE(printed.find("Index out of bounds!"), std::string::npos);
    ASSERT_EQ(headers.converter.report.errors.size(), 1U);
    EXPECT_EQ(
        headers.converter.report.errors[0],
        "site.hds: byte 126: no step begins here, where a gap of 29 bytes between the layers would have it");
}

TEST(VisualModflow, GridUnitsAndSpecies) {
    Project project(ReadingRules::modflow());
    test::ResultWriter species;
    species.layer({1, 1, 3.0, 1, 1, 2}, 1, {1.0, 2.0}, "CONCENTRATION", 1);
    project.folder.write("site.002.ucn", species.bytes());
    const std::string printed = project.convert();
    EXPECT_STREQ(project.converter.length_units.c_str(), "ft");
    EXPECT_STREQ(project.converter.time_units.c_str(), "h");
    EXPECT_EQ(project.model.geometry.column_edges, (std::vector<double>{5, 6, 7}));
    EXPECT_STREQ(project.converter.species_names[1].c_str(), "Species_2");
    EXPECT_EQ(project.converter.report.transport_times, 1);
    EXPECT_NE(printed.find("site.flo file not found\n"), std::string::npos);
}

TEST(VisualModflow, FlowsTellTheStepsWhereThereAreNoHeads) {
    const struct {
        bool compact;
        int period;
        std::vector<std::string> warnings, errors;
        std::vector<double> lengths;
    } cases[] = {{true, 3, {}, {}, {2.5, 0.0, 7.5}},
                 {false, 3, {"no file tells the times of the steps: all are at 0"}, {}, {0.0, 0.0, 0.0}},
                 {true,
                  100'001,
                  {},
                  {"site.flo: byte 60: stress period 100001, time step 2: there is no such step"},
                  {2.5}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.period);
        Project project(ReadingRules::modflow());
        test::ResultWriter flows({.compact = c.compact});
        flows.array({1, 1, 2.5, 1, 1, 2}, "STORAGE", {1.0, 2.0});
        flows.array({2, c.period, 7.5, 1, 1, 2}, "STORAGE", {1.0, 2.0});
        project.folder.write("site.flo", flows.bytes());
        project.convert();
        std::vector<double> lengths;
        for (const StressPeriod& period : project.model.periods.periods) lengths.push_back(period.length);
        EXPECT_EQ(lengths, c.lengths);
        std::vector<std::string>& warnings = project.converter.report.warnings;
        ASSERT_FALSE(warnings.empty());
        EXPECT_EQ(warnings.back(), "no head file: heads are left out");
        warnings.pop_back();
        EXPECT_EQ(warnings, c.warnings);
        EXPECT_EQ(project.converter.report.errors, c.errors);
    }
}

TEST(VisualModflow, SaysWhatIsMissing) {
    const struct {
        const char *project, *grid, *message;
    } cases[] = {
        {"site.nam", "", "] detected for standard MODFLOW, please select a *.nam file\n"},
        {"site.vmf", "COLUMNS\n1 0\n", "Error reading column coordinates! \n1 0\n"},
        {"site.vmf", "COLUMNS\n0 1\nROWS\n1 1\n", "Error reading row coordinates! \n1 1\n"},
        {"site.vmf", "ACTIVE\n1\n1 none\n", "Error reading cell status on line 3!\n1 none\n"},
        {"site.vmf", "COLUMNS\n0 1\nROWS\n0 1\nELEVATIONS\n0 x\n", "Error reading cell elevation! \n0 x\n"},
        {"site.vmf", nullptr, "VMG file not detected.\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        Project project(ReadingRules::prescribed());
        project.folder.write("site.nam", "");
        if (c.grid != nullptr) {
            project.folder.write("site.vmg", c.grid);
        } else {
            std::filesystem::remove(project.folder.file("site.vmg"));
        }
        const std::string printed = project.convert(c.project);
        EXPECT_NE(printed.find(c.message), std::string::npos) << printed;
        EXPECT_EQ(project.converter.report.errors.size(), 1U);
    }
}

}  // namespace plx
