#include "plxutils/gms/GMStoPLX.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "gms/small_project.h"
#include "support/capture_stdout.h"

namespace {

namespace fs = std::filesystem;
using namespace plx::test;

class Project : public testing::Test {
protected:
    /// Reads a text project with these bytes; no builder runs.
    Lines parse(const std::string& bytes) {
        GMStoPLX_Set_Project(converter.get(), folder.write("p.gpr", bytes).c_str());
        GMStoPLX_Object_Types(converter.get(), 0, 0, 0, 0, 0, 0, 0, 0, 0);
        MessageLog::lines().clear();
        GMStoPLX_parse_project(converter.get());
        return MessageLog::take();
    }
    /// What came between the introduction and the end of the project file.
    Lines parsed_lines(const std::string& bytes) {
        const Lines lines = parse(bytes);
        const auto first = std::find(lines.begin(), lines.end(), "S:Parsing Project file.\n\n");
        return first == lines.end() ? lines : Lines(first + 1, lines.end());
    }

    TempFolder folder;
    MessageLog log;
    Converter converter{GMStoPLX_new()};
};

const std::string kRead = "S:- Project file read - Converting files\n";

}  // namespace

TEST_F(Project, DestinationMustBeAFolder) {
    const std::string file = folder.write("a.txt", "x"), out = folder.file("out");
    const String here = VXFile(folder.path().string().c_str()).GetFilePath();
    fs::create_directory(out);
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    GMStoPLX_Set_Project(converter.get(), "Site.gpr");
    EXPECT_EQ(converter->projectSource.GetFilePath(), ".\\site.gpr");
    const std::string prefix = "E:GMStoPLX : set_destination - [", invalid = "] Invalid Directory Name!\n";
    const struct {
        std::string path, complaint;
        String kept;
    } cases[] = {{"out", "", ".\\out"},
                 {out, "", here + "\\out"},
                 {file, "] Path leads to file, not directory!\n", here + "\\out"},
                 {folder.file("no"), invalid, here + "\\out"},
                 {out + "/", invalid, here + "\\out"},
                 {"", invalid, here + "\\out"},
                 // The folder itself; a file's name behind the dots would lead elsewhere.
                 {folder.file("."), "", here},
                 {out + "/..", "", here}};
    for (const auto& c : cases) {
        GMStoPLX_Set_Destination(converter.get(), c.path.c_str());
        EXPECT_EQ(MessageLog::take(), c.complaint.empty() ? Lines{} : Lines{prefix + c.path + c.complaint});
        EXPECT_EQ(converter->destination.GetFilePath(), c.kept) << c.path;
    }
    fs::current_path(before);
}

TEST_F(Project, MissingProjectAndDestinationAreToldAndTheRunGoesOn) {
    EXPECT_TRUE(converter->parse_header());
    EXPECT_EQ(MessageLog::take(),
              (Lines{"E:GMStoPLX : parse_header - Project source must be set before parsing\n",
                     "E:GMStoPLX : parse_header - Destination folder must be set before parsing\n",
                     "S:Opening file", "S:", "S:New file type"}));
}

TEST_F(Project, ExtentsIncludeTheirEdges) {
    const double nan = std::nan(""), below = -1e-9, above = 10.0000001;
    const std::pair<double, double> points[] = {{10, 10},   {0, 0},     {nan, 5},   {5, nan}, {above, 5},
                                                {below, 5}, {5, above}, {5, below}, {nan, 11}};
    std::string inside;
    for (const int cropped : {1, 0}) {
        GMStoPLX_Extents(converter.get(), cropped, 0, 0, 10, 10);
        for (const auto& [x, y] : points) inside += converter->InExtents(x, y) ? '1' : '0';
    }
    EXPECT_EQ(inside, "111100000111111111");
}

