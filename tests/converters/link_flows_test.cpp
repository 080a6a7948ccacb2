#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "converters/small_grid.h"
#include "support/capture_stdout.h"
#include "support/link_file.h"

using namespace plx;
using namespace plx::test;
using testing::HasSubstr;

namespace {

std::string two_steps(const ResultStyle& style) {
    LinkWriter link(style, true);
    for (const int step : {1, 2}) {
        const ResultStamp at{.step = step, .period = 2, .layers = 2, .rows = 1, .columns = 2};
        link.array(at, "THKSAT", {-111, -111, -111, 1e30});
        link.array(at, "QXX", {1.0 * step, 2, 3, 4});
        link.list(at, "MNW", {{1, 1, 1}, {1, 1, 2}}, 4.0,
                  style.real_bytes == 8 ? "group, more." : "group, m");
        link.list(at, "STR", {{1, 1, 1}}, 4.0);
        link.list(at, "RES", {{1, 1, 1}}, 4.0);
        link.list(at, "WEL", {{2, 1, 1}, {3, 1, 1}}, -1.0 * step);
        link.array(at, "RCH", {0.25, 0.75}, {1, 2});
    }
    return link.bytes;
}

/// A factory whose flow unit holds the bytes, scanned.
struct Scan : GridModel {
    Scan(const std::string& bytes, bool modflow_rules) : GridModel({2, 1, 2}, modflow_rules) {
        factory.ccf_unit = 40;
        model.streams.open_unit(40, VXFile(folder.write("site.cbb", bytes).c_str()).GetFilePath().c_str());
        printed = capture_stdout([this] { factory.parseMT3D_CCF_datapos(); });
    }
    /// Flows of a step of the second period: of each cell through its right face, then of wells and recharge.
    std::string load(int step) {
        model.current = {.period = 1, .step = step};
        capture_stdout([this] { factory.parseMT3D_CCF_data(); });
        std::ostringstream text;
        for (std::size_t i = 0; i < model.size().cells(); ++i) text << model.flows.faces[0][i] << ' ';
        for (const TermCells& term : {model.flows.terms[kWells], model.flows.terms[kRecharge]}) {
            for (std::size_t i = 0; i < term.cells.size(); ++i)
                text << term.cells[i] << ':' << term.flows[i] << ' ';
        }
        return text.str();
    }
};

}  // namespace

TEST(LinkFlows, StepIsLoadedLikeABudgetFile) {
    for (const ResultStyle& style : {ResultStyle{}, {true, 4}, {false, 8}, {true, 8}}) {
        SCOPED_TRACE(testing::Message() << style.record_markers << style.real_bytes);
        Scan scan(two_steps(style), true);
        EXPECT_THAT(scan.printed, HasSubstr("Stream data not supported... Skipping.\n"
                                            "Reservoir data not supported... Skipping.\n"));
        EXPECT_TRUE(scan.report.errors.empty());
        EXPECT_TRUE(scan.factory.has_wells && scan.factory.has_recharge && !scan.factory.has_storage);
        EXPECT_EQ(scan.model.flows.times,
                  (std::map<std::pair<int, int>, double>{{{1, 0}, -1.0}, {{1, 1}, -1.0}}));
        EXPECT_EQ(scan.model.transport.naming_style, 1);
        EXPECT_EQ(scan.load(1), "2 2 3 4 2:-2 0:0.25 3:0.75 ");
        EXPECT_EQ(scan.load(5), "0 0 0 0 ");
    }
}

TEST(LinkFlows, FilesThatCannotBeReadAreTold) {
    LinkWriter other, odd;
    other.array({.layers = 2, .rows = 2, .columns = 1}, "QXX", {1, 2, 3, 4});
    odd.array({.layers = 2, .rows = 1, .columns = 2}, "ODD", {1, 2, 3});
    const std::tuple<std::string, bool, const char*> cases[] = {
        {" 'MT3D3.00.99' 0 0 0", true, "site.cbb: line 1: the file is a link file written as text"},
        {"MT3D5.00.00 and more", true, "site.cbb: byte 0: no flow-transport link file begins here"},
        {two_steps({true, 4}), false,
         "site.cbb: byte 0: the file has 64-bit reals or Fortran record markers"},
        {other.bytes, true,
         "site.cbb: byte 95: flows of 2 layers, 2 rows and 1 columns, the model has 2, 1 and 2"},
        {odd.bytes, true, "site.cbb: byte 95: the size of a record \"ODD\" is not known"},
        {two_steps({}).substr(0, 150), true, "site.cbb: byte 99: the record is cut short or damaged"}};
    for (const auto& [bytes, modflow_rules, error] : cases) {
        Scan scan(bytes, modflow_rules);
        EXPECT_THAT(scan.report.errors, testing::ElementsAre(HasSubstr(error)));
        EXPECT_EQ(scan.load(0), "0 0 0 0 ");
    }
}
