#include "plxutils/gms/GMStoPLX.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "gms/message_list.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using plx::test::MessageList;
using Lines = MessageList::Lines;

class Project : public testing::Test {
protected:
    /// Reads a text project with these bytes; no builder runs.
    Lines parse(const std::string& bytes) {
        GMStoPLX_Set_Project(converter.get(), folder.write("p.gpr", bytes).c_str());
        GMStoPLX_Object_Types(converter.get(), 0, 0, 0, 0, 0, 0, 0, 0, 0);
        MessageList::lines().clear();
        GMStoPLX_parse_project(converter.get());
        return MessageList::take();
    }
    /// What came between the introduction and the end of the project file.
    Lines parsed_lines(const std::string& bytes) {
        Lines lines = parse(bytes);
        const auto first = std::find(lines.begin(), lines.end(), "S:Parsing Project file.\n\n");
        EXPECT_NE(first, lines.end());
        return first == lines.end() ? lines : Lines(first + 1, lines.end());
    }
    FileBuilder& builder(const std::string& name) {
        if (name == "modflow") return converter->modflow;
        if (name == "mt3d") return converter->mt3d;
        if (name == "femwater") return converter->femwater;
        if (name == "image") return converter->image;
        if (name == "scat3d") return converter->scat3d;
        if (name == "scat2d") return converter->scat2d;
        if (name == "grid2d") return converter->grid2d;
        return name == "tin" ? static_cast<FileBuilder&>(converter->tin) : converter->borehole;
    }

    plx::test::TempFolder folder;
    MessageList log;
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
    EXPECT_EQ(MessageList::take(), Lines{});
    const std::string prefix = "E:GMStoPLX : set_destination - [";
    const std::string invalid = "] Invalid Directory Name!\n";
    const std::vector<std::pair<std::string, std::string>> refused = {
        {file, "] Path leads to file, not directory!\n"},
        {folder.file("no"), invalid},
        {out + "/", invalid},
        {"", invalid}};
    for (const auto& [path, complaint] : refused) {
        GMStoPLX_Set_Destination(converter.get(), path.c_str());
        EXPECT_EQ(MessageList::take(), Lines{prefix + path + complaint});
        EXPECT_EQ(converter->destination.GetFilePath(), kept.c_str());
    }
    GMStoPLX_Set_Destination(converter.get(), nullptr);
    EXPECT_EQ(MessageList::take(), Lines{prefix + invalid});
}

TEST_F(Project, BareNamesAreInThePresentFolder) {
    const fs::path before = fs::current_path();
    fs::create_directory(folder.file("out"));
    fs::current_path(folder.path());
    GMStoPLX_Set_Destination(converter.get(), "out");
    GMStoPLX_Set_Project(converter.get(), "Site.gpr");
    fs::current_path(before);
    EXPECT_EQ(MessageList::take(), Lines{});
    EXPECT_EQ(converter->destination.GetFilePath(), ".\\out");
    EXPECT_EQ(converter->projectSource.GetFilePath(), ".\\site.gpr");
}

TEST_F(Project, MissingProjectAndDestinationAreToldAndTheRunGoesOn) {
    EXPECT_TRUE(converter->parse_header());
    EXPECT_EQ(MessageList::take(),
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
                 {5, -1, false}, {nan, 5, true}, {5, nan, true},         {nan, 11, false},  {inf, 5, false},
                 {5, 5, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.x << " " << c.y);
        GMStoPLX_Extents(converter.get(), 1, 0, 0, 10, 10);
        EXPECT_EQ(converter->InExtents(c.x, c.y), c.inside);
        GMStoPLX_Extents(converter.get(), 0, 0, 0, 10, 10);
        EXPECT_TRUE(converter->InExtents(c.x, c.y));
    }
}

