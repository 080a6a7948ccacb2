#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "formats/budget_records.h"
#include "formats/concentration_records.h"
#include "formats/layer_records.h"
#include "formats/text_source.h"
#include "platform/platform.h"
#include "support/host_system.h"
#include "support/result_files.h"
#include "support/temp_folder.h"

using namespace plx;
using namespace plx::test;

namespace {

/// A file with holes, which take no room on disk, between what is put into it.
class FarOffsets : public testing::TestWithParam<int> {
protected:
    void SetUp() override {
        std::error_code none;
        // Elsewhere the holes would be written, gigabytes of them.
        if (kWindows || std::filesystem::space(folder.path(), none).available < (std::uintmax_t{12} << 30))
            GTEST_SKIP() << "no room for files with holes";
        file = {std::fopen(folder.file("far").c_str(), "w+b"), std::fclose};
    }
    void put(const std::string& bytes) {
        ASSERT_TRUE(platform::seek(file.get(), end, SEEK_SET));
        ASSERT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file.get()), bytes.size());
        end += static_cast<std::int64_t>(bytes.size());
    }
    /// Values that are all 0, after their header; with record markers in the parts that compilers write.
    void put_zeros(std::int64_t bytes, bool markers) {
        if (!markers) end += bytes;
        for (std::int64_t left = bytes; markers && left > 0;) {
            const auto part = static_cast<std::int32_t>(std::min<std::int64_t>(left, 2'147'483'639));
            const auto marker = [](std::int32_t v) { return std::string(reinterpret_cast<char*>(&v), 4); };
            put(marker(left > part ? -part : part));
            end += part;
            put(marker(left < bytes ? -part : part));
            left -= part;
        }
    }
    const int rows = GetParam(), columns = 1 << 15;
    const std::int64_t layer_bytes = std::int64_t{rows} * columns * 4;
    TempFolder folder;
    OpenFile file{nullptr, std::fclose};
    std::int64_t end = 0;
};

// Layers of just under and just over 2 and 4 GiB.
INSTANTIATE_TEST_SUITE_P(Rows, FarOffsets,
                         testing::Values((1 << 14) - 1, 1 << 14, (1 << 15) - 1, (1 << 15) + 1));

}  // namespace

TEST_P(FarOffsets, HeadsBehindThemAreFound) {
    for (const bool markers : {false, true}) {
        SCOPED_TRACE(markers);
        ResultWriter head({markers}), last({markers});
        head.layer({.step = 1, .rows = rows, .columns = columns}, 1, {});
        last.layer({.step = 2, .time = 7.5, .rows = 1, .columns = 2}, 1, {5, 6});
        end = 0;
        put(head.bytes());
        put_zeros(layer_bytes, markers);
        const std::int64_t second = end;
        put(last.bytes());
        RecordFile in(file.get(), "far.hds");
        in.set_layout({markers, 4});
        LayerRecord record;
        bool cut = false;
        double values[2] = {};
        ASSERT_TRUE(next_head_record(in, record, cut) && next_head_record(in, record, cut));
        EXPECT_EQ(record.position, second);
        EXPECT_EQ(record.header.total_time, 7.5);
        EXPECT_FALSE(next_head_record(in, record, cut) || cut);
        ASSERT_TRUE(in.seek(record.values) && in.read_reals(values, 2));
        EXPECT_EQ(values[1], 6.0);
        // Cut within the values it is noticed, and nothing is read for it.
        std::filesystem::resize_file(folder.path() / "far", static_cast<std::uintmax_t>(layer_bytes));
        RecordFile shorter(file.get(), "far.hds");
        shorter.set_layout({markers, 4});
        EXPECT_FALSE(next_head_record(shorter, record, cut));
        EXPECT_TRUE(cut);
    }
}

TEST_P(FarOffsets, FlowsBehindThemAreFound) {
    ResultWriter storage, wells;
    storage.array({.layers = 1, .rows = rows, .columns = columns}, "STORAGE", {});
    wells.list({.step = 2, .layers = 1, .rows = rows, .columns = columns}, "WELLS", {{3, {-4}}});
    put(storage.bytes());
    put_zeros(layer_bytes, false);
    const std::int64_t second = end;
    put(wells.bytes());
    RecordFile in(file.get(), "far.cbb");
    const GridSize grid{1, rows, columns};
    BudgetRecord record;
    ASSERT_EQ(next_budget_record(in, grid, record), BudgetNext::kRecord);
    ASSERT_EQ(next_budget_record(in, grid, record), BudgetNext::kRecord);
    EXPECT_EQ(record.position, second);
    EXPECT_EQ(next_budget_record(in, grid, record), BudgetNext::kEnd);
    std::vector<BudgetEntry> entries;
    ASSERT_TRUE(read_budget_list(in, record, entries));
    EXPECT_EQ(entries.at(0).flow, -4.0);
}

TEST_P(FarOffsets, ConcentrationsAndTextBehindThemAreFound) {
    for (const int layer : {1, 2, 1}) {
        ResultWriter writer;
        writer.layer({.rows = rows, .columns = columns}, layer, {}, "CONCENTRATION", 1);
        put(writer.bytes());
        put_zeros(layer_bytes, false);
    }
    RecordFile in(file.get(), "far.ucn");
    std::int64_t time_bytes = 0;
    EXPECT_EQ(check_first_concentrations(in, {2, rows, columns}, false, time_bytes), "");
    EXPECT_EQ(time_bytes, 2 * (kConcentrationHeader + layer_bytes));

    put("CONSTANT 5\nlast");
    ASSERT_TRUE(platform::seek(file.get(), end - 15, SEEK_SET));
    TextSource text(file.get(), "far.dis");
    EXPECT_EQ(text.remaining(), 15);
    std::string line;
    EXPECT_TRUE(text.read_line(line) && text.read_line(line));
    EXPECT_EQ(line, "last");
}