TEST_F(Project, KeywordsHandTheirFileToBuilders) {
    const struct {
        std::string word, message, builders;
    } cases[] = {{"MODFLOW", "MODFLOW", "FT"},  {"MT3D", "MT3D", "T"},
                 {"FEMWATER", "FEMWATER", "E"}, {"FEMWSOL", "FEMWATER", "E"},
                 {"PTK", "PTK", "F"},           {"TIN", "TIN", "t"},
                 {"MODFSOL", "MODFLOW", "F"},   {"MT3DSOL", "MODFLOW", "F"},
                 {"IMAGE", "IMAGE", "I"},       {"IMG", "GMS 5.0 IMG", "I"},
                 {"SCAT3D", "SCAT3D", "3"},     {"SCAT2D", "SCAT2D", "2"},
                 {"GRID2D", "GRID2D", "G"},     {"BHOLE", "BOREHOLE", "B"},
                 {"MAT", "MAT", "B"},           {"mt3d", "", ""},
                 {"GMSPROJECT", "", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.word);
        converter.reset(GMStoPLX_new());
        const std::string line = c.word + " \"Sub\\My File.XY\", 3";
        Lines expected{"S:" + line};
        if (!c.message.empty()) expected.push_back("S:" + c.message + " file detected! Sub\\My File.XY\n");
        expected.insert(expected.end(), {"S:", kRead});
        EXPECT_EQ(parsed_lines(line + "\n"), expected);
        const String path = converter->projectSource.GetDirectoryName() + "\\Sub\\My File.XY";
        const std::pair<char, FileBuilder*> all[] = {
            {'F', &converter->modflow}, {'T', &converter->mt3d},   {'E', &converter->femwater},
            {'I', &converter->image},   {'3', &converter->scat3d}, {'2', &converter->scat2d},
            {'G', &converter->grid2d},  {'t', &converter->tin},    {'B', &converter->borehole}};
        std::string builders;
        for (const auto& [letter, builder] : all)
            for (const String& file : builder->sourceFiles) builders += file == path ? letter : '?';
        EXPECT_EQ(builders, c.builders);
    }
}

TEST_F(Project, LastLineWithoutBreakIsEchoedOnly) {
    const std::pair<std::string, Lines> cases[] = {
        {"", {"S:", kRead}},
        {"TIN a.tin", {"S:TIN a.tin", kRead}},
        {"100%n%s\n\n# none\n", {"S:100%n%s", "S:", kRead}},
        {"# note", {"S:# note", kRead}},
        {",,\r\n  x y\r\n", {"S:,,", "S:x y", "S:", kRead}},
        {"TIN a.tin\rTIN b.tin\n", {"S:TIN a.tin\rTIN b.tin", "S:TIN file detected! a.tin\n", "S:", kRead}}};
    for (const auto& [bytes, expected] : cases) EXPECT_EQ(parsed_lines(bytes), expected) << bytes;
    EXPECT_EQ(converter->tin.sourceFiles.size(), 1U);
}

TEST_F(Project, DamagedGzipEndsTheReadingOnce) {
    const Lines lines =
        parsed_lines(std::string("\x1f\x8b\x08\0\0\0\0\0\0\3", 10) + "\xff\xff damaged beyond repair");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_NE(lines[1].find("is damaged after line 0"), std::string::npos) << lines[1];
    EXPECT_EQ(lines[2], kRead);
}

TEST_F(Project, CompleteNamesAreTakenAsTheyAreAndDatasetsReadWithAllKindsOff) {
    folder.write("d.dat", ascii_dataset("tin", 1, "depth", "2\n", 1));
    for (std::size_t times = 1; times <= 2; ++times) {
        const Lines lines = parse("TIN /data/A.tin\nTIN \\data\\B.tin\nTIN c:\\C.tin\nTIN\nDATA d.dat\n");
        EXPECT_EQ(converter->dataSets.size(), times);
        EXPECT_EQ(lines.back(), kRead) << "no builder runs";
        const auto& files = converter->tin.sourceFiles;
        const String names[] = {"/data/A.tin", "\\data\\B.tin", "c:\\C.tin",
                                converter->projectSource.GetDirectoryName() + "\\"};
        ASSERT_EQ(files.size(), 4 * times);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_STREQ(files[i].c_str(), names[i].c_str());
    }
}

TEST_F(Project, SettingsGiveUnits) {
    folder.write("Site.ini", "[Units]\nLength Units=\"ft\"\nTime Units=a very long unit indeed\n");
    parse("STNGS Site.ini\n");
    for (const auto& [key, expected] :
         {std::pair{"length units", "ft"}, {"Time Units", "a very long unit in"}, {"Mass Units", ""}}) {
        char buffer[20];
        converter->ReadUnitsValue(key, nullptr, buffer);
        EXPECT_STREQ(buffer, expected);
    }
}

