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
struct Conversion {
    Conversion(const std::string& title, const std::string& out, double time, bool transport) {
        std::filesystem::create_directory(folder.path() / out);
        ModelState& model = set_grid(factory, {1, 1, 1}, folder);
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

    TempFolder folder;
    ConverterFactory factory;
    std::vector<std::string> written, strays;
};

}  // namespace

TEST(ConverterOutput, ANameThatWouldBeCutOrLeadElsewhereIsRefused) {
    const std::string field = "_1_500.pff";
    const struct {
        std::string title, out;
        double time;
        std::size_t steps;
        std::string complaint;  // empty: all is written
    } cases[] = {
        {"a..b", "out", 1.5, 1, ""},
        {std::string(127 - 4 - field.size(), 't'), "out", 1.5, 1, ""},
        {std::string(128 - 4 - field.size(), 't'), "out", 1.5, 0, field},
        {std::string(120, 't'), "out", 1.5, 0, "t.tcf"},
        {"site", "out", 1e300, 0, "_000.pff"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.title + " at " + std::to_string(c.time));
        Conversion run(c.title, c.out, c.time, false);
        const auto& errors = run.factory.report.errors;
        ASSERT_EQ(errors.size(), c.complaint.empty() ? 0U : 1U);
        if (!c.complaint.empty()) {
            EXPECT_THAT(errors[0], testing::StartsWith("MODFLOW : Write_File - Cannot open c:"));
            EXPECT_THAT(errors[0], testing::HasSubstr(c.complaint + " for writing."));
        }
        EXPECT_EQ(std::count_if(run.written.begin(), run.written.end(),
                                [](const std::string& name) { return name.ends_with(".pff"); }),
                  static_cast<std::ptrdiff_t>(c.steps));
        EXPECT_THAT(run.strays, testing::IsEmpty());
    }
}

TEST(ConverterOutput, AFolderAndATitleThatMakeATokenTogetherDoNotLeadOutside) {
    if (kWindows) GTEST_SKIP() << "no file is called so";
    const Conversion run("x>y", "o$t", 1.5, true);
    EXPECT_THAT(run.strays, testing::IsEmpty());
    EXPECT_THAT(run.written, testing::IsEmpty());
    EXPECT_THAT(run.factory.report.errors, testing::Each(testing::HasSubstr("x>y.tcf for writing.")));
}
