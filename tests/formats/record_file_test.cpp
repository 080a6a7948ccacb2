#include "formats/record_file.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/result_files.h"

using namespace plx;

namespace {

std::string int_bytes(const std::vector<std::int32_t>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(std::int32_t)};
}

/// One record in parts of at most `part` bytes, as compilers split long records; 0: no record markers.
std::string framed(const std::string& data, std::size_t part) {
    if (part == 0) return data;
    std::string bytes;
    for (std::size_t at = 0; at < data.size(); at += part) {
        const std::string piece = data.substr(at, part);
        const int length = static_cast<int>(piece.size());
        const bool last = at + part >= data.size();
        bytes += int_bytes({last ? length : -length}) + piece + int_bytes({at == 0 ? length : -length});
    }
    return bytes;
}

}  // namespace

TEST(RecordFile, ServesTheSameValuesHoweverTheyWereWritten) {
    std::vector<float> values(60'000);  // several blocks
    std::iota(values.begin(), values.end(), 0.5F);
    const std::string data(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float));
    for (const std::size_t part : {0U, 4U, 7'001U, 240'000U}) {
        SCOPED_TRACE(part);
        const test::OpenFile file = test::open_bytes(framed(data, part));
        RecordFile in(file.get(), "a.hds");
        in.set_layout({part != 0, 4});
        std::vector<double> doubles(10'000);
        ASSERT_TRUE(in.skip(100'000) && in.read_reals(doubles.data(), doubles.size()));
        EXPECT_EQ(doubles[0], 25'000.5);
        EXPECT_EQ(doubles[9'999], 34'999.5);
        std::vector<float> floats(values.size());
        ASSERT_TRUE(in.seek(0) && in.read_reals(floats.data(), floats.size()));
        EXPECT_EQ(floats, values);
        EXPECT_TRUE(in.at_end() && in.at_record_start());
        EXPECT_FALSE(in.read_reals(floats.data(), 1) || in.skip(1));
    }
}

TEST(RecordFile, EndsAtADamagedMarker) {
    const std::vector<std::int32_t> cases[] = {
        {}, {8}, {100, 1, 2, 100}, {INT32_MIN, 1, 2, INT32_MIN}, {8, 1, 2, 7}, {8, 1, 2}, {0, 4, 8, 1, 2, 8}};
    for (const auto& bytes : cases) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        for (const bool skipped : {false, true}) {
            const test::OpenFile file = test::open_bytes(int_bytes(bytes));
            RecordFile in(file.get(), "a");
            in.set_layout({true, 4});
            std::int32_t v[2];
            EXPECT_FALSE(skipped ? in.skip(8) : in.read(v, 8));
            EXPECT_TRUE(in.at_end());
        }
    }
}
