// Damaged models: every fault is told with its place, nothing crashes, and what was written stays whole.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>

#include "conversion/small_model.h"

namespace {

class DamagedModel : public testing::Test, protected plx::test::SmallModel {};

void expect_error(const plx::ConversionReport& report, const std::string& text) {
    std::string all;
    for (const std::string& error : report.errors) all += error + "\n";
    EXPECT_NE(all.find(text), std::string::npos) << text << "\n" << all;
}

}  // namespace

TEST_F(DamagedModel, FaultsOfTextInputsNameFileAndPlace) {
    const std::string cases[][4] = {
        {"small.dis", "2 3 4 2 4 2", "2 -3 4 2 4 2", "small.dis: line 2"},
        {"small.dis", "2 3 4 2 4 2", "2 2147483647 2147483647 2 4 2", "small.dis: line 2"},
        {"small.dis", "2 3 4 2 4 2", "2 6000 6000 2 4 2",
         "72000000 cells, which the model's files are too small for"},
        {"small.dis", "2 3 4 2 4 2", "2 3 4 2000000000 4 2", "small.dis: line"},
        {"small.dis", "CONSTANT 0.0             bottom of layer 2\n30.0 1 1.0 SS\n60.0 2 1.5 TR\n",
         "INTERNAL 1 (FREE) 1\n1 2 3", "small.dis: line"},
        {"small.ba6", "EXTERNAL 14", "EXTERNAL 77", "small.ba6: line 13: no open file at unit 77"},
        {"small.ba6", "CONSTANT 15.0 ", "OPEN/CLOSE missing.dat ", "missing.dat"},
        {"small.nam", "BAS6 12 small.ba6", "BAS6 12 elsewhere.ba6", "small.nam: line 4: elsewhere.ba6"},
        {"small.nam", "DIS  11 small.dis", "DIS  11 small.nam",
         "small.nam: line 3: the name file names itself"},
        {"small.nam", "BAS6 12", "BAS5 12", "no basic package"},
        {"small.nam", "DIS  11", "DIS  2000000000", "unit 2000000000"},
    };
    for (const auto& [file, from, to, expected] : cases) {
        const std::string whole = folder.read(file);
        ASSERT_NE(whole.find(from), std::string::npos) << from;
        replace(file, from, to);
        expect_error(convert(), expected);
        folder.write(file, whole);
    }
    EXPECT_TRUE(convert().errors.empty());
}

TEST_F(DamagedModel, ResultFilesMayBeCutAtAnyByte) {
    for (const std::string name : {"small.hds", "small.cbb"}) {
        const std::string whole = folder.read(name);
        for (std::size_t bytes = 1; bytes < whole.size(); bytes += 61) {
            SCOPED_TRACE(name + " cut at byte " + std::to_string(bytes));
            folder.write(name, whole.substr(0, bytes));
            for (const auto& rules : {plx::ReadingRules::modflow(), plx::ReadingRules::prescribed()}) {
                std::filesystem::remove_all(out.path() / "GENERAL");
                EXPECT_LE(convert(rules).steps, 3);
                // Companion files come last: they are there whatever the results are like.
                EXPECT_NE(out.read("GENERAL/connectivity.conn"), "");
            }
        }
        folder.write(name, whole.substr(0, whole.size() - 3));
        expect_error(convert(), name + ": byte ");
        folder.write(name, whole);
    }
}

TEST_F(DamagedModel, ResultsOfAnotherKindAreRefused) {
    const std::tuple<const char*, std::size_t, char, const char*> cases[] = {
        // NCOL of the first head record, ITYPE of the first budget record.
        {"small.hds", 32, 5, "small.hds: byte 0: a layer of 3 rows and 5 columns, the model has 3 and 4"},
        {"small.cbb", 36, 9, "9 is not known"}};
    for (const auto& [name, at, byte, expected] : cases) {
        const std::string whole = folder.read(name);
        std::string bytes = whole;
        bytes[at] = byte;
        folder.write(name, bytes);
        const plx::ConversionReport report = convert();
        expect_error(report, expected);
        EXPECT_EQ(report.steps, 3) << name;
        folder.write(name, whole);
    }
}

TEST_F(DamagedModel, MarkedResultsAreRefusedByThePlainRules) {
    const std::string marker("\x2c\0\0\0", 4), heads = folder.read("small.hds");
    folder.write("small.hds", marker + heads.substr(0, 44) + marker + heads.substr(44));
    expect_error(convert(plx::ReadingRules::prescribed()), "small.hds: byte 0");
}
