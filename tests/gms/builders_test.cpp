#include <gtest/gtest.h>

#include "gms/small_project.h"
#include "support/hdf5_file.h"

namespace {

using namespace plx::test;

const std::string kTins = "S:Converting TIN data into GMF and PLX Field files.\n";
const std::string kNodes = "VERT 3\n0 0 1.5\n4 0 2.5\n0 3 -3\n";
const std::string kTinHead = "TIN\nBEGT\nTNAM \"my tin\"\nID 3\n";
const std::string kTin = kTinHead + kNodes + "TRI 1\n1 2 3\nENDT\n";

TEST(TINbuilder, Hdf5ProjectGivesSurfacesAndField) {
    const SmallProject project;
    {
        Hdf5Writer file(project.folder.file("p.h5"));
        const std::string group = "TINModule/hill/";
        file.strings(group + "PROPERTIES/Name", {"my hill"});
        file.doubles(group + "Nodes/NodeLocs", {3, 3}, {0, 0, 1.5, 4, 0, 2.5, 0, 3, -3});
        file.ints(group + "Elements/Nodeids", {1, 3}, {1, 2, 3});
        file.doubles(group + "Datasets/wet/Values", {4}, {7, 8, 9, 10});
        file.strings("Ini/Names", {"Units", "Length Units"});
        file.strings("Ini/Values", {"", "yd"});
    }
    const std::string messages =
        kTins + "S:   TIN_my_hill_wet.gmfS:   TIN_my_hill_elevation.gmfS:   TIN_my_hill_elevation.";
    EXPECT_EQ(project.convert("p.h5", Only::kTin), messages + "pfz");
    EXPECT_EQ(project.output("tin_my_hill_elevation.pfz").substr(0, 2), "\x1f\x8b");
    const auto options = [](GMStoPLX* converter) {
        GMStoPLX_Use_Subfolders(GMStoPLX_Compress(converter, 0), 1);
    };
    EXPECT_EQ(project.convert("p.h5", Only::kTin, options), messages + "pff");
    const std::string field = project.output("TINS/tin_my_hill_elevation.pff");
    for (const char* part : {"0 \"Elevation\" \"Linear_ft\" IN_FILE\n", "1 \"wet\" \"yd\" IN_FILE\n",
                             "\n1.500000 7.000000 \n2.500000 8.000000 \n-3.000000 9.000000 \nCELL_SET_DEF"})
        EXPECT_NE(field.find(part), std::string::npos) << part;
}

TEST(TINbuilder, FirstTinFileOfATextProjectAndItsDamages) {
    const std::string lonely = "S:No Data for this TIN [], using triangle coordinates only.\n";
    const std::string start = "S:Writing TIN Output files : \n";
    const std::string rest =
        "S:   tin_my_tin_elevation.gmfS:   tin_my_tin_elevation.pffS:   my_tin_head_of_all.gmf";
    const std::string error = "E:TINS : Write_File - ", whole = start + rest;
    const std::string bad_points = lonely + error + "Error reading xyz coordinates from file.";
    const std::string bad_triangles = lonely + error + "Error reading xyz triangle coordinates from file.";
    const std::string one_cell = "CELL_SET_DEF 0 1 Tri \"TIN\" IN_FILE\nCELL_START\n0 1 2\n";
    const struct {
        std::string text, messages, field_end = "(none)";
        std::string project = "TIN a.tin\nTIN b.tin\nDATA s.dat\nDATA h.dat\n";
    } cases[] = {
        {kTin, whole, one_cell},
        {kTinHead + kNodes + "TRI 5\n1 2 3\n0 1 2\n1 2 4\n3 2 x\n3 2 1\nENDT\n",
         start + error + "TIN [my tin]: 3 of its triangles left out, they name nodes that it lacks\n" + rest,
         "CELL_SET_DEF 0 2 Tri \"TIN\" IN_FILE\nCELL_START\n0 1 2\n2 1 0\n"},
        {"BEGT\nVERT 2\n1 2 3\n1 2\nENDT\n" + kTin, bad_points + whole, one_cell},
        {"BEGT\nVERT 2000000000\n1 2 3\n" + kTin, bad_points + whole, one_cell},
        {"BEGT\nVERT\nENDT\n" + kTin, bad_points + whole, one_cell},
        {"BEGT\n" + kNodes + "TRI 2\n1 2 3\nENDT\n" + kTin, bad_triangles + whole, one_cell},
        {"BEGT\n" + kNodes + "TRI\n" + kTin, bad_triangles + whole, one_cell},
        {kTin + "BEGT\n" + kNodes, whole + bad_triangles, one_cell},
        {kTin + "BEGT\nTNAM cut\nID 5\n",
         whole + error + "File [<folder>\\a.tin] ends inside a TIN, which is not converted\n", one_cell},
        {"no TIN at all\n", ""},
        {kTin, "S:Project contains no TIN data, conversion complete.\n", "(none)", "# nothing\nX\n"},
        {kTin, "E:Error opening project file [<folder>\\none.tin]!\n", "(none)", "TIN none.tin\n"},
    };
    const std::string surface =
        "# GMStoPLX generated .gmf file\nSurface 1\n0.000000 0.000000 7.000000\n4.000000 0.000000 8.000000\n"
        "0.000000 3.000000 -1000000000.000000\n";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text + c.project);
        // The dataset is shorter than its TIN and is filled up.
        const SmallProject project{{"a.tin", c.text},
                                   {"b.tin", "BEGT\nTNAM other\nENDT\n"},
                                   {"h.dat", ascii_dataset("tin", 3, "head of all", "7\n8\n", 2)},
                                   {"s.dat", ascii_dataset("scat2d", 3, "scatter", "1\n", 1)},
                                   {"p.gpr", c.project}};
        EXPECT_EQ(project.convert("p.gpr", Only::kTin), kTins + c.messages);
        EXPECT_TRUE(project.output("tin_my_tin_elevation.pff").ends_with(c.field_end));
        EXPECT_EQ(project.output("my_tin_head_of_all.gmf"), c.field_end == "(none)" ? "(none)" : surface);
    }
}

