// Protected helpers of the converters, through a class that opens them up as a host's own converter would.

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

class OpenFactory : public ConverterFactory {
public:
    using Base = ConverterFactory;
    using Base::cell_center, Base::check_extents, Base::get_cell_pos, Base::node_active;
    using Base::parse_record, Base::read_word, Base::skip;
};

}  // namespace

TEST(ConverterFactory, CellNumbersSplitIntoLayerRowAndColumn) {
    OpenFactory f;
    f.nrow = 2;
    f.ncol = 3;
    const std::pair<int, std::array<int, 3>> cases[] = {
        {0, {0, 0, 0}}, {-4, {0, 0, 0}}, {5, {0, 1, 2}}, {7, {1, 0, 1}}, {2147483647, {357913941, 0, 1}}};
    for (const auto& [number, expected] : cases) {
        std::array<int, 3> place{-1, -1, -1};
        f.get_cell_pos(number, place[0], place[1], place[2]);
        EXPECT_EQ(place, expected) << number;
    }
}

TEST(ConverterFactory, CornerNodesAreActiveBesideACellWithFlagOne) {
    OpenFactory f;
    f.nrow = f.ncol = 2;
    VXArray<int> active(4, 1, 1, 1);
    active(3, 0, 0, 0) = 1;
    active(0, 0, 0, 0) = 2;
    std::string found;
    for (int n = 0; n < 9; ++n) found += f.node_active(n / 3, n % 3, 0, active) ? '1' : '0';
    EXPECT_EQ(found, "000011011");
}

TEST(ConverterFactory, CellCentreIsTurnedThenMoved) {
    OpenFactory f;
    f.ncol = 1;
    VXArray<double> elevations(1, 2, 1, 1), corners(2, 2, 1, 2);
    elevations(0, 0, 0, 0) = 10.0;
    elevations(0, 1, 0, 0) = 4.0;
    for (const int n : {0, 1}) corners(1, n, 0, 0) = 6.0, corners(n, 1, 0, 1) = 2.0;
    VXArray<int> active;
    double x = 0.0, y = 0.0, z = 0.0;
    EXPECT_TRUE(f.cell_center(x, y, z, elevations, corners, active, 90.0, 100.0, 200.0, 1.0, 0, 0, 0));
    EXPECT_NEAR(x, 99.0, 1e-12);
    EXPECT_NEAR(y, 203.0, 1e-12);
    EXPECT_NEAR(z, 8.0, 1e-12);
}

TEST(ConverterFactory, ExtentsIncludeTheirEdges) {
    OpenFactory f;
    EXPECT_TRUE(f.check_extents(1e9, 1e9));
    f.crop_to_extents = true;
    f.x_max = f.y_max = 10.0;
    EXPECT_TRUE(f.check_extents(10.0, 0.0));
    EXPECT_FALSE(f.check_extents(10.1, 0.0) || f.check_extents(std::nan(""), 0.0));
}

TEST(ConverterFactory, RecordsAndWordsAreReadFromUnitStreams) {
    const plx::test::TempFolder folder;
    folder.write("data.txt", "1 2\n3\n");
    const std::string text =
        folder.write("control.txt", "CONSTANT 2.5 rest\nOPEN/CLOSE data.txt 2.0(FREE) -1\r\n'a b',c\n");
    OpenFactory f;
    f.project_file = VXFile(folder.file("model.nam").c_str());
    FILE* stream = std::fopen(text.c_str(), "rb");
    VX1DArray<double> values;
    const std::string trace = plx::test::capture_stdout([&] {
        values.SetSize(3, 0.0);
        f.parse_record(stream, values);
        EXPECT_EQ(values[2], 2.5);
        f.parse_record(stream, values);
    });
    EXPECT_EQ(values[0], 2.0);
    EXPECT_EQ(values[2], 6.0);
    EXPECT_NE(trace.find("[OPEN/CLOSE\t"), std::string::npos);
    String word;
    EXPECT_EQ(f.read_word(stream, word, false, true, false, 0), 1);
    EXPECT_TRUE(word == "a b");
    std::fclose(stream);
}

TEST(ConverterFactory, SkipPassesLinesThenWordsAndTellsWhenTheTextEnds) {
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
        OpenFactory f;
        VXFileReader reader;
        reader.Open(path.c_str());
        EXPECT_EQ(plx::test::capture_stdout([&] { EXPECT_EQ(f.skip(reader, c.words, c.lines), c.result); }),
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
