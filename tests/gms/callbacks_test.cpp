#include "gms/callbacks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> first_texts, second_texts;
std::vector<int> steps;

void collect_first(const char* text) { first_texts.emplace_back(text); }
void collect_second(const char* text) { second_texts.emplace_back(text); }
double answer(const char*) { return 2.5; }
void start(int first, int last) { steps = {first, last}; }
void move(int value) { steps.push_back(value); }

class GmsCallbacks : public testing::Test {
protected:
    GmsCallbacks() { reset(); }
    ~GmsCallbacks() override { reset(); }
    static void reset() {
        GMS_SetPromptFunc(nullptr);
        GMS_SetErrorFunc(nullptr);
        GMS_SetStatusFunc(nullptr);
        GMS_SetStartProgressFunc(nullptr);
        GMS_SetProgressFunc(nullptr);
        first_texts.clear();
        second_texts.clear();
        steps.clear();
    }
};

}  // namespace

TEST_F(GmsCallbacks, NobodyRegisteredMeansSilence) {
    GMS_ReportError("lost %d", 1);
    GMS_ReportStatus("lost %d", 2);
    GMS_DoError("lost");
    GMS_DoStatus("lost");
    GMS_StartProgress(0, 10);
    GMS_SetProgress(5);
    EXPECT_EQ(GMS_PromptValue("x"), 0.0);
}

TEST_F(GmsCallbacks, TextsGoToTheFunctionRegisteredLast) {
    GMS_SetStatusFunc(collect_first);
    GMS_ReportStatus("Opening file");
    GMS_SetStatusFunc(collect_second);
    GMS_ReportStatus("%s %d\n", "step", 3);
    GMS_DoStatus("100%s");
    GMS_DoError("an error is no status");
    EXPECT_EQ(first_texts, std::vector<std::string>{"Opening file"});
    EXPECT_EQ(second_texts, (std::vector<std::string>{"step 3\n", "100%s"}));
}

TEST_F(GmsCallbacks, LongTextsAreCutToTheBuffer) {
    GMS_SetErrorFunc(collect_first);
    GMS_ReportError("%s", std::string(8191, 'a').c_str());
    GMS_ReportError("%s", std::string(10000, 'b').c_str());
    ASSERT_EQ(first_texts.size(), 2U);
    EXPECT_EQ(first_texts[0], std::string(8191, 'a'));
    EXPECT_EQ(first_texts[1], std::string(8191, 'b'));
}

TEST_F(GmsCallbacks, PromptAndProgressPassTheirArgumentsOn) {
    GMS_SetPromptFunc(answer);
    GMS_SetStartProgressFunc(start);
    GMS_SetProgressFunc(move);
    EXPECT_EQ(GMS_PromptValue("Set porosity for layer 1:"), 2.5);
    GMS_StartProgress(0, 7);
    GMS_SetProgress(4);
    EXPECT_EQ(steps, (std::vector<int>{0, 7, 4}));
}
