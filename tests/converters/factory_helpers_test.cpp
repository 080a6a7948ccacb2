// Protected helpers of the converters, which a host's own converter inherits.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/ConverterFactory.h"
#include "support/capture_stdout.h"
#include "support/temp_folder.h"

namespace {

class FactoryHelpers : public testing::Test, public ConverterFactory {};

}  // namespace

TEST_F(FactoryHelpers, CellNumbersSplitIntoLayerRowAndColumn) {
    nrow = 2;
    ncol = 3;
    const std::pair<int, std::array<int, 3>> cases[] = {
        {0, {0, 0, 0}}, {-4, {0, 0, 0}}, {5, {0, 1, 2}}, {7, {1, 0, 1}}, {2147483647, {357913941, 0, 1}}};
    for (const auto& [number, expected] : cases) {
        std::array<int, 3> place{-1, -1, -1};
        get_cell_pos(number, place[0], place[1], place[2]);
        EXPECT_EQ(place, expected) << number;
    }
}

TEST_F(FactoryHelpers, CornerNodesAreActiveBesideACellWithFlagOne) {
    nrow = ncol = 2;
    VXArray<int> active(4, 1, 1, 1);
    active(3, 0, 0, 0) = 1;
    active(0, 0, 0, 0) = 2;
    std::string found;
    for (int n = 0; n < 9; ++n) found += node_active(n / 3, n % 3, 0, active) ? '1' : '0';
    EXPECT_EQ(found, "000011011");
}

TEST_F(FactoryHelpers, CellCentreIsTurnedThenMoved) {
    ncol = 1;
    VXArray<double> elevations(1, 2, 1, 1), corners(2, 2, 1, 2);
    elevations(0, 0, 0, 0) = 10.0;
    elevations(0, 1, 0, 0) = 4.0;
    for (const int n : {0, 1}) corners(1, n, 0, 0) = 6.0, corners(n, 1, 0, 1) = 2.0;
    VXArray<int> active;
    double x = 0.0, y = 0.0, z = 0.0;
    EXPECT_TRUE(cell_center(x, y, z, elevations, corners, active, 90.0, 100.0, 200.0, 1.0, 0, 0, 0));
    EXPECT_NEAR(x, 99.0, 1e-12);
    EXPECT_NEAR(y, 203.0, 1e-12);
    EXPECT_NEAR(z, 8.0, 1e-12);
}

TEST_F(FactoryHelpers, ExtentsIncludeTheirEdges) {
    EXPECT_TRUE(check_extents(1e9, 1e9));
    crop_to_extents = true;
    x_max = y_max = 10.0;
    EXPECT_TRUE(check_extents(10.0, 0.0));
    EXPECT_FALSE(check_extents(10.1, 0.0) || check_extents(std::nan(""), 0.0));
}

TEST_F(FactoryHelpers, RecordsAndWordsAreReadFromUnitStreams) {
    const plx::test::TempFolder folder;
    folder.write("data.txt", "1 2\n3\n");
    const std::string text =
        folder.write("control.txt", "CONSTANT 2.5 rest\nOPEN/CLOSE data.txt 2.0(FREE) -1\r\n'a b',c\n");
    project_file = VXFile(folder.file("model.nam").c_str());
    FILE* stream = std::fopen(text.c_str(), "rb");
    VX1DArray<double> values;
    values.SetSize(3, 0.0);
    const std::string trace = plx::test::capture_stdout([&] {
        parse_record(stream, values);
        EXPECT_EQ(values[2], 2.5);
        parse_record(stream, values);
    });
    EXPECT_TRUE(values[0] == 2.0 && values[2] == 6.0);
    EXPECT_NE(trace.find("[OPEN/CLOSE\t"), std::string::npos);
    String word;
    EXPECT_EQ(read_word(stream, word, false, true, false, 0), 1);
    EXPECT_TRUE(word == "a b");
    std::fclose(stream);
}

TEST_F(FactoryHelpers, SkipPassesLinesThenWordsAndTellsWhenTheTextEnds) {
    const plx::test::TempFolder folder;
    const std::string path = folder.write("words.txt", "title\n1 2 3\n4 5 6\nnext\n");
    const struct {
        int words, lines;
        bool result;
        const char* message;
    } cases[] = {{6, 1, true, ""},
                 {0, 0, true, ""},
                 {-1, 0, false, "MODFLOW : skip - input error\n"},
                 {0, 9, false, "MODFLOW : skip - number of offset lines exceeds file length\n"},
                 {90, 1, false, "MODFLOW : skip - number of words exceeds file length\n"}};
    for (const auto& c : cases) {
        VXFileReader reader;
        reader.Open(path.c_str());
        EXPECT_EQ(plx::test::capture_stdout([&] { EXPECT_EQ(skip(reader, c.words, c.lines), c.result); }),
                  c.message);
    }
}

TEST(Converter, MissingProjectIsToldAndNothingElseHappens) {
    ConverterFactory factory;
    VXFile project("c:\\no such folder\\x.nam");
    const auto convert = [&] {
        Converter().create_converter(factory, project, 0, nullptr, true, nullptr, false, 0.0, 0.0, 0.0, 0.0);
    };
    EXPECT_EQ(plx::test::capture_stdout(convert),
              "creating converter\t\t\t\t\t\t\t\t\t\t\t\t\t\rProject file [c:\\no such folder\\x.nam] does "
              "not exist.\n");
    EXPECT_FALSE(factory.compress);
}
