#include "formats/layer_records.h"

#include <gtest/gtest.h>

#include "support/result_files.h"

using namespace plx;
using namespace plx::test;

TEST(LayerRecords, EveryLayoutGivesItsWholeRecords) {
    for (const ResultStyle& style : {ResultStyle{}, {false, 8}, {true, 4}, {true, 8}}) {
        ResultWriter writer(style);
        const ResultStamp at{.step = 3, .period = 4, .time = 12.5, .rows = 1, .columns = 2};
        for (const int layer : {1, 2}) writer.layer(at, layer, {5, 6.0 + layer});
        const std::size_t half = writer.bytes().size() / 2;
        for (std::size_t length = half; length <= 2 * half; ++length) {
            SCOPED_TRACE(testing::Message() << style.record_markers << style.real_bytes << ' ' << length);
            const OpenFile file = open_bytes(writer.bytes().substr(0, length));
            RecordFile in(file.get(), "a.hds");
            in.set_layout(detect_layer_layout(file.get()).value());
            LayerRecord record;
            bool cut = false;
            std::size_t records = 0;
            for (; next_head_record(in, record, cut); ++records) {
                const LayerHeader& h = record.header;
                EXPECT_EQ((std::vector<double>{h.total_time, h.step * 1.0, h.period * 1.0, h.layer * 1.0}),
                          (std::vector<double>{12.5, 3, 4, 1.0 + static_cast<double>(records)}));
                EXPECT_EQ(h.label, "            HEAD");
                float values[2];
                ASSERT_TRUE(in.seek(record.values) && in.read_reals(values, 2));
                EXPECT_EQ(values[1], 6.0F + static_cast<float>(h.layer));
            }
            EXPECT_EQ(records, length / half);
            EXPECT_EQ(cut, length % half != 0);
        }
    }
}

TEST(LayerRecords, OtherFilesAreNotTakenForLayers) {
    ResultWriter heads, concentrations, budget, absurd;
    heads.layer({.step = 44}, 1, {1.0});
    concentrations.layer({}, 1, {1.0}, "CONCENTRATION   ", 5);
    budget.array({}, "FLOW RIGHT FACE", {1.0});
    absurd.layer({.rows = 1 << 30, .columns = 1 << 30}, 1, {1.0});
    const std::string link = "MT3D4.00.00" + heads.bytes();
    for (const std::string& bytes : {heads.bytes(), concentrations.bytes()})
        EXPECT_TRUE(detect_layer_layout(open_bytes(bytes).get())) << testing::PrintToString(bytes);
    for (const std::string& bytes :
         {budget.bytes(), absurd.bytes(), link, std::string("\x2f\0\0\0", 4) + link, std::string(80, 'x'),
          std::string(80, '\0')})
        EXPECT_FALSE(detect_layer_layout(open_bytes(bytes).get())) << testing::PrintToString(bytes);
}