TEST(TINbuilder, OutputsThatCannotBeOpened) {
    const SmallProject project{{"p.gpr", "TIN a.tin\n"}};
    for (const std::string& name : {std::string("..\\..\\x"), std::string("c:x"), std::string(200, 'n')}) {
        project.folder.write("a.tin", "BEGT\nTNAM " + name + "\nENDT\n");
        const std::string complaint =
            "E:TINS : Write_File - Unable to open output file [<folder>\\out\\tin_" + name + "_elevation.";
        EXPECT_EQ(project.convert("p.gpr", Only::kTin),
                  kTins + "S:Writing TIN Output files : \n" + complaint + "gmf]\n" + complaint + "pff]\n");
    }
    project.folder.write("a.tin", "BEGT\nTNAM a\nENDT\n");
    const auto nowhere = [](GMStoPLX* converter) { converter->destination = VXFile(); };
    EXPECT_NE(project.convert("p.gpr", Only::kTin, nowhere).find("file [\\tin_a_elevation.gmf]"),
              std::string::npos);
}

TEST(UnconvertedBuilders, TellWhatTheyLeaveOut) {
    const SmallProject project{{"p.gpr", "SCAT3D sub/a.sp3\nSCAT3D b.sp3\n"}};
    EXPECT_EQ(project.convert("p.gpr", Only::kScat3d),
              "S:3-D scatter points are not converted yet: a.sp3, b.sp3\n");
    Hdf5Writer(project.folder.file("p.h5")).group("3DScatterModule/wells");
    EXPECT_EQ(project.convert("p.h5", Only::kScat3d),
              "S:3-D scatter points are not converted yet: /3DScatterModule/wells\n");
}

const std::string kBoreData = "S:Converting Bore data to PGF files.\n\n";
const std::string kBoresWritten = "S:Writing BORE Output files : \nS:   BOR_B_1.pgf";
const std::string kMaterials = "MAT\nMN 4 \"fine sand\"\nMN 1 clay\nMN 2 silt\n";
const std::string kBores =
    "BEGH\nNAME \"bore one\"\nCONT 3\n0 0 10 4\n0 0 5 7\n0 0 1 2\nENDH\n"
    "BEGH\nNAME two\nNOTE\nCONT 1\n4 4 9.5 1\n";
