#include "formats/budget_records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "support/result_files.h"

using namespace plx;
using namespace plx::test;

namespace {

const ResultStamp kAt{.step = 2, .period = 3, .time = 12.5, .layers = 2, .rows = 1, .columns = 2};
const GridSize kGrid{2, 1, 2};
const ResultStyle kStyles[] = {{}, {false, 8}, {true, 4}, {true, 8}};

std::string every_kind(ResultStyle style) {
    ResultWriter compact(style);
    compact.array(kAt, "STORAGE", {1, 2, 3, 4});
    compact.array(kAt, "RECHARGE", {5, 6}, 3, {2, 0});
    compact.array(kAt, "ET", {7, 8}, 4);
    compact.list(kAt, "CONSTANT HEAD", {{4, {-1}}, {1, {-2}}});
    compact.list(kAt, "WELLS", {{3, {-3, 9, 9}}}, 5, {"IFACE", "CELLGRP"});
    compact.list(kAt, "DRAINS", {}, 5);
    style.compact = false;
    ResultWriter full(style);
    full.array(kAt, "STREAM LEAKAGE", {1, 0, 0, -4});
    return compact.bytes() + full.bytes();
}

/// The records as text, a line each, up to the first that cannot be read.
std::string contents(RecordFile& in, BudgetNext& last) {
    std::ostringstream text;
    BudgetRecord record;
    while ((last = next_budget_record(in, kGrid, record)) == BudgetNext::kRecord) {
        const std::int64_t next = in.position();
        const BudgetHeader& header = record.header;
        text << header.step << header.period << ' ' << header.label << ' ' << header.total_time << ':';
        std::vector<BudgetEntry> entries;
        const auto store = [&text](int layer, const double* values, const int* layers) {
            for (int i = 0; i < 2; ++i) text << ' ' << (layers ? layers[i] : layer) << '=' << values[i];
        };
        if (!read_budget_arrays(in, record, kGrid, store) && !read_budget_list(in, record, entries))
            text << '?';
        for (const BudgetEntry& entry : entries) text << ' ' << entry.cell << '>' << entry.flow;
        text << '\n';
        EXPECT_EQ(in.position(), next);
        EXPECT_FALSE(read_budget_arrays(in, record, {2, 2, 1}, store));
        in.seek(next);
    }
    return text.str();
}

}  // namespace

TEST(BudgetRecords, EveryLayoutGivesItsWholeRecords) {
    const std::string expected =
        "23 STORAGE 12.5: 0=1 0=2 1=3 1=4\n23 RECHARGE 12.5: 1=5 -1=6\n23 ET 12.5: 0=7 0=8\n"
        "23 CONSTANT HEAD 12.5: 4>-1 1>-2\n23 WELLS 12.5: 3>-3\n23 DRAINS 12.5:\n"
        "23 STREAM LEAKAGE -1: 0=1 0=0 1=0 1=-4\n";
    for (const ResultStyle& style : kStyles) {
        const std::string bytes = every_kind(style);
        const int header = 40 + 3 * style.real_bytes + (style.record_markers ? 16 : 0);
        int ends = 0;
        for (std::size_t length = static_cast<std::size_t>(header); length <= bytes.size(); ++length) {
            SCOPED_TRACE(testing::Message() << style.record_markers << style.real_bytes << ' ' << length);
            const OpenFile file = open_bytes(bytes.substr(0, length));
            RecordFile in(file.get(), "a.cbb");
            in.set_layout(detect_budget_layout(file.get()).value());
            BudgetNext last{};
            const std::string found = contents(in, last);
            ends += last == BudgetNext::kEnd ? 1 : 0;
            EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), ends);
            EXPECT_EQ(found, expected.substr(0, found.size()));
        }
        EXPECT_EQ(ends, 7);
    }
}

TEST(BudgetRecords, ImpossibleNumbersEndTheFile) {
    const std::tuple<std::size_t, std::vector<std::int32_t>, BudgetNext> cases[] = {
        {52, {3, -1, INT32_MAX}, BudgetNext::kCutShort},  // NLIST
        {24, {0, -2, INT32_MAX}, BudgetNext::kCutShort},  // NCOL
        {32, {INT32_MIN, 50'000'000, 5}, BudgetNext::kCutShort},
        {36, {5}, BudgetNext::kCutShort},  // NLIST becomes NVAL
        {36, {6, -1}, BudgetNext::kUnknownType},
        {32, {0, -9}, BudgetNext::kRecord}};
    for (const auto& [offset, numbers, expected] : cases) {
        for (const std::int32_t number : numbers) {
            SCOPED_TRACE(testing::Message() << offset << ' ' << number);
            ResultWriter writer;
            writer.list(kAt, "WELLS", {{1'000'000, {1}}, {2, {2}}});
            std::string bytes = writer.bytes();
            std::memcpy(bytes.data() + offset, &number, sizeof number);
            const OpenFile file = open_bytes(bytes);
            RecordFile in(file.get(), "a.cbb");
            BudgetRecord record;
            EXPECT_EQ(next_budget_record(in, kGrid, record), expected);
        }
    }
}

TEST(BudgetRecords, ALoneFullArrayTellsItsRealsByTheEndOfTheFile) {
    for (ResultStyle style : kStyles) {
        style.compact = false;
        ResultWriter writer(style);
        writer.array(kAt, "STORAGE", {0, 0, 0, 1e30});
        const auto layout = detect_budget_layout(open_bytes(writer.bytes()).get());
        ASSERT_TRUE(layout.has_value());
        EXPECT_EQ(layout->record_markers, style.record_markers);
        EXPECT_EQ(layout->real_bytes, style.real_bytes);
    }
    ResultWriter heads;
    heads.layer({.step = 36}, 1, {0, 0, 0});
    for (const std::string& other :
         {heads.bytes(), "MT3D4.00.00" + std::string(60, '\1'), std::string(80, ' ')}) {
        EXPECT_FALSE(detect_budget_layout(open_bytes(other).get()).has_value());
    }
}
