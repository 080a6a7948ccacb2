#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "converters/model_writer.h"
#include "converters/small_grid.h"
#include "converters/transport.h"
#include "support/capture_stdout.h"
#include "support/host_system.h"
#include "support/result_files.h"

using namespace plx;
using namespace plx::test;

namespace {

/// A model of one cell with heads at a time and a concentration, converted into a folder.
struct Conversion : GridModel {
    Conversion(const std::string& title, const std::string& out, double time, bool transport)
        : GridModel({1, 1, 1}) {
        std::filesystem::create_directory(folder.path() / out);
        factory.project_file = VXFile(folder.write(title + ".nam", "").c_str());
        factory.output_folder = folder.file(out).c_str();
        factory.out_mt3d = transport;
        model.times[{0, 0}] = time;
        ResultWriter writer;
        writer.layer({.time = 1.5}, 1, {1}, "CONCENTRATION", 1);
        folder.write(title + "001.ucn", writer.bytes());
        capture_stdout([&] {
            if (transport) find_concentrations(model);
            ModelWriter(model).write();
        });
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path() / out))
            if (entry.is_regular_file()) written.push_back(entry.path().filename().string());
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            const std::string name = entry.path().filename().string();
            if (name != out && !name.starts_with(title) && name != "site.nam") strays.push_back(name);
        }
    }
    std::vector<std::string> written, strays;
};

}  // namespace

TEST(ConverterOutput, ANameThatWouldBeCutOrLeadElsewhereIsRefused) {
    const std::string field = "_1_500.pff";
    const struct {
        std::string title, complaint;  // the latter empty: all is written
        double time = 1.5;
    } cases[] = {
        {"a..b", ""},
        {std::string(127 - 4 - field.size(), 't'), ""},
        {std::string(128 - 4 - field.size(), 't'), field},
        {std::string(120, 't'), "t.tcf"},
        {"site", "_000.pff", 1e300},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.title + " at " + std::to_string(c.time));
        const Conversion run(c.title, "out", c.time, false);
        const bool all = c.complaint.empty();
        EXPECT_EQ(run.report.errors.size(), all ? 0U : 1U);
        for (const std::string& error : run.report.errors) {
            EXPECT_THAT(error, testing::StartsWith("MODFLOW : Write_File - Cannot open c:"));
            EXPECT_THAT(error, testing::HasSubstr(c.complaint + " for writing."));
        }
        EXPECT_EQ(std::count_if(run.written.begin(), run.written.end(),
                                [](const std::string& name) { return name.ends_with(".pff"); }),
                  all ? 1 : 0);
        EXPECT_THAT(run.strays, testing::IsEmpty());
    }
}

TEST(ConverterOutput, AFolderAndATitleThatMakeATokenTogetherDoNotLeadOutside) {
    if (kWindows) GTEST_SKIP() << "no file is called so";
    const Conversion run("x>y", "o$t", 1.5, true);
    EXPECT_THAT(run.strays, testing::IsEmpty());
    EXPECT_THAT(run.written, testing::IsEmpty());
    EXPECT_THAT(run.report.errors, testing::Each(testing::HasSubstr("x>y.tcf for writing.")));
}