TEST_F(Project, AddsDatasetsOfEitherKindBesideTheProject) {
    const std::string text = "DATASET\nOBJTYPE grid2d\nBEGSCL\nOBJID 1\nNAME a\n";
    const std::string absolute = folder.write("Text.dat", text), error = "E:GMStoPLX : ";
    folder.write("broken.dat", text + "TS 0 0\n");
    folder.write("plain.bin", std::string("\xb8\x0b\0\0", 4));
    folder.write("records.bin", std::string("\x1c\0\0\0\0\0\0\0", 8));
    GMStoPLX_Set_Project(converter.get(), folder.file("quarry.gpr").c_str());
    const std::pair<std::string, std::string> cases[] = {
        {"Text.dat", "S:DATA file added! Text.dat\n"},
        {absolute, "S:DATA file added! " + absolute + "\n"},
        {"plain.bin", "S:DATA file added! plain.bin\n"},
        {"gone.dat", error + "read_binary - Error opening gone.dat for input\n"},
        {"", error + "read_binary - Error opening  for input\n"},
        {"records.bin", error + "Add_Dataset - Error adding binary dataset records.bin\n"},
        {"broken.dat", error + "read_ascii - End of Data values not reached\n" + error +
                           "Add_Dataset - Error adding ascii dataset broken.dat\n"}};
    for (const auto& [name, expected] : cases) {
        MessageLog::lines().clear();
        EXPECT_EQ(converter->AddDataSet(name.c_str()), expected[0] == 'S') << name;
        EXPECT_TRUE(MessageLog::text().ends_with(expected)) << MessageLog::text();
    }
    EXPECT_EQ(converter->CountDataSets(1.04), 3);
    EXPECT_EQ(converter->CountDataSets(1.05), 0);
    EXPECT_EQ(converter->FindDataSet(2, 1.04 + 5e-7), converter->dataSets.at(2).get());
    for (const int index : {3, -1}) EXPECT_EQ(converter->FindDataSet(index, 1.04), nullptr);
}

TEST_F(Project, ReadsLittleEndianNumbersOfEachSize) {
    VXInputFile file;
    const std::string bytes("\xff\xfe\xff\xfd\xff\xff\xff\0\0\x20\x40\0\0\0\0\0\0\xf0\xbf\1", 20);
    ASSERT_TRUE(file.Open(folder.write("n.bin", bytes).c_str()));
    double value = 0;
    for (const auto& [size, expected] : {std::pair{1, 255.0}, {2, -2.0}, {4, -3.0}, {6, 2.5}, {8, -1.0}})
        EXPECT_TRUE(converter->ReadValue(file, size, value) && value == expected) << size;
    for (const int size : {4, 3}) EXPECT_FALSE(converter->ReadValue(file, size, value));
    EXPECT_EQ(MessageLog::text(), "E:read_double_value : size 3 not supported\n");
    EXPECT_EQ(value, -1);
}

TEST_F(Project, TakesTheFirstStepOrTheNearest) {
    const double nan = std::nan(""), infinity = std::numeric_limits<double>::infinity();
    GMSDataSet set;
    EXPECT_EQ(converter->StepOf(set), nullptr);
    for (const double time : {nan, 5.0, nan, 1.0, 3.0, 5.0})
        set.timeSteps.Set(std::make_unique<TimeStep>(1, time));
    EXPECT_EQ(set.timeSteps.GetCount(), 5);
    EXPECT_EQ(converter->StepOf(set), set.timeSteps.GetAt(0));
    const std::pair<double, int> cases[] = {{5, 1}, {9e9, 1}, {-1, 3},       {2, 3},
                                            {4, 1}, {3.5, 4}, {infinity, 0}, {nan, 0}};
    for (const auto& [chosen, index] : cases) {
        GMStoPLX_Choose_Time(converter.get(), 1, chosen);
        EXPECT_EQ(converter->StepOf(set), set.timeSteps.GetAt(index)) << chosen;
    }
}

TEST(TimeStep, RowsStayAddressedWhileTheyGrow) {
    TimeStep step(2, 0.0);
    for (int i = 0; i < 1000; ++i) step.AddRows(1)[1] = -i;
    step.KeepRows(999);
    step.AddRows(1)[0] = 7;
    for (int i = 0; i < 999; ++i) ASSERT_TRUE(step.Value(i, 1) == -i && step.values[i][1] == -i) << i;
    EXPECT_EQ(step.Value(999, 0), 7);
    for (const auto& [row, component] : {std::pair(1000, 0), {-1, 0}, {0, 2}, {0, -1}})
        EXPECT_EQ(step.Value(row, component), -1.0e9);
}

TEST(GMSDataSet, TellsStandardOutputOfItsEnd) {
    EXPECT_EQ(capture_stdout([] { GMSDataSet().SetName("a b\0c", 5); }), "DataSet a b deleted\n");
}
