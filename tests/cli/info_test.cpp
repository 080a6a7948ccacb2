#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_tool.h"
#include "cli/small_model.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class Info : public testing::Test {
protected:
    TempFolder folder_;
    std::string project_ = write_small_model(folder_);
};

TEST_F(Info, JsonTellsTheWholeModel) {
    const ToolRun run = run_tool({"info", project_, "--json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    const json model = json::parse(run.out);
    EXPECT_EQ(model["file"], "site.nam");
    EXPECT_EQ(model["kind"], "modflow2000");
    EXPECT_EQ(model["grid"], json::parse(R"({"layers":2,"rows":3,"columns":4,"width":400,"height":150})"));
    EXPECT_EQ(model["length_units"], "meters");
    EXPECT_EQ(model["time_units"], "days");
    EXPECT_EQ(model["active_cells"], 23);
    EXPECT_EQ(model["constant_head_cells"], 1);
    EXPECT_EQ(model["layers"][1],
              json::parse(R"({"layer":2,"active_cells":12,"constant_head_cells":0,"top_min":10,
        "top_max":10,"bottom_min":0,"bottom_max":0})"));
    EXPECT_EQ(model["stress_periods"], json::parse(R"([{"period":1,"length":30,"steps":2,"steady":false}])"));
    ASSERT_EQ(model["results"].size(), 2u);
    EXPECT_EQ(model["results"][0]["file"], "site.hds");
    EXPECT_EQ(model["results"][0]["kind"], "heads");
    const json flows = model["results"][1];
    EXPECT_EQ(flows["kind"], "flows");
    EXPECT_EQ(flows["steps"][1], json::parse(R"({"period":1,"step":2,"time":30})"));
    EXPECT_EQ(flows["terms"][4], json::parse(R"({"label":"WELLS","form":"list","records":2,"entries":4})"));
}

TEST_F(Info, TextShowsTheSameForPeople) {
    const ToolRun run = run_tool({"info", project_});
    EXPECT_EQ(run.code, 0);
    for (const char* text : {"site.nam: MODFLOW-2000/2005 model\n",
                             "2 layers, 3 rows, 4 columns; 23 active cells\n", "length meters, time days\n",
                             "site.hds: heads, label HEAD, 2 layers", "2 saved steps\n", "FLOW RIGHT FACE"}) {
        EXPECT_THAT(run.out, HasSubstr(text));
    }
}

TEST_F(Info, WritesNoFile) {
    const auto before = entry_count(folder_);
    run_tool({"info", project_});
    run_tool({"info", folder_.file("site.cbb"), "--json"});
    EXPECT_EQ(entry_count(folder_), before);
}

TEST_F(Info, ResultFileIsDescribedByItsContents) {
    const ToolRun run = run_tool({"info", folder_.write("heads.anything", small_model_heads()), "--json"});
    EXPECT_EQ(run.code, 0);
    const json heads = json::parse(run.out);
    EXPECT_EQ(heads["kind"], "heads");
    EXPECT_EQ(heads["layers"], 2);
    EXPECT_EQ(heads["columns"], 4);
    EXPECT_EQ(heads["real_bytes"], 4);
    EXPECT_EQ(heads["record_markers"], false);
    EXPECT_EQ(heads["steps"].size(), 2u);
    EXPECT_EQ(heads["problem"], "");
}

TEST_F(Info, ResultFileCutShortIsDescribedAndBlamed) {
    const std::string heads = small_model_heads();
    const ToolRun run =
        run_tool({"info", folder_.write("cut.hds", heads.substr(0, heads.size() - 7)), "--json"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("plxconvert: cut.hds: "));
    EXPECT_NE(json::parse(run.out)["problem"], "");
}

}  // namespace
}  // namespace plx::test
