#include <gtest/gtest.h>

#include "gms/small_project.h"
#include "support/hdf5_file.h"

namespace {

using plx::test::ascii_dataset;
using plx::test::Only;
using plx::test::SmallProject;

const std::string kAnnounced = "S:Converting TIN data into GMF and PLX Field files.\n";
const std::string kNodes = "VERT 3\n0 0 1.5\n4 0 2.5\n0 3 -3\n";
const std::string kTin = "TIN\nBEGT\nTNAM \"my tin\"\nID 3\n" + kNodes + "TRI 1\n1 2 3\nENDT\n";
const std::string kSurface = "# GMStoPLX generated .gmf file\nSurface 1\n";

TEST(TINbuilder, TextDatasetShorterThanItsTinIsFilledUp) {
    const SmallProject project;
    project.folder.write("a.tin", kTin);
    project.folder.write("b.tin", "BEGT\nTNAM other\nENDT\n");
    project.folder.write("h.dat", ascii_dataset("tin", 3, "head of all", "7\n8\n", 2));
    project.folder.write("s.dat", ascii_dataset("scat2d", 3, "scatter", "1\n", 1));
    project.folder.write("p.gpr", "TIN a.tin\nTIN b.tin\nDATA s.dat\nDATA h.dat\n");
    EXPECT_EQ(project.convert("p.gpr", Only::kTin),
              kAnnounced + "S:Writing TIN Output files : \nS:   tin_my_tin_elevation.gmf" +
                  "S:   tin_my_tin_elevation.pffS:   my_tin_head_of_all.gmf");
    EXPECT_EQ(project.output("my_tin_head_of_all.gmf"),
              kSurface + "0.000000 0.000000 7.000000\n4.000000 0.000000 8.000000\n" +
                  "0.000000 3.000000 -1000000000.000000\n");
}

TEST(TINbuilder, Hdf5ProjectGivesSurfacesAndField) {
    const SmallProject project;
    {
        plx::test::Hdf5Writer file(project.folder.file("p.h5"));
        const std::string group = "TINModule/hill/";
        file.strings(group + "PROPERTIES/Name", {"my hill"});
        file.doubles(group + "Nodes/NodeLocs", {3, 3}, {0, 0, 1.5, 4, 0, 2.5, 0, 3, -3});
        file.ints(group + "Elements/Nodeids", {1, 3}, {1, 2, 3});
        file.doubles(group + "Datasets/wet/Values", {4}, {7, 8, 9, 10});
        file.strings("Ini/Names", {"Units", "Length Units"});
        file.strings("Ini/Values", {"", "yd"});
    }
    const std::string messages =
        kAnnounced + "S:   TIN_my_hill_wet.gmfS:   TIN_my_hill_elevation.gmfS:   TIN_my_hill_elevation.";
    const auto plain = [](GMStoPLX* converter) { GMStoPLX_Compress(converter, 0); };
    EXPECT_EQ(project.convert("p.h5", Only::kTin, plain), messages + "pff");
    const std::string field = project.output("tin_my_hill_elevation.pff");
    for (const char* part : {"0 \"Elevation\" \"Linear_ft\" IN_FILE\n", "1 \"wet\" \"yd\" IN_FILE\n",
                             "\n1.500000 7.000000 \n2.500000 8.000000 \n-3.000000 9.000000 \nCELL_SET_DEF"})
        EXPECT_NE(field.find(part), std::string::npos) << part;
    const auto subfolders = [](GMStoPLX* converter) { GMStoPLX_Use_Subfolders(converter, 1); };
    EXPECT_EQ(project.convert("p.h5", Only::kTin, subfolders), messages + "pfz");
    EXPECT_EQ(project.output("TINS/tin_my_hill_elevation.pfz").substr(0, 2), "\x1f\x8b");
}

TEST(TINbuilder, DamagedTinsAreReportedAndTheNextOneFollows) {
    const std::string lonely = "S:No Data for this TIN [], using triangle coordinates only.\n";
    const std::string rest =
        "S:No Data for this TIN [my tin], using triangle coordinates only.\n"
        "S:Writing TIN Output files : \nS:   tin_my_tin_elevation.gmf"
        "S:   tin_my_tin_elevation.pff";
    const std::string bad_points = "E:TINS : Write_File - Error reading xyz coordinates from file.";
    const std::string bad_triangles =
        "E:TINS : Write_File - Error reading xyz triangle coordinates from file.";
    const struct {
        std::string text, messages;
    } cases[] = {
        {kTin, rest},
        {"BEGT\nVERT 2\n1 2 3\n1 2\nENDT\n" + kTin, lonely + bad_points + rest},
        {"BEGT\nVERT 2000000000\n1 2 3\n" + kTin, lonely + bad_points + rest},
        {"BEGT\nVERT\nENDT\n" + kTin, lonely + bad_points + rest},
        {"BEGT\n" + kNodes + "TRI 2\n1 2 3\nENDT\n" + kTin, lonely + bad_triangles + rest},
        {"BEGT\n" + kNodes + "TRI\n" + kTin, lonely + bad_triangles + rest},
        {kTin + "BEGT\n" + kNodes, rest + lonely + bad_triangles},
        {kTin + "BEGT\nTNAM cut\nID 5\n",
         rest + "E:TINS : Write_File - File [P] ends inside a TIN, which is not converted\n"},
        {"no TIN at all\n", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const SmallProject project;
        project.folder.write("a.tin", c.text);
        project.folder.write("p.gpr", "TIN a.tin\n");
        const std::string messages = project.convert("p.gpr", Only::kTin);
        EXPECT_EQ(plx::test::replaced(messages, project.stored("a.tin"), "P"), kAnnounced + c.messages);
    }
}

TEST(TINbuilder, TrianglesOfNodesThatAreNotThereAreLeftOut) {
    const SmallProject project;
    const std::string triangles = "TRI 5\n1 2 3\n0 1 2\n1 2 4\n3 2 x\n3 2 1\nENDT\n";
    project.folder.write("a.tin", "BEGT\nTNAM t\n" + kNodes + triangles);
    project.folder.write("p.gpr", "TIN a.tin\n");
    EXPECT_NE(project.convert("p.gpr", Only::kTin)
                  .find("E:TINS : Write_File - TIN [t]: 3 of its triangles left out, they name nodes"),
              std::string::npos);
    const std::string field = project.output("tin_t_elevation.pff");
    EXPECT_EQ(field.substr(field.find("CELL_SET_DEF")),
              "CELL_SET_DEF 0 2 Tri \"TIN\" IN_FILE\nCELL_START\n0 1 2\n2 1 0\n");
}

TEST(TINbuilder, WhatCannotBeOpened) {
    const SmallProject project;
    const std::string out = project.stored("out");
    project.folder.write("empty.gpr", "# nothing\nX\n");
    EXPECT_EQ(project.convert("empty.gpr", Only::kTin),
              kAnnounced + "S:Project contains no TIN data, conversion complete.\n");
    project.folder.write("p.gpr", "TIN none.tin\n");
    EXPECT_EQ(project.convert("p.gpr", Only::kTin).substr(0, kAnnounced.size() + 32),
              kAnnounced + "E:Error opening project file [c:");
    for (const std::string& name : {std::string("..\\..\\x"), std::string("c:x"), std::string(200, 'n')}) {
        project.folder.write("none.tin", "BEGT\nTNAM " + name + "\nENDT\n");
        const std::string complaint =
            "E:TINS : Write_File - Unable to open output file [" + out + "\\tin_" + name + "_elevation.";
        EXPECT_EQ(project.convert("p.gpr", Only::kTin), kAnnounced + "S:Writing TIN Output files : \n" +
                                                            complaint + "gmf]\n" + complaint + "pff]\n");
    }
    project.folder.write("none.tin", "BEGT\nTNAM a\nENDT\n");
    const auto nowhere = [](GMStoPLX* converter) { converter->destination = VXFile(); };
    EXPECT_NE(project.convert("p.gpr", Only::kTin, nowhere).find("file [\\tin_a_elevation.gmf]"),
              std::string::npos);
}

TEST(UnconvertedBuilders, TellWhatTheyLeaveOut) {
    const SmallProject project;
    project.folder.write("p.gpr", "SCAT3D sub/a.sp3\nSCAT3D b.sp3\n");
    EXPECT_EQ(project.convert("p.gpr", Only::kScat3d),
              "S:3-D scatter points are not converted yet: a.sp3, b.sp3\n");
    plx::test::Hdf5Writer(project.folder.file("p.h5")).group("3DScatterModule/wells");
    EXPECT_EQ(project.convert("p.h5", Only::kScat3d),
              "S:3-D scatter points are not converted yet: /3DScatterModule/wells\n");
}

}  // namespace
