#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gms/dataset_messages.h"
#include "support/temp_folder.h"

namespace {

using plx::test::outcome;

const std::string kHead = "DATASET\nOBJTYPE tin\n";
const std::string kScalar = kHead + "BEGSCL\nOBJID 3\nND 2\nNC 2\nNAME \"the depth\"\n";
const std::string kNotReached = "E:GMStoPLX : read_ascii - End of Data values not reached\n";
const std::string kBadData = "E:GMStoPLX : read_ascii - Invalid Number of Data components\n";
const std::string kBadCells = "E:GMStoPLX : read_ascii - Invalid Number of Cell components\n";

struct Case {
    std::string text, prescribed, lenient;
};

void expect_outcomes(const std::vector<Case>& cases) {
    const plx::test::TempFolder folder;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const std::string path = folder.write("set.dat", c.text);
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, false), c.prescribed);
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, true),
                  c.lenient.empty() ? c.prescribed : c.lenient);
    }
}

TEST(AsciiDatasets, StepsAndTheirCells) {
    expect_outcomes({
        {kScalar + "TS 0 5.0\n1\n2\nENDDS\n", "ok [the depth id 3.01 | 5: 1 2; cells 11]", ""},
        {kScalar + "TS 1 5.0\n0\n7\n1 9 9\n2,5\nENDDS", "ok [the depth id 3.01 | 5: 1 2; cells 01]", ""},
        {kScalar + "TS 01 5.0\n1\nx\nENDDS\n", "ok [the depth id 3.01 | 5: 1 0; cells 11]", ""},
        {kScalar + "TS 1 5\n0\n1\n1\n2\nTS 0 6\n3\n4\nTS 0 5\n5\n6\nENDDS\n",
         "failed " + kNotReached + "[the depth id 3.01 | 5: 1 2; cells 01]",
         "ok [the depth id 3.01 | 5: 5 6; cells 01 | 6: 3 4; cells 01]"},
        {kScalar + "TS 7\n1\n2\nENDDS\n", "ok [the depth id 3.01 | 0: 1 2; cells 11]",
         "ok [the depth id 3.01 | 7: 1 2; cells 11]"},
        {kHead + "BEGVEC\nND 1\nTS 0 0\n1 2 3 4 5 6 7 8 9\nENDDS\nBEGSCL\nND 1\nTS 0 1\n8\nENDDS\n",
         "ok [ id 0.01 | 0: 1,2,3][ id 0.01 | 1: 8]", ""},
        {kHead + "BEGVEC\nND 1\nTS 0 0\n1 2\nENDDS\n", "failed " + kBadData + "[ id 0.01 | 0:]",
         "ok [ id 0.01 | 0: 1,2,0]"},
    });
}

TEST(AsciiDatasets, HeadersAndStrayLines) {
    expect_outcomes({
        {"", "failed E:GMStoPLX : read_ascii - Missing -DATASET- in data file \n", ""},
        {"SCALAR\nND 1\n", "failed E:GMStoPLX : read_ascii - Missing -DATASET- in data file SCALAR\n", ""},
        {"DATASET\nND 1\n", "failed E:GMStoPLX : read_ascii - Missing -OBJTYPE- in data file\n", ""},
        {kHead, "ok ", ""},
        {kHead + "REFTIME 2.5\nBEGSCL\nACTTS\nOBJID 4\n", "ok [ id 4.01]", ""},
        {kHead + "RT_JULIAN 9\nBEGSCL\nND 2\nTS 0 1\n3\n4\nENDDS\n", "ok [ id 0.01 | 1:]",
         "ok [ id 0.01 | 1: 3 4]"},
        {kScalar + "TS 0 5\n1\nENDDS\n", "failed " + kNotReached + "[the depth id 3.01 | 5: 1 0; cells 11]",
         "failed " + kBadData + "[the depth id 3.01 | 5: 1; cells 11]"},
        {kScalar + "TS 0 5\n1\n,,\nENDDS\n", "failed " + kBadData + "[the depth id 3.01 | 5: 1; cells 11]",
         ""},
        {kScalar + "TS 1 5\n1\n", "failed " + kBadCells + "[the depth id 3.01 | 5:; cells 1]", ""},
        {kHead + "BEGSCL\nND -4\nNC -2\nTS 1 0\nENDDS\n", "ok [ id 0.01 | 0:]", ""},
        {kHead + "BEGSCL\nND 2000000000\nNC 1e30\nTS 1 0\n1\n",
         "failed " + kBadCells + "[ id 0.01 | 0:; cells 1]", ""},
    });
}

TEST(AsciiDatasets, CutAnywhereItEndsWithAMessageOrInSuccess) {
    const std::string whole = kHead + "REFTIME 1\nBEGVEC\nND 2\nNC 1\nTS 1 5\n1\n1 2 3\n4 5 6\nENDDS\n";
    const plx::test::TempFolder folder;
    for (std::size_t n = 0; n < whole.size(); ++n) {
        const std::string path = folder.write("cut.dat", whole.substr(0, n));
        for (const bool lenient : {false, true}) {
            SCOPED_TRACE(n);
            const std::string result = outcome(plx::read_ascii_datasets, path, lenient);
            EXPECT_EQ(result.find("failed ") == 0,
                      result.find("E:GMStoPLX : read_ascii - ") != std::string::npos);
        }
    }
}

TEST(AsciiDatasets, LongNameKeepsItsFirst1023Bytes) {
    const plx::test::TempFolder folder;
    plx::DataSetList list;
    ASSERT_TRUE(plx::read_ascii_datasets(
        folder.write("long.dat", kHead + "BEGSCL\nNAME " + std::string(5000, 'n') + "\n").c_str(), list,
        false));
    EXPECT_EQ(list.at(0)->name, std::string(1023, 'n'));
}

}  // namespace
