#include "formats/gms_steps.h"

#include <gtest/gtest.h>

#include "support/gms_bytes.h"
#include "support/memory_streams.h"
#include "support/result_files.h"

using namespace plx;
using plx::test::GmsBytes;

namespace {

/// "name 2/3: 1: 1.5 2; 2: 3 4; end", the steps as they come, after what was counted.
std::string read_all(const std::string& bytes) {
    const auto file = test::open_bytes(bytes);
    GmsSteps steps(file.get(), "a.con");
    std::ostringstream text;
    steps.on_unknown_card = [&text](int card) { text << "?" << card << " "; };
    if (!steps.open()) {
        text << "refused " << static_cast<int>(steps.fault().field) << " " << steps.fault().number;
        return text.str();
    }
    text << steps.dataset() << steps.count() << (steps.more_datasets() ? "+" : "") << ":";
    std::vector<double> values(static_cast<std::size_t>(steps.values()));
    double time = 0.0;
    for (;;) {
        const GmsSteps::Next next = steps.next(values.data(), time);
        if (next == GmsSteps::Next::kEnd) return text.str() + " end";
        if (next == GmsSteps::Next::kFault) {
            text << " fault " << static_cast<int>(steps.fault().field);
            return text.str();
        }
        text << " " << time << ": " << test::text_of(values) << ";";
    }
}

GmsBytes two_steps(bool markers) {
    GmsBytes bytes(markers);
    bytes.head(130).ints({150, 2}).end().sizes(2, 3).name("TCE").put(195).put(2.5);
    bytes.ints({0, 0, 0, 0, 0, 0, 0, 0}).end().ints({220, 1}).end().ints({240, 0, 0}).end();
    return bytes.step(0, 1.0F, "", {1.5F, 2}).step(1, 2.0F, {0, 1, 5}, {3, 4});
}

std::string code(GmsField field) { return std::to_string(static_cast<int>(field)); }

}  // namespace

TEST(GmsSteps, GivesTheStepsOfEveryKindOfFile) {
    const std::string steps = " 1: 1.5 2; 2: 3 4;";
    GmsBytes doubles(false), other_count(false), vectors(true), garbage(false), none(false), unset(false);
    doubles.ints({3000, 100, 7, 110, 8, 120, 2, 130, 170, 1, 200});
    doubles.put(std::int16_t{0}).put(9.25).put(1e300);
    other_count.head(130).sizes(1, 0).step(0, 1.0F, "", {1}).sizes(2, 0).step(0, 2.0F, "", {1, 2});
    vectors.head(140).sizes(1, 0).step(0, 1.0F, "", {1, 2, 3});
    garbage.ints({3000}).ints(std::vector<int>(2000, 7));
    none.head(130).sizes(2, 0);
    unset.ints({3000, 130, 170, 1, 200, 0, 0, 0});
    const std::pair<std::string, std::string> cases[] = {
        {two_steps(false).close().text, "TCE2:" + steps + " end"},
        {two_steps(true).close().text, "TCE2:" + steps + " end"},
        // A program that was stopped has not closed its file.
        {two_steps(true).text.substr(0, two_steps(true).text.size() - 8), "TCE2:" + steps + " end"},
        {two_steps(false).ints({77}).close().ints({130}).text, "TCE2+:" + steps + "?77  end"},
        {doubles.text, "1: 9.25: 1e+300; end"},
        {other_count.text, "1: 1: 1; fault " + code(GmsField::kOtherCount)},
        {vectors.text, "refused " + code(GmsField::kVectors) + " 0"},
        {none.text, "refused " + code(GmsField::kNoStep) + " 0"},
        {unset.text, "0: fault " + code(GmsField::kFlagSize)},
        {GmsBytes(false).ints({28, 2999}).text, "refused " + code(GmsField::kVersion) + " 2999"},
        {GmsBytes(false).head(130).sizes(-5, 0).text, "refused " + code(GmsField::kValueCount) + " -5"},
        {GmsBytes(false).ints({3000, 110, 5}).text, "refused " + code(GmsField::kFloatSize) + " 0"}};
    for (const auto& [bytes, expected] : cases) EXPECT_EQ(read_all(bytes), expected);
    const std::string complaints = read_all(garbage.text),
                      end = "refused " + code(GmsField::kUnknownCards) + " 0";
    EXPECT_EQ(complaints.size(), 1000 * std::string("?7 ").size() + end.size());
}

TEST(GmsSteps, CutAnywhereItKeepsWholeStepsAndNamesTheField) {
    const std::string whole = two_steps(true).close().text;
    std::vector<GmsField> fields;
    for (std::size_t n = 0; n < whole.size(); ++n) {
        const auto file = test::open_bytes(std::string_view(whole).substr(0, n));
        GmsSteps steps(file.get(), "a.con");
        std::array<double, 2> values{};
        double time = 0.0;
        std::int64_t read = 0;
        if (steps.open()) {
            while (steps.next(values.data(), time) == GmsSteps::Next::kStep) ++read;
            EXPECT_EQ(read, steps.count()) << n;
        }
        const GmsField field = steps.fault().field;
        if (fields.empty() || fields.back() != field) fields.push_back(field);
    }
    using enum GmsField;
    EXPECT_EQ(fields, (std::vector<GmsField>{
                          kVersion,  kNoStep,  kType,          kNoStep,  kFloatSize,     kNoStep,
                          kFlagSize, kMarkers, kNoStep,        kMarkers, kNoStep,        kObjectId,
                          kMarkers,  kNoStep,  kType,          kMarkers, kNoStep,        kValueCount,
                          kMarkers,  kNoStep,  kCellCount,     kMarkers, kNoStep,        kName,
                          kMarkers,  kNoStep,  kReferenceTime, kMarkers, kNoStep,        kActivity,
                          kMarkers,  kNoStep,  kReferenceTime, kMarkers, kNoStep,        kReferenceTime,
                          kTime,     kMarkers, kValue,         kNone,    kReferenceTime, kTime,
                          kMarkers,  kStatus,  kValue,         kNone}));
}
