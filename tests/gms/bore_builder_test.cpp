#include <gtest/gtest.h>

#include "gms/small_project.h"
#include "support/hdf5_file.h"

namespace {

using plx::test::Only;
using plx::test::SmallProject;

const std::string kAnnounced = "S:Converting Bore data to PGF files.\n\n";
const std::string kWritten = "S:Writing BORE Output files : \nS:   BOR_B_1.pgf";
const std::string kMaterials = "MAT\nMN 4 \"fine sand\"\nMN 1 clay\nMN 2 silt\n";
const std::string kBores =
    "BEGH\nNAME \"bore one\"\nCONT 3\n0 0 10 4\n0 0 5 7\n0 0 1 2\nENDH\n"
    "BEGH\nNAME two\nNOTE\nCONT 1\n4 4 9.5 1\n";

const std::string kBad = "E:Bore : Write_file - Error reading ";

TEST(BOREbuilder, TextProjectAndItsDamages) {
    const std::string title = "GMStoPLX generated pgf file\nElevation ", layers = "clay silt fine_sand \n";
    const std::string both = title + layers +
                             "4 1\n0.000000 0.000000 10.000000 0 bore_one\n"
                             "0.000000 0.000000 1.000000 2 bore_one\n4.000000 4.000000 9.500000 1 two\n";
    const std::string none = "(none)";
    const struct {
        std::string materials, bores, messages, file;
    } cases[] = {
        {kMaterials, kBores, kWritten, both},
        {kMaterials + "MN\n", kBores,
         "E:Bore : Parse_Mat - Material number error [] in file [FOLDER\\a.mat].\n" + kWritten, both},
        {"MAT\n", "BEGH\nNAME x\nCONT -5\n", kWritten, title + "\n0 1\n"},
        {kMaterials, "BEGH\nNAME x\nENDH\n", kWritten, title + layers + "0 1\n"},
        {kMaterials, "BEGH\nNAME x\nCONT\n", kBad + "CONT [] in bore file\n", none},
        {kMaterials, "BEGH\nNAME x\nCONT 1\n1 2\n", kBad + "Bore hole data [1] [2] [] [].\n", none},
        {kMaterials, "BEGH\nNAME x\nCONT 2000000000\n1 2 3 1\n", kBad + "Bore hole data [] [] [] [].\n",
         none},
        {kMaterials, "BEGH\nNAME x\nCONT 1\n1 2 3\n", kBad + "Bore hole material data []\n", none},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.materials + c.bores);
        const SmallProject project;
        project.folder.write("a.mat", c.materials);
        project.folder.write("B 1.bor", c.bores);
        project.folder.write("p.gpr", "BHOLE old.bor\nMAT a.mat\nBHOLE \"B 1.bor\"\nBHOLE c.BOR\n");
        const std::string messages = project.convert("p.gpr", Only::kBorehole);
        const std::string folder = project.stored("a.mat").substr(0, project.stored("a.mat").rfind('\\'));
        EXPECT_EQ(plx::test::replaced(messages, folder, "FOLDER"), kAnnounced + c.messages);
        EXPECT_EQ(project.output("bor_b_1.pgf"), c.file);
    }
    const SmallProject project;
    project.folder.write("a.mat", kMaterials);
    for (const auto& [files, messages] :
         {std::pair{"#\n", "S:Project contains no BORE data, conversion complete.\n"},
          {"BHOLE a.bor\n",
           "E:Bore : Parse_Mat - Error opening \nE:Bore : Write_file - No material data, returning \n"},
          {"MAT a.mat\n", "E:Bore : Write_file - Error opening \n"}}) {
        project.folder.write("p.gpr", files);
        EXPECT_EQ(project.convert("p.gpr", Only::kBorehole), kAnnounced + messages);
    }
}

TEST(BOREbuilder, Hdf5BoresShareOutTheContacts) {
    const struct {
        std::vector<int> counts;
        std::vector<std::string> names;
        std::size_t z_values;
        std::vector<std::string> expected;  // names, one for each contact
    } cases[] = {
        {{2, 1}, {"B 1", "B\t2"}, 3, {"B_1", "B_1", "B_2"}},
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
            plx::test::Hdf5Writer file(project.folder.file("p.h5"));
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
                  kAnnounced + "S:Writing BORE Output files : \nS:   bor.pgf");
        std::string expected = "# GMStoPLX generated .pgf file\nElevation fine_sand clay rock \n" +
                               std::to_string(c.expected.size()) + " 1\n";
        for (std::size_t i = 0; i < c.expected.size(); ++i) expected += contacts[i] + c.expected[i] + "\n";
        EXPECT_EQ(project.output("bor.pgf"), expected);
    }
}

}  // namespace