const std::string kBadBore = "E:Bore : Write_file - Error reading ";

TEST(BOREbuilder, TextProjectAndItsDamages) {
    const std::string title = "GMStoPLX generated pgf file\nElevation ", layers = "clay silt fine_sand \n";
    const std::string both = title + layers +
                             "4 1\n0.000000 0.000000 10.000000 0 bore_one\n"
                             "0.000000 0.000000 1.000000 2 bore_one\n4.000000 4.000000 9.500000 1 two\n";
    const struct {
        std::string materials, bores, messages, file = "(none)";
        std::string project = "BHOLE old.bor\nMAT a.mat\nBHOLE \"B 1.bor\"\nBHOLE c.BOR\n";
    } cases[] = {
        {kMaterials, kBores, kBoresWritten, both},
        {kMaterials + "MN\n", kBores,
         "E:Bore : Parse_Mat - Material number error [] in file [<folder>\\a.mat].\n" + kBoresWritten, both},
        {"MAT\n", "BEGH\nNAME x\nCONT -5\n", kBoresWritten, title + "\n0 1\n"},
        {kMaterials, "BEGH\nNAME x\nENDH\n", kBoresWritten, title + layers + "0 1\n"},
        {kMaterials, "BEGH\nNAME x\nCONT\n", kBadBore + "CONT [] in bore file\n"},
        {kMaterials, "BEGH\nNAME x\nCONT 1\n1 2\n", kBadBore + "Bore hole data [1] [2] [] [].\n"},
        {kMaterials, "BEGH\nNAME x\nCONT 2000000000\n1 2 3 1\n", kBadBore + "Bore hole data [] [] [] [].\n"},
        {kMaterials, "BEGH\nNAME x\nCONT 1\n1 2 3\n", kBadBore + "Bore hole material data []\n"},
        {kMaterials, kBores, "S:Project contains no BORE data, conversion complete.\n", "(none)", "#\n"},
        {kMaterials, kBores,
         "E:Bore : Parse_Mat - Error opening \nE:Bore : Write_file - No material data, returning \n",
         "(none)", "BHOLE \"B 1.bor\"\n"},
        {kMaterials, kBores, "E:Bore : Write_file - Error opening \n", "(none)", "MAT a.mat\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.materials + c.bores + c.project);
        const SmallProject project{{"a.mat", c.materials}, {"B 1.bor", c.bores}, {"p.gpr", c.project}};
        EXPECT_EQ(project.convert("p.gpr", Only::kBorehole), kBoreData + c.messages);
        EXPECT_EQ(project.output("bor_b_1.pgf"), c.file);
    }
}

TEST(BOREbuilder, Hdf5BoresShareOutTheContacts) {
    const struct {
        std::vector<int> counts;
        Lines names;
        std::size_t z_values;
        Lines expected;  // names, one for each contact
    } cases[] = {
        {{2, 1}, {"B 1", "../two\tor\r\nlines"}, 3, {"B_1", "B_1", "../two_or__lines"}},
        {{1, 0, 1}, {"a", "b"}, 3, {"a", "", ""}},
        {{-4, 2147483647, 5}, {"a", "b", "c", "d"}, 3, {"b", "b", "b"}},
        {{1, 2}, {"a", "b"}, 2, {"a", "b"}},
        {{}, {"a"}, 3, {"a", "a", "a"}},
        {{}, {}, 0, {}},
    };
    const std::string contacts[] = {"1.000000 4.000000 9.000000 1 ", "2.000000 5.000000 9.000000 0 ",
                                    "3.000000 6.000000 9.000000 -1 "};
    for (const auto& c : cases) {
        const SmallProject project;
        {
            Hdf5Writer file(project.folder.file("p.h5"));
            file.doubles("BoreholeModule/X Locations", {3}, {1, 2, 3});
            file.doubles("BoreholeModule/Y Locations", {4}, {4, 5, 6, 7});
            file.doubles("BoreholeModule/Z Locations", {c.z_values}, std::vector<double>(c.z_values, 9.0));
            file.ints("BoreholeModule/Material", {3}, {30, 10, 99});
            file.ints("BoreholeModule/Number of Contacts", {c.counts.size()}, c.counts);
            file.strings("BoreholeModule/Name", c.names);
            file.ints("Material/Id", {3}, {0, 10, 30});
            file.strings("Material/Name", {"none", "fine sand", "clay", "rock"});
        }
        EXPECT_EQ(project.convert("p.h5", Only::kBorehole),
                  kBoreData + "S:Writing BORE Output files : \nS:   bor.pgf");
        std::string expected = "# GMStoPLX generated .pgf file\nElevation fine_sand clay rock \n" +
                               std::to_string(c.expected.size()) + " 1\n";
        for (std::size_t i = 0; i < c.expected.size(); ++i) expected += contacts[i] + c.expected[i] + "\n";
        EXPECT_EQ(project.output("bor.pgf"), expected);
    }
}

const std::string kPoints = "S:Converting 2D Scatter Point data to GMF files.\n\n";
const std::string kWriting = "S:Writing 2D Scatterpoint Output files : \n";
const std::string kSet = "BEGSET\nNAME \"my set\"\nID 3\nIXY 2\n1 10 20\n2 30,40\nENDSET\n";
const std::string kSurface =
    "# GMStoPLX generated .gmf file\nSurface 1\n10.000000 20.000000 5.500000\n30.000000 40.000000 6.000000\n";

TEST(SCAT2Dbuilder, LastXyFileOfATextProjectAndItsSets) {
    const std::string written = "S:   2DS_my_set_head.gmf", error = "E:2D Scatter Point : Write_File - ";
    const std::string bad = kWriting + error + "Error reading grid xy defintions.";
    const struct {
        std::string text, messages, files = "SCAT2D b.xy\n";
    } cases[] = {
        {kSet, kWriting + written},
        {kSet, kWriting + written, "SCAT2D a.xy\nSCAT2D b.xy\nSCAT2D c.XY\n"},
        {"BEGSET\nID 4\nIXY -1\nENDSET\n" + kSet,
         kWriting + error + "No Data associated with data set ID[4.050000].\n" + written},
        {kSet + "BEGSET\nIXY 2\n1 2 3\n2 3\nENDSET\n" + kSet,
         kWriting + written + error + "Error reading grid xy defintions."},
        {"BEGSET\nIXY 2000000000\n1 2 3\n", bad},
        {"BEGSET\nIXY\n" + kSet, bad},
        {"BEGSET\nID 3\n",
         kWriting + error + "File [<folder>\\b.xy] ends inside a set, which is not converted\n"},
        {"BEGSET\nNAME s\nID 5\nIXY 0\nENDSET\n" + kSet,
         kWriting + error + "Unable to open output file [<folder>\\out\\2DS_s_..\\up.gmf]\n" + written},
        {kSet, "E:2D Scatter point file (.xy) does not exist\n", "SCAT2D b.XY\n"},
        {kSet, "S:Project contains no 2D Scatter Point data, conversion complete.\n", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.files + c.text);
        const SmallProject project{{"a.xy", "BEGSET\nID 3\nENDSET\n"},
                                   {"b.xy", c.text},
                                   {"t.dat", ascii_dataset("tin", 3, "of a tin", "1\n2\n", 2)},
                                   {"h.dat", ascii_dataset("scat2d", 3, "head", "5.5\n6\n", 2)},
                                   {"u.dat", ascii_dataset("scat2d", 5, "..\\up", "", 0)},
                                   {"p.gpr", c.files + "DATA t.dat\nDATA h.dat\nDATA u.dat\n"}};
        EXPECT_EQ(project.convert("p.gpr", Only::kScat2d), kPoints + c.messages);
        const bool converted = c.messages.find(written) != std::string::npos;
        EXPECT_EQ(project.output("2ds_my_set_head.gmf"), converted ? kSurface : "(none)");
    }
}

}  // namespace
