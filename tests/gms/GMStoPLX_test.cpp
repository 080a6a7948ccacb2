#include "plxutils/gms/GMStoPLX.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

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
    fs::create_directory(out);
    GMStoPLX_Set_Destination(converter.get(), out.c_str());
    const std::string kept = converter->destination.GetFilePath().c_str();
    EXPECT_TRUE(kept.ends_with("\\out")) << kept;
    EXPECT_EQ(MessageLog::take(), Lines{});
    const std::string prefix = "E:GMStoPLX : set_destination - [", invalid = "] Invalid Directory Name!\n";
    for (const std::string& path : {file, folder.file("no"), out + "/", std::string()}) {
        GMStoPLX_Set_Destination(converter.get(), path.c_str());
        const std::string complaint = path == file ? "] Path leads to file, not directory!\n" : invalid;
        EXPECT_EQ(MessageLog::take(), Lines{prefix + path + complaint});
        EXPECT_EQ(converter->destination.GetFilePath(), kept.c_str());
    }
}

TEST_F(Project, BareNamesAreInThePresentFolder) {
    const fs::path before = fs::current_path();
    fs::create_directory(folder.file("out"));
    fs::current_path(folder.path());
    GMStoPLX_Set_Destination(converter.get(), "out");
    GMStoPLX_Set_Project(converter.get(), "Site.gpr");
    fs::current_path(before);
    EXPECT_EQ(converter->destination.GetFilePath(), ".\\out");
    EXPECT_EQ(converter->projectSource.GetFilePath(), ".\\site.gpr");
    // Both are the folder itself; a file's name behind the dots would lead elsewhere.
    for (const std::string& dots : {folder.file("."), folder.file("out/..")}) {
        GMStoPLX_Set_Destination(converter.get(), dots.c_str());
        EXPECT_EQ(converter->destination.GetFilePath(), VXFile(folder.path().c_str()).GetFilePath()) << dots;
    }
}

TEST_F(Project, MissingProjectAndDestinationAreToldAndTheRunGoesOn) {
    EXPECT_TRUE(converter->parse_header());
    EXPECT_EQ(MessageLog::take(),
              (Lines{"E:GMStoPLX : parse_header - Project source must be set before parsing\n",
                     "E:GMStoPLX : parse_header - Destination folder must be set before parsing\n",
                     "S:Opening file", "S:", "S:New file type"}));
}

TEST_F(Project, ExtentsIncludeTheirEdges) {
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    const struct {
        double x, y;
        bool inside;
    } cases[] = {{10, 10, true}, {0, 0, true},   {10.0000001, 5, false}, {-1e-9, 5, false}, {5, 10.1, false},
                 {5, -1, false}, {nan, 5, true}, {5, nan, true},         {nan, 11, false},  {inf, 5, false}};
    for (const auto& c : cases) {
        GMStoPLX_Extents(converter.get(), 1, 0, 0, 10, 10);
        EXPECT_EQ(converter->InExtents(c.x, c.y), c.inside) << c.x << " " << c.y;
        GMStoPLX_Extents(converter.get(), 0, 0, 0, 10, 10);
        EXPECT_TRUE(converter->InExtents(c.x, c.y));
    }
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
        for (const auto& [letter, builder] : all) {
            const bool added = c.builders.find(letter) != std::string::npos;
            ASSERT_EQ(builder->sourceFiles.size(), added ? 1U : 0U) << letter;
            if (added) {
                EXPECT_STREQ(builder->sourceFiles[0].c_str(), path.c_str());
            }
        }
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
        ASSERT_EQ(files.size(), 4 * times);
        EXPECT_STREQ(files[0].c_str(), "/data/A.tin");
        EXPECT_STREQ(files[1].c_str(), "\\data\\B.tin");
        EXPECT_STREQ(files[2].c_str(), "c:\\C.tin");
        EXPECT_EQ(files[3], converter->projectSource.GetDirectoryName() + "\\");
    }
}

TEST_F(Project, OptionsAreToldFirst) {
    GMStoPLX_Use_Subfolders(GMStoPLX_Compress(converter.get(), 0), 2);
    GMStoPLX_Extents(converter.get(), 1, -1.5, 2, 1234567.25, 4);
    GMStoPLX_Set_Destination(converter.get(), folder.path().c_str());
    Lines lines = parse("");
    lines[1] = "path";
    EXPECT_EQ(lines,
              (Lines{"S:Opening file", "path", "S:Old file type", "S:file opened normally\n",
                     "S:Organizing output into subfolders.", "S:Using uncompressed .pff file format.",
                     "S:Cropping data to extents:", "S:Xmin:\t        -1.5000\tYmin:\t         2.0000\n",
                     "S:Xmax:\t   1234567.2500\tYmax:\t         4.0000\n", "S:" + std::string(60, '_') + "\n",
                     "S:Parsing Project file.\n\n", "S:", kRead}));
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
