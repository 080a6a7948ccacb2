#include "cli/run_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace plx::test {

ToolRun run_tool(const Words& arguments, const std::string& input) {
    return run_program(PLXCONVERT, arguments, input);
}

void expect_refused(const ToolRun& run, int code, const std::string& complaint) {
    EXPECT_EQ(run.code, code);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, testing::AllOf(testing::StartsWith("plxconvert: "), testing::HasSubstr(complaint)));
}

nlohmann::json json_of(Words arguments) {
    arguments.push_back("--json");
    const ToolRun run = run_tool(arguments);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    return nlohmann::json::parse(run.out);
}

void expect_values(const nlohmann::json& found, const std::string& expected) {
    const auto values = nlohmann::json::parse(expected);
    for (const auto& [pointer, value] : values.items())
        EXPECT_EQ(found.at(nlohmann::json::json_pointer(pointer)), value) << pointer;
}

void expect_texts(const std::string& shown, const Words& texts) {
    for (const std::string& text : texts) EXPECT_THAT(shown, testing::HasSubstr(text));
}

}  // namespace plx::test
