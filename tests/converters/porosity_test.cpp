#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "converters/small_grid.h"
#include "support/capture_stdout.h"

using namespace plx;
using namespace plx::test;
using testing::HasSubstr;

namespace {

using Values = std::vector<double>;
constexpr bool kPlain = false, kModflow = true;

/// What a model of 2 layers, 1 row and 3 columns takes from a porosity source.
struct Reading : GridModel {
    Reading(const char* source, const std::string& text, bool modflow_rules = false,
            const std::string& package = {})
        : GridModel({2, 1, 3}, modflow_rules) {
        if (!package.empty()) folder.write("site.btn", package);
        factory.out_porosity = true;
        factory.porosity_file = VXFile(folder.write(source, text).c_str());
        printed = capture_stdout([this] { factory.parsePOR(); });
        for (const std::string& error : report.errors) errors += error + '\n';
    }
    const Values& values = model.porosity;
    std::string errors;
};

/// A transport package of the model's size with its own layout up to the porosity.
const std::string kPackage =
    "one\ntwo\n         2         1         3\nd ft lb\nT T\n 0 0\n"
    "       103       0.0                             7\n3*10. 99 99\n         0       10.\n"
    "       101\n2\n1 1 1 2 80.\n1 1 3 3 70.\n         0        5.\n       100       0.0(3F4.1)\n 5.0 5.0 "
    "5.0\n";

}  // namespace

TEST(Porosity, FileOfItsOwnFollowsItsKeyword) {
    const std::tuple<const char*, Values, const char*> cases[] = {
        {"x\nPOROSITY 1\n.1,.2 .3\n\n.4\n.5 .6 .7\n", {.1, .2, .3, .4, .5, .6}, ""},
        {"POROSITY\n.1 .2\n", {.1, .2, 0, 0, 0, 0}, "a.ptk: line 3: 6 porosity values expected, 2 found\n"},
        {"POROSITY\nx .2\n", {}, "a.ptk: line 2: 6 porosity values expected, 0 found\n"},
        {".1 .2\n", {}, "a.ptk: 6 porosity values expected, 0 found\n"}};
    for (const auto& [text, values, errors] : cases) {
        SCOPED_TRACE(text);
        const Reading reading("a.ptk", text);
        EXPECT_EQ(reading.values, values);
        EXPECT_EQ(reading.errors, errors);
        EXPECT_EQ(reading.printed.ends_with("\rMODFLOW::read_POR no porosity values found in .ptk file\n"),
                  values.empty());
    }
}

TEST(Porosity, PackageIsReadByItsOwnLayout) {
    const std::tuple<std::string, Values, const char*> cases[] = {
        {"         0        .3\n         0        .2\n", {.3, .3, .3, .2, .2, .2}, ""},
        {"0 .3\n0 .2\n", {.3, .3, .3, .2, .2, .2}, ""},
        {"       103        2.\n2*.1\n.2 9 9\n       100        0.(2F3.1)\n .3 .4\n .5\n",
         {.2, .2, .4, .3, .4, .5},
         ""},
        {"       102        0.(3I2)\n2\n.1 .2\n 2 1 0\n         0        .3\n", {.2, .1, 0, .3, .3, .3}, ""},
        {"       102        0.(3I2)\n1\n.1\n 2 1 0\n", {}, "a zone of a layer's porosity that has no value"},
        {"       101\n99999999\n", {}, "a count in a layer's porosity that the file cannot hold"},
        {"       103        0.\n.1 x .2\n", {}, "\"x\" in a layer's porosity is not a number"},
        {"       100        0.(3A4)\n", {}, "\"(3A4)\" of a layer's porosity is no known format"},
        {"       103        0.\n.1 .2\n", {}, "3 values expected for a layer's porosity, 2 found"},
        {"       102        0.(3I2)\n2\n.1\n", {}, "values expected for"},
        {"       101\n1\n1 1 1\n", {}, "values expected for a layer's porosity"},
        {"        45        0.\n", {}, "array form 45 of a layer's porosity is not read"},
        {"", {}, "the file ends before a layer's porosity"}};
    for (const auto& [arrays, values, error] : cases) {
        SCOPED_TRACE(arrays);
        const Reading reading("run.mts", "BTN site.btn\n", kModflow, kPackage + arrays);
        EXPECT_EQ(reading.values, values);
        EXPECT_THAT(reading.errors, HasSubstr(error));
    }
    const Reading other("run.mts", "BTN site.btn\n", kModflow, "one\ntwo\n 3 1 3\n");
    EXPECT_THAT(other.errors, HasSubstr("site.btn: line 4: no line with the model's layers"));
}

TEST(Porosity, PlainRulesCountLinesAndWords) {
    const std::string seven = "1\n2\n3\n4\n5\n6\n7\n";
    // One word for the first array, three for the second, a line and three words for the third.
    const std::string arrays = "11 1\n10.\n11 1\n10. 10.\n10.\n11 1\nline\n80. 80. 80.\n0 5.\n0 5.\n";
    const std::tuple<std::string, Values, const char*> cases[] = {
        {seven + arrays + "0 .3\n11 1\n.1 .2\n.3\n", {.3, .3, .3, .1, .2, .3}, ""},
        {seven + arrays + "0 .3\n11 1\n.1 .2\n", {}, "site.btn: line 21: the transport package ends before"},
        {"1\n", {}, "the transport package ends before the porosity does"}};
    for (const auto& [package, values, error] : cases) {
        SCOPED_TRACE(package);
        const Reading reading("run.mts", "x\nBTN site.btn\n", kPlain, package);
        EXPECT_EQ(reading.values, values);
        EXPECT_THAT(reading.errors, HasSubstr(error));
    }
}

TEST(Porosity, MissingPackageIsTold) {
    for (const bool rules : {kPlain, kModflow}) {
        EXPECT_EQ(Reading("run.mts", "BTN none.btn\n", rules).errors,
                  "none.btn: the transport package cannot be opened\n");
    }
}
