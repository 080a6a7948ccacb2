#include "gms/callbacks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gms/small_project.h"

namespace {

TEST(GmsCallbacks, NobodyRegisteredMeansSilence) {
    GMS_ReportError("lost %d", 1);
    GMS_ReportStatus("lost %d", 2);
    GMS_StartProgress(0, 10);
    GMS_SetProgress(5);
    EXPECT_EQ(GMS_PromptValue("x"), 0.0);
}

TEST(GmsCallbacks, TextsGoToTheFunctionRegisteredLastCutToTheBuffer) {
    static plx::test::Lines first;
    GMS_SetStatusFunc([](const char* text) { first.emplace_back(text); });
    GMS_ReportStatus("Opening file");
    const plx::test::MessageLog log;
    GMS_ReportStatus("%s %d\n", "step", 3);
    GMS_DoStatus("100%s");
    GMS_DoError("an error is no status");
    plx::test::Lines expected{"S:step 3\n", "S:100%s", "E:an error is no status"};
    for (const std::size_t size : {8190U, 8191U, 8192U, 20000U}) {
        const std::string text(size, 'a'), cut = text.substr(0, 8191);
        GMS_ReportStatus("%s", text.c_str());
        GMS_ReportError("%s", text.c_str());
        expected.insert(expected.end(), {"S:" + cut, "E:" + cut});
    }
    EXPECT_EQ(plx::test::MessageLog::take(), expected);
    EXPECT_EQ(first, plx::test::Lines{"Opening file"});
}

TEST(GmsCallbacks, PromptAndProgressPassTheirArgumentsOn) {
    static std::vector<int> steps;
    GMS_SetPromptFunc([](const char* question) { return *question == 'S' ? 2.5 : 0; });
    GMS_SetStartProgressFunc([](int first, int last) { steps = {first, last}; });
    GMS_SetProgressFunc([](int value) { steps.push_back(value); });
    EXPECT_EQ(GMS_PromptValue("Set porosity for layer 1:"), 2.5);
    GMS_StartProgress(0, 7);
    GMS_SetProgress(4);
    EXPECT_EQ(steps, (std::vector<int>{0, 7, 4}));
    GMS_SetPromptFunc(nullptr);
    GMS_SetStartProgressFunc(nullptr);
    GMS_SetProgressFunc(nullptr);
}

}  // namespace
