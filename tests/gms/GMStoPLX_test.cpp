#include "plxutils/gms/GMStoPLX.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "gms/small_project.h"

namespace {

namespace fs = std::filesystem;
using plx::test::Lines;
using plx::test::MessageLog;

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

    plx::test::TempFolder folder;
    MessageLog log;
    plx::test::Converter converter{GMStoPLX_new()};
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
    folder.write("d.dat", plx::test::ascii_dataset("tin", 1, "depth", "2\n", 1));
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
