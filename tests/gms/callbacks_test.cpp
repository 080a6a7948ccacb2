#include "gms/callbacks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> first_texts, second_texts;
std::vector<int> steps;

TEST(GmsCallbacks, NobodyRegisteredMeansSilence) {
    GMS_ReportError("lost %d", 1);
    GMS_ReportStatus("lost %d", 2);
    GMS_DoError("lost");
    GMS_StartProgress(0, 10);
    GMS_SetProgress(5);
    EXPECT_EQ(GMS_PromptValue("x"), 0.0);
}

TEST(GmsCallbacks, TextsGoToTheFunctionRegisteredLastCutToTheBuffer) {
    GMS_SetStatusFunc([](const char* text) { first_texts.emplace_back(text); });
    GMS_ReportStatus("Opening file");
    GMS_SetStatusFunc([](const char* text) { second_texts.emplace_back(text); });
    GMS_ReportStatus("%s %d\n", "step", 3);
    GMS_DoStatus("100%s");
    GMS_DoError("an error is no status");
    GMS_ReportStatus("%s", std::string(8191, 'a').c_str());
    GMS_ReportStatus("%s", std::string(10000, 'b').c_str());
    static std::vector<std::size_t> error_sizes;
    GMS_SetErrorFunc([](const char* text) { error_sizes.push_back(std::string(text).size()); });
    for (const std::size_t size : {8190U, 8191U, 8192U, 20000U})
        GMS_ReportError("%s", std::string(size, 'e').c_str());
    GMS_SetErrorFunc(nullptr);
    GMS_SetStatusFunc(nullptr);
    EXPECT_EQ(error_sizes, (std::vector<std::size_t>{8190, 8191, 8191, 8191}));
    EXPECT_EQ(first_texts, std::vector<std::string>{"Opening file"});
    EXPECT_EQ(second_texts, (std::vector<std::string>{"step 3\n", "100%s", std::string(8191, 'a'),
                                                      std::string(8191, 'b')}));
}

TEST(GmsCallbacks, PromptAndProgressPassTheirArgumentsOn) {
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
