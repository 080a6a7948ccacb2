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
    const json model = json_of({"info", project_});
    expect_values(model, R"({"/file": "site.nam", "/kind": "modflow2000", "/length_units": "meters",
        "/grid": {"layers": 2, "rows": 3, "columns": 4, "width": 400, "height": 150}, "/time_units": "days",
        "/active_cells": 23, "/constant_head_cells": 1, "/results/0/file": "site.hds",
        "/layers/1": {"layer": 2, "active_cells": 12, "constant_head_cells": 0, "top_min": 10, "top_max": 10,
                      "bottom_min": 0, "bottom_max": 0},
        "/stress_periods": [{"period": 1, "length": 30, "steps": 2, "steady": false}],
        "/results/0/kind": "heads", "/results/1/kind": "flows",
        "/results/1/steps/1": {"period": 1, "step": 2, "time": 30},
        "/results/1/terms/4": {"label": "WELLS", "form": "list", "records": 2, "entries": 4}})");
    EXPECT_EQ(model["results"].size(), 2u);
}

TEST_F(Info, TextShowsTheSameForPeople) {
    const ToolRun run = run_tool({"info", project_});
    EXPECT_EQ(run.code, 0);
    expect_texts(run.out, {"site.nam: MODFLOW-2000/2005 model\n", "length meters, time days\n",
                           "2 layers, 3 rows, 4 columns; 23 active cells\n", "2 saved steps\n",
                           "site.hds: heads, label HEAD, 2 layers", "FLOW RIGHT FACE"});
}

TEST_F(Info, WritesNoFile) {
    const auto before = entry_count(folder_);
    run_tool({"info", project_});
    run_tool({"info", folder_.file("site.cbb"), "--json"});
    EXPECT_EQ(entry_count(folder_), before);
}

TEST_F(Info, ResultFileIsDescribedByItsContentsAndBlamedWhenCutShort) {
    const std::string bytes = small_model_heads();
    const json heads = json_of({"info", folder_.write("heads.anything", bytes)});
    expect_values(heads, R"({"/kind": "heads", "/layers": 2, "/columns": 4, "/real_bytes": 4,
                             "/record_markers": false, "/problem": ""})");
    EXPECT_EQ(heads["steps"].size(), 2u);
    const std::string cut = folder_.write("cut.hds", bytes.substr(0, bytes.size() - 7));
    const ToolRun run = run_tool({"info", cut, "--json"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("plxconvert: cut.hds: "));
    EXPECT_NE(json::parse(run.out)["problem"], "");
}

}  // namespace
}  // namespace plx::test
