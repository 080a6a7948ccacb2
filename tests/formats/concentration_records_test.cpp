#include "formats/concentration_records.h"

#include <gtest/gtest.h>

#include "support/result_files.h"

using namespace plx;
using namespace plx::test;

TEST(ConcentrationRecords, CutHeaderTellsTheFieldThatIsMissing) {
    using Field = ConcentrationField;
    ResultWriter writer;
    writer.layer({.step = 2, .period = 3, .time = 12.5, .rows = 1, .columns = 2}, 4, {1, 2}, "CONCENTRATION",
                 7);
    const std::pair<std::size_t, Field> cases[] = {
        {0, Field::kTransportStep}, {3, Field::kTransportStep}, {4, Field::kStep},  {8, Field::kPeriod},
        {12, Field::kTime},         {16, Field::kText},         {31, Field::kText}, {32, Field::kColumns},
        {36, Field::kRows},         {43, Field::kLayer},        {44, Field::kNone}};
    LayerHeader h;
    for (const auto& [length, expected] : cases) {
        SCOPED_TRACE(length);
        const OpenFile file = open_bytes(writer.bytes().substr(0, length));
        RecordFile in(file.get(), "a.ucn");
        EXPECT_EQ(read_concentration_header(in, h), expected);
    }
    EXPECT_EQ((std::vector<int>{h.transport_step, h.step, h.period, h.columns, h.rows, h.layer}),
              (std::vector<int>{7, 2, 3, 2, 1, 4}));
    EXPECT_EQ(h.total_time, 12.5);
}

TEST(ConcentrationRecords, FirstTimeTellsWhetherTheGridIsTheModels) {
    const std::tuple<GridSize, std::string, bool> cases[] = {
        {{2, 1, 2}, "", true},
        {{2, 2, 1}, "a.ucn: byte 0: concentrations of 1 rows and 2 columns, the model has 2 and 1", false},
        {{1, 1, 2}, "a.ucn: byte 52: concentrations of layer 2 where layer 1 of 1 must follow", true},
        {{3, 1, 2}, "a.ucn: byte 104: concentrations of layer 1 where layer 3 of 3 must follow", false},
    };
    ResultWriter writer;
    for (const int time : {1, 2}) {
        for (const int layer : {1, 2})
            writer.layer({.step = time, .columns = 2}, layer, {1, 2}, "CONCENTRATION", 1);
    }
    const OpenFile file = open_bytes(writer.bytes());
    for (const auto& [grid, expected, whole] : cases) {
        SCOPED_TRACE(expected);
        RecordFile in(file.get(), "a.ucn");
        std::int64_t bytes = -1;
        EXPECT_EQ(check_first_concentrations(in, grid, bytes), expected);
        EXPECT_EQ(bytes, whole ? 52 * grid.layers : 0);
        EXPECT_EQ(in.position(), 0);
    }
}