TEST_F(Project, KeywordsHandTheirFileToBuilders) {
    const struct {
        const char *word, *message;
        std::vector<std::string> builders;
    } cases[] = {{"MODFLOW", "MODFLOW", {"modflow", "mt3d"}},
                 {"MT3D", "MT3D", {"mt3d"}},
                 {"FEMWATER", "FEMWATER", {"femwater"}},
                 {"FEMWSOL", "FEMWATER", {"femwater"}},
                 {"PTK", "PTK", {"modflow"}},
                 {"TIN", "TIN", {"tin"}},
                 {"MODFSOL", "MODFLOW", {"modflow"}},
                 {"MT3DSOL", "MODFLOW", {"modflow"}},
                 {"IMAGE", "IMAGE", {"image"}},
                 {"IMG", "GMS 5.0 IMG", {"image"}},
                 {"SCAT3D", "SCAT3D", {"scat3d"}},
                 {"SCAT2D", "SCAT2D", {"scat2d"}},
                 {"GRID2D", "GRID2D", {"grid2d"}},
                 {"BHOLE", "BOREHOLE", {"borehole"}},
                 {"MAT", "MAT", {"borehole"}},
                 {"mt3d", "", {}},
                 {"GMSPROJECT", "", {}}};
    const char* const all[] = {"modflow", "mt3d",   "femwater", "image",   "scat3d",
                               "scat2d",  "grid2d", "tin",      "borehole"};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.word);
        converter.reset(GMStoPLX_new());
        const std::string line = std::string(c.word) + " \"Sub\\My File.XY\", 3";
        Lines expected{"S:" + line};
        if (*c.message)
            expected.push_back("S:" + std::string(c.message) + " file detected! Sub\\My File.XY\n");
        expected.insert(expected.end(), {"S:", kRead});
        EXPECT_EQ(parsed_lines(line + "\n"), expected);
        const std::string path =
            std::string(converter->projectSource.GetDirectoryName().c_str()) + "\\Sub\\My File.XY";
        for (const char* name : all) {
            const auto& files = builder(name).sourceFiles;
            const bool added = std::count(c.builders.begin(), c.builders.end(), name) == 1;
            ASSERT_EQ(files.size(), added ? 1U : 0U) << name;
            if (added) {
                EXPECT_STREQ(files[0].c_str(), path.c_str());
            }
        }
    }
}

TEST_F(Project, LastLineWithoutBreakIsEchoedOnly) {
    const std::vector<std::pair<std::string, Lines>> cases = {
        {"", {"S:", kRead}},
        {"TIN a.tin", {"S:TIN a.tin", kRead}},
        {"100%n%s\n\n# none\n", {"S:100%n%s", "S:", kRead}},
        {"# note", {"S:# note", kRead}},
        {",,\r\n  x y\r\n", {"S:,,", "S:x y", "S:", kRead}},
        {"TIN a.tin\rTIN b.tin\n", {"S:TIN a.tin\rTIN b.tin", "S:TIN file detected! a.tin\n", "S:", kRead}}};
    for (const auto& [bytes, expected] : cases) {
        SCOPED_TRACE(bytes);
        EXPECT_EQ(parsed_lines(bytes), expected);
    }
    EXPECT_EQ(converter->tin.sourceFiles.size(), 1U);
}

TEST_F(Project, DamagedGzipEndsTheReadingOnce) {
    const std::string header("\x1f\x8b\x08\0\0\0\0\0\0\3", 10);
    const Lines lines = parsed_lines(header + "\xff\xff\xff\xff damaged beyond repair");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "S:");
    EXPECT_NE(lines[1].find("is damaged after line 0"), std::string::npos) << lines[1];
    EXPECT_EQ(lines[2], kRead);
}

TEST_F(Project, CompleteNamesAreTakenAsTheyAre) {
    parse("TIN /data/A.tin\nTIN \\data\\B.tin\nTIN c:\\C.tin\nTIN\n");
    const auto& files = converter->tin.sourceFiles;
    ASSERT_EQ(files.size(), 4U);
    EXPECT_STREQ(files[0].c_str(), "/data/A.tin");
    EXPECT_STREQ(files[1].c_str(), "\\data\\B.tin");
    EXPECT_STREQ(files[2].c_str(), "c:\\C.tin");
    EXPECT_EQ(files[3], converter->projectSource.GetDirectoryName() + "\\");
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
    char buffer[20];
    converter->ReadUnitsValue("Length Units", "none", buffer);
    EXPECT_STREQ(buffer, "none");
    parse("STNGS Site.ini\n");
    converter->ReadUnitsValue("length units", "none", buffer);
    EXPECT_STREQ(buffer, "ft");
    converter->ReadUnitsValue("Time Units", "", buffer);
    EXPECT_STREQ(buffer, "a very long unit in");
    converter->ReadUnitsValue("Mass Units", nullptr, buffer);
    EXPECT_STREQ(buffer, "");
}

TEST_F(Project, SecondParseAppendsAndDatasetsAreReadWithAllKindsOff) {
    folder.write("d.dat", "DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 1\nND 1\nNAME depth\nTS 0 0\n2\nENDDS\n");
    for (std::size_t times = 1; times <= 2; ++times) {
        const Lines lines = parse("TIN a.tin\nDATA d.dat\n");
        EXPECT_EQ(converter->tin.sourceFiles.size(), times);
        EXPECT_EQ(converter->dataSets.size(), times);
        EXPECT_EQ(lines.back(), kRead) << "no builder runs";
        EXPECT_EQ(MessageList::errors(), Lines{});
    }
}
