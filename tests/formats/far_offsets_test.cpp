#include <gtest/gtest.h>

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
    /// Headers by `write`, each with values that are all 0 behind it.
    template <class Write>
    void put_layers(int count, bool markers, Write write) {
        const auto length = static_cast<std::int32_t>(kLayerBytes);
        const std::string marker(reinterpret_cast<const char*>(&length), markers ? sizeof length : 0);
        for (int layer = 1; layer <= count; ++layer) {
            ResultWriter writer({markers});
            write(writer, layer);
            put(writer.bytes() + marker);
            end += kLayerBytes;
            put(marker);
        }
    }
    static constexpr int kRows = 9000, kColumns = 10'000;
    static constexpr ResultStamp kAt{.rows = kRows, .columns = kColumns};
    static constexpr std::int64_t kLayerBytes = std::int64_t{kRows} * kColumns * 4;
    const int layers = GetParam();
    TempFolder folder;
    OpenFile file{nullptr, std::fclose};
    std::int64_t end = 0;
};

// Each layer has 360 MB, so that these end below and above 2 and 4 GiB.
INSTANTIATE_TEST_SUITE_P(Layers, FarOffsets, testing::Values(5, 6, 11, 12));

}  // namespace

TEST_P(FarOffsets, HeadsBehindThemAreFound) {
    for (const bool markers : {false, true}) {
        SCOPED_TRACE(markers);
        end = 0;
        put_layers(layers, markers, [](ResultWriter& out, int layer) { out.layer(kAt, layer, {}); });
        const std::int64_t last = end;
        ResultWriter writer({markers});
        writer.layer({.step = 2, .time = 7.5, .rows = 1, .columns = 2}, 1, {5, 6});
        put(writer.bytes());
        RecordFile in(file.get(), "far.hds");
        in.set_layout({markers, 4});
        LayerRecord record;
        bool cut = false;
        for (int i = 0; i <= layers; ++i) ASSERT_TRUE(next_head_record(in, record, cut)) << i;
        EXPECT_EQ(record.position, last);
        EXPECT_EQ(record.header.total_time, 7.5);
        EXPECT_FALSE(next_head_record(in, record, cut) || cut);
        double values[2] = {};
        ASSERT_TRUE(in.seek(record.values) && in.read_reals(values, 2));
        EXPECT_EQ(values[1], 6.0);
        std::filesystem::resize_file(folder.path() / "far", static_cast<std::uintmax_t>(last - 9));
        ASSERT_TRUE(platform::seek(file.get(), 0, SEEK_SET));
        RecordFile shorter(file.get(), "far.hds");
        shorter.set_layout({markers, 4});
        for (int i = 1; i < layers; ++i) ASSERT_TRUE(next_head_record(shorter, record, cut)) << i;
        EXPECT_FALSE(next_head_record(shorter, record, cut));
        EXPECT_TRUE(cut);
    }
}

TEST_P(FarOffsets, FlowsBehindThemAreFound) {
    put_layers(layers, false, [](ResultWriter& out, int) { out.array(kAt, "STORAGE", {}); });
    const std::int64_t last = end;
    ResultWriter writer;
    writer.list(kAt, "WELLS", {{3, {-4}}});
    put(writer.bytes());
    RecordFile in(file.get(), "far.cbb");
    const GridSize grid{1, kRows, kColumns};
    BudgetRecord record;
    for (int i = 0; i <= layers; ++i)
        ASSERT_EQ(next_budget_record(in, grid, record), BudgetNext::kRecord) << i;
    EXPECT_EQ(record.position, last);
    std::vector<BudgetEntry> entries;
    ASSERT_TRUE(read_budget_list(in, record, entries));
    EXPECT_EQ(next_budget_record(in, grid, record), BudgetNext::kEnd);
    EXPECT_EQ(entries.at(0).flow, -4.0);
}

TEST_P(FarOffsets, ConcentrationsAndTextBehindThemAreFound) {
    put_layers(layers + 1, false, [this](ResultWriter& out, int layer) {
        out.layer(kAt, layer > layers ? 1 : layer, {}, "CONCENTRATION", 1);
    });
    RecordFile in(file.get(), "far.ucn");
    std::int64_t time_bytes = 0;
    EXPECT_EQ(check_first_concentrations(in, {layers, kRows, kColumns}, false, time_bytes), "");
    EXPECT_EQ(time_bytes, layers * (kConcentrationHeader + kLayerBytes));

    put("CONSTANT 5\nlast");
    ASSERT_TRUE(platform::seek(file.get(), end - 15, SEEK_SET));
    TextSource text(file.get(), "far.dis");
    EXPECT_EQ(text.remaining(), 15);
    std::string line;
    EXPECT_TRUE(text.read_line(line) && text.read_line(line));
    EXPECT_EQ(line, "last");
}
