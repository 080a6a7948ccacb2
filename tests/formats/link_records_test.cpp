#include "formats/link_records.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/link_file.h"

using namespace plx;
using namespace plx::test;

TEST(LinkRecords, CutFileGivesItsWholeRecordsOnly) {
    for (const bool markers : {false, true}) {
        const ResultStamp at{.step = 2, .period = 3, .layers = 2, .rows = 1, .columns = 2};
        LinkWriter link({markers, 4});
        std::vector<std::size_t> ends = {link.bytes.size()};
        link.array(at, "QXX", {1, 2, 3, 4});
        ends.push_back(link.bytes.size());
        link.list(at, "CNH", {{2, 1, 1}, {1, 1, 2}}, 0.5);
        ends.push_back(link.bytes.size());
        link.array(at, "RCH", {0.25, 0.75}, {1, 2});
        ends.push_back(link.bytes.size());
        for (std::size_t length = 0; length <= ends.back(); ++length) {
            SCOPED_TRACE(length);
            const OpenFile file = open_bytes(link.bytes.substr(0, length));
            ASSERT_EQ(detect_link_layout(file.get()).has_value(), length >= ends[0]);
            RecordFile in(file.get(), "a.ftl");
            in.set_layout({markers, 4});
            bool old_version = true;
            if (!read_link_header(in, old_version)) continue;
            EXPECT_FALSE(old_version);
            BudgetRecord record;
            std::ptrdiff_t records = 0;
            LinkNext next;
            while ((next = next_link_record(in, record)) == LinkNext::kRecord) ++records;
            const auto last = std::upper_bound(ends.begin(), ends.end(), length) - 1;
            EXPECT_EQ(records, last - ends.begin());
            EXPECT_EQ(next, length == *last ? LinkNext::kEnd : LinkNext::kCutShort);
        }
    }
}
