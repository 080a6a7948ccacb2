#include <gtest/gtest.h>

#include "gms/small_project.h"
#include "support/hdf5_file.h"

namespace {

using plx::test::ascii_dataset;
using plx::test::Only;
using plx::test::SmallProject;

const std::string kAnnounced = "S:Converting 2D Scatter Point data to GMF files.\n\n";
const std::string kWriting = "S:Writing 2D Scatterpoint Output files : \n";
const std::string kBad = "E:2D Scatter Point : Write_File - Error reading grid xy defintions.";
const std::string kSet = "BEGSET\nNAME \"my set\"\nID 3\nIXY 2\n1 10 20\n2 30,40\nENDSET\n";
const std::string kSurface =
    "# GMStoPLX generated .gmf file\nSurface 1\n10.000000 20.000000 5.500000\n30.000000 40.000000 6.000000\n";

TEST(SCAT2Dbuilder, LastXyFileOfATextProjectAndItsSets) {
    const std::string written = "S:   2DS_my_set_head.gmf";
    const struct {
        std::string files, text, messages;
    } cases[] = {
        {"SCAT2D b.xy\n", kSet, kWriting + written},
        {"SCAT2D a.xy\nSCAT2D b.xy\nSCAT2D c.XY\n", kSet, kWriting + written},
        {"SCAT2D b.xy\n", "BEGSET\nID 4\nIXY -1\nENDSET\n" + kSet,
         kWriting + "E:2D Scatter Point : Write_File - No Data associated with data set ID[4.050000].\n" +
             written},
        {"SCAT2D b.xy\n", kSet + "BEGSET\nIXY 2\n1 2 3\n2 3\nENDSET\n" + kSet, kWriting + written + kBad},
        {"SCAT2D b.xy\n", "BEGSET\nIXY 2000000000\n1 2 3\n", kWriting + kBad},
        {"SCAT2D b.xy\n", "BEGSET\nIXY\n" + kSet, kWriting + kBad},
        {"SCAT2D b.xy\n", "BEGSET\nID 3\n",
         kWriting + "E:2D Scatter Point : Write_File - File [P] ends inside a set, which is not converted\n"},
        {"SCAT2D b.XY\n", kSet, "E:2D Scatter point file (.xy) does not exist\n"},
        {"", kSet, "S:Project contains no 2D Scatter Point data, conversion complete.\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.files + c.text);
        const SmallProject project;
        project.folder.write("a.xy", "BEGSET\nID 3\nENDSET\n");
        project.folder.write("b.xy", c.text);
        project.folder.write("t.dat", ascii_dataset("tin", 3, "of a tin", "1\n2\n", 2));
        project.folder.write("h.dat", ascii_dataset("scat2d", 3, "head", "5.5\n6\n", 2));
        project.folder.write("p.gpr", c.files + "DATA t.dat\nDATA h.dat\n");
        const std::string messages = project.convert("p.gpr", Only::kScat2d);
        EXPECT_EQ(plx::test::replaced(messages, project.stored("b.xy"), "P"), kAnnounced + c.messages);
        const bool converted = c.messages.find(written) != std::string::npos;
        EXPECT_EQ(project.output("2ds_my_set_head.gmf"), converted ? kSurface : "(none)");
    }
}

TEST(SCAT2Dbuilder, Hdf5SetsNeedTwoColumnsOnly) {
    const SmallProject project;
    {
        plx::test::Hdf5Writer file(project.folder.file("p.h5"));
        const std::string module = "2DScatterModule/";
        file.strings(module + "a/PROPERTIES/Name", {"my set"});
        file.doubles(module + "a/Nodes/NodeLocs", {2, 2}, {10, 20, 30, 40});
        file.doubles(module + "a/Datasets/head/Values", {2}, {5.5, 6});
        file.doubles(module + "a/Datasets/..\\up/Values", {1}, {1});
    }
    EXPECT_EQ(project.convert("p.h5", Only::kScat2d),
              kAnnounced + "E:2D Scatter Point : Write_File - Unable to open output file [" +
                  project.stored("out") + "\\2DS_my_set_..\\up.gmf]\n" + "S:   2DS_my_set_head.gmf");
    EXPECT_EQ(project.output("2ds_my_set_head.gmf"), kSurface);
}

}  // namespace
