// Damaged models: every fault is told with its place, nothing crashes, and what was written stays whole.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "support/capture_stdout.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

/// A copy of the small model that a test may damage, converted with every output on.
class DamagedModel : public testing::Test {
protected:
    DamagedModel() {
        for (const auto& entry : fs::directory_iterator(fs::path(PLX_TEST_DATA) / "small")) {
            fs::copy(entry.path(), folder_.path());
        }
    }

    std::string read(const char* name) const { return folder_.read(name); }
    void write(const char* name, const std::string& bytes) const { folder_.write(name, bytes); }
    void replace(const char* name, const std::string& from, const std::string& to) const {
        std::string text = read(name);
        const auto at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        write(name, text.replace(at, from.size(), to));
    }

    plx::ConversionReport convert(const plx::ReadingRules& rules = plx::ReadingRules::modflow()) const {
        MODFLOW2000_Converter factory;
        factory.reading_rules = rules;
        factory.keep_log = false;
        VXFile project(folder_.file("small.nam").c_str());
        int outputs[Converter::kOutputs] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
        plx::test::capture_stdout([&] {
            Converter().create_converter(factory, project, 0, nullptr, false, outputs, false, 0.0, 0.0, 0.0,
                                         0.0);
        });
        return factory.report;
    }

    plx::test::TempFolder folder_;
};

bool mentions(const plx::ConversionReport& report, const std::string& text) {
    return std::any_of(report.errors.begin(), report.errors.end(),
                       [&](const std::string& e) { return e.find(text) != std::string::npos; });
}

std::string joined(const plx::ConversionReport& report) {
    std::string all;
    for (const std::string& e : report.errors) all += e + "\n";
    return all;
}

}  // namespace

TEST_F(DamagedModel, FaultsOfTextInputsNameFileAndPlace) {
    const struct {
        const char* file;
        const char* from;
        const char* to;
        const char* expected;
    } cases[] = {
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
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.file) + ": " + c.to);
        const std::string whole = read(c.file);
        replace(c.file, c.from, c.to);
        const plx::ConversionReport report = convert();
        EXPECT_TRUE(mentions(report, c.expected)) << joined(report);
        write(c.file, whole);
    }
    EXPECT_TRUE(convert().errors.empty()) << joined(convert());
}

TEST_F(DamagedModel, ResultFilesMayBeCutAtAnyByte) {
    for (const char* name : {"small.hds", "small.cbb"}) {
        const std::string whole = read(name);
        for (std::size_t bytes = 1; bytes < whole.size(); bytes += 61) {
            SCOPED_TRACE(std::string(name) + " cut at byte " + std::to_string(bytes));
            write(name, whole.substr(0, bytes));
            for (const auto& rules : {plx::ReadingRules::modflow(), plx::ReadingRules::prescribed()}) {
                const plx::ConversionReport report = convert(rules);
                EXPECT_LE(report.steps, 3);
                // Companion files come last: they are there whatever the results are like.
                EXPECT_EQ(folder_.read("GENERAL/connectivity.conn").empty(), false);
            }
        }
        write(name, whole.substr(0, whole.size() - 3));
        EXPECT_TRUE(mentions(convert(), std::string(name) + ": byte ")) << joined(convert());
        write(name, whole);
    }
}

TEST_F(DamagedModel, HeadsOfAnotherGridAreRefused) {
    std::string heads = read("small.hds");
    heads[32] = 5;  // NCOL of the first record
    write("small.hds", heads);
    const plx::ConversionReport report = convert();
    EXPECT_TRUE(mentions(report, "small.hds: byte 0: a layer of 3 rows and 5 columns, the model has 3 and 4"))
        << joined(report);
}

TEST_F(DamagedModel, UnknownBudgetTypeEndsTheScanWithItsNumber) {
    std::string flows = read("small.cbb");
    flows[36] = 9;  // ITYPE of the first record
    write("small.cbb", flows);
    const plx::ConversionReport report = convert();
    EXPECT_TRUE(mentions(report, "9 is not known") || mentions(report, "no budget record")) << joined(report);
    EXPECT_EQ(report.steps, 3);
}

TEST_F(DamagedModel, WideAndMarkedResultsAreRefusedByThePlainRules) {
    std::string marked = read("small.hds");
    marked.insert(0, std::string("\x2c\0\0\0", 4));
    marked.insert(48, std::string("\x2c\0\0\0", 4));
    write("small.hds", marked);
    const plx::ConversionReport report = convert(plx::ReadingRules::prescribed());
    EXPECT_TRUE(mentions(report, "small.hds: byte 0")) << joined(report);
}
