#include "formats/link_records.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/link_file.h"

using namespace plx;
using namespace plx::test;

namespace {

const ResultStamp kAt{.step = 2, .period = 3, .layers = 2, .rows = 1, .columns = 2};
const GridSize kGrid{2, 1, 2};

/// `ends` receives where the header and the records of known labels end.
std::string small_link(const ResultStyle& style, bool old_version, std::vector<std::size_t>* ends = nullptr) {
    std::vector<std::size_t> own;
    if (ends == nullptr) ends = &own;
    LinkWriter link(style, old_version);
    const auto note_end = [&] { ends->push_back(link.bytes().size()); };
    note_end();
    link.array(kAt, "THKSAT", {-111, -111, 1e30, 5});
    note_end();
    link.array(kAt, "QXX", {1, 2, 3, 4});
    note_end();
    link.list(kAt, "CNH", {{2, 1, 1, 0.5}, {1, 1, 2, -0.5}, {1, 2, 1, 9.0}});
    note_end();
    link.list(kAt, "DRN", {});
    note_end();
    link.list(kAt, "STR", {{1, 1, 1, 7.0}});
    link.list(kAt, "MNW", {{1, 1, 1, 7.0, true}, {1, 1, 2, 7.0, true}});
    link.layers(kAt, "RCH", {1, 2}, {0.25, 0.75});
    return link.bytes();
}

}  // namespace

TEST(LinkRecords, EveryLayoutGivesTheSameRecords) {
    for (const ResultStyle& style : {ResultStyle{}, {false, 8}, {true, 4}, {true, 8}}) {
        for (const bool old_version : {false, true}) {
            SCOPED_TRACE(testing::Message() << style.record_markers << style.real_bytes << old_version);
            const std::string bytes = small_link(style, old_version);
            const OpenFile file = open_bytes(bytes);
            RecordFile in(file.get(), "a.ftl");
            in.set_layout(detect_link_layout(file.get()).value());
            EXPECT_EQ(in.layout().real_bytes, style.real_bytes);
            bool old_found = !old_version;
            ASSERT_TRUE(read_link_header(in, old_found));
            EXPECT_EQ(old_found, old_version);
            std::string labels;
            std::vector<BudgetEntry> heads;
            double values[2] = {0, 0};
            for (BudgetRecord record; next_link_record(in, record) == LinkNext::kRecord;) {
                const BudgetHeader& h = record.header;
                EXPECT_EQ(std::pair(h.period, h.step), std::pair(3, 2));
                labels += h.label + ' ';
                const std::int64_t next = in.position();
                EXPECT_EQ(read_link_list(in, record, heads), h.label == "CNH" || h.label == "DRN");
                const auto keep = [&](int, const double* v, const int*) { std::copy(v, v + 2, values); };
                if (h.label == "QXX") {
                    EXPECT_TRUE(read_budget_arrays(in, record, kGrid, keep));
                }
                in.seek(next);
            }
            EXPECT_EQ(labels, "THKSAT QXX CNH DRN STR MNW RCH ");
            EXPECT_TRUE(in.at_end());
            EXPECT_EQ(values[1], 4.0);
            ASSERT_EQ(heads.size(), 3U);
            EXPECT_EQ((std::vector<int>{heads[0].cell, heads[1].cell, heads[2].cell}),
                      (std::vector<int>{3, 2, 0}));
            EXPECT_EQ(heads[1].flow, -0.5);
        }
    }
}

TEST(LinkRecords, CutFileGivesItsWholeRecordsOnly) {
    for (const bool markers : {false, true}) {
        std::vector<std::size_t> ends;
        const std::string bytes = small_link({markers, 4}, false, &ends);
        for (std::size_t length = 0; length <= bytes.size(); ++length) {
            SCOPED_TRACE(length);
            const OpenFile file = open_bytes(bytes.substr(0, length));
            const auto layout = detect_link_layout(file.get());
            ASSERT_EQ(layout.has_value(), length >= ends[0]);
            if (!layout) continue;
            RecordFile in(file.get(), "a.ftl");
            in.set_layout({markers, 4});
            bool old_version = false;
            ASSERT_TRUE(read_link_header(in, old_version));
            BudgetRecord record;
            std::size_t records = 0;
            LinkNext next;
            while ((next = next_link_record(in, record)) == LinkNext::kRecord) ++records;
            // The records behind are of labels that do not tell their form, and a shorter form may fit.
            if (length > ends.back()) continue;
            const auto last = std::upper_bound(ends.begin(), ends.end(), length) - 1;
            EXPECT_EQ(static_cast<std::ptrdiff_t>(records), last - ends.begin());
            EXPECT_EQ(next == LinkNext::kEnd, length == *last);
        }
    }
}

TEST(LinkRecords, DamagedRecordsEndTheFile) {
    const auto first_record = [](const LinkWriter& link) {
        const OpenFile file = open_bytes(link.bytes());
        RecordFile in(file.get(), "a.ftl");
        bool old_version = false;
        BudgetRecord record;
        return read_link_header(in, old_version) ? next_link_record(in, record) : LinkNext::kEnd;
    };
    LinkWriter absurd, odd;
    absurd.array({.layers = 1, .rows = 1 << 30, .columns = 1 << 30}, "QXX", {1, 2});
    odd.array(kAt, "SOMETHING", {1.0});
    odd.array(kAt, "QXX", {1, 2, 3, 4});
    EXPECT_EQ(first_record(absurd), LinkNext::kCutShort);
    EXPECT_EQ(first_record(odd), LinkNext::kUnknown);
}

TEST(LinkRecords, TextFormIsTold) {
    EXPECT_TRUE(is_text_link(open_bytes(" 'MT3D4.00.00' 1 0").get()));
    EXPECT_FALSE(is_text_link(open_bytes(small_link({}, true)).get()));
    EXPECT_FALSE(is_text_link(open_bytes("").get()));
}
