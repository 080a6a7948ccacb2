#include "plxutils/converters/Results.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plxutils/gms/GMSCallbacks.h"

namespace {

using Lines = std::vector<std::string>;

class ResultsTest : public testing::Test {
protected:
    ResultsTest() {
        reports.clear();
        GMS_SetErrorFunc([](const char* text) { reports.emplace_back(text); });
    }
    ~ResultsTest() override { GMS_SetErrorFunc(nullptr); }

    static inline Lines reports;
};

}  // namespace

TEST_F(ResultsTest, FaultsAreReportedWithTheirOwnText) {
    Results empty, results;
    results.set_nnodes(2);
    results.set_size(0, 1);
    int id = 5;
    double value = 5.0;
    empty.set_results(0, 0, 1, 1.0);
    empty.result(0, 0, id, value);
    EXPECT_EQ(id, 0);
    EXPECT_EQ(value, 0.0);
    empty.result_size(0);
    results.set_size(2, 1);
    results.set_size(0, -1);
    results.set_results(-1, 0, 1, 1.0);
    results.set_results(0, 2, 1, 1.0);
    results.result(2, 0, id, value);
    results.result(0, -1, id, value);
    EXPECT_EQ(reports, (Lines{"Set_Results : Data sizes must be set before values.",
                              "Result : Data must be set before results can be expected.",
                              "Result_Size : [0] node is outside of created boundaries [0,0]\n",
                              "Set_Size : [2] node is outside of created boundaries [0,2]\n",
                              "Set_Size : cannot create a negative number of results\n",
                              "Set_Results : node [-1] is outside of created boundaries [0,2]\n",
                              "Set_Results : index [2] is outside of created boundaries [0,1]\n",
                              "Result : node [2] is outside of created boundaries [0,2]\n",
                              "Result : index [-1] is outside of created boundaries [0,1]\n"}));
}

TEST_F(ResultsTest, IndexAtTheSizeIsAcceptedAndCopiesKeepTheFirstHalfOfTheValues) {
    Results results, assigned;
    results.set_nnodes(3);
    results.set_size(1, 4);
    for (int i = 0; i <= 4; ++i) results.set_results(1, i, 10 + i, 1.0 + i);
    Results copied(results);
    assigned = results;
    for (int i = 0; i <= 4; ++i) {
        int id = 0;
        double value = 0.0;
        copied.result(1, i, id, value);
        EXPECT_EQ(id, 10 + i);
        EXPECT_EQ(value, i < 2 ? 1.0 + i : 0.0);
        assigned.result(1, i, id, value);
        EXPECT_EQ(id, 10 + i);
        EXPECT_EQ(value, 1.0 + i);
    }
    EXPECT_EQ(copied.result_size(1), 4);
    EXPECT_EQ(copied.total_nodes(), 3);
    EXPECT_EQ(reports, Lines{});
}
