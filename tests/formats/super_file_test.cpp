#include "formats/super_file.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

using namespace plx;
using namespace plx::test;

namespace {

/// What was read, in short.
std::string summary(const SuperFile& s) {
    std::string text;
    const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : "; ") + part; };
    if (!s.name_file.empty()) add("name " + s.name_file.substr(s.name_file.find_last_of('\\') + 1));
    if (s.x_reversed || s.y_reversed || s.z_reversed)
        add(std::string("reversed ") + (s.x_reversed ? "x" : "") + (s.y_reversed ? "y" : "") +
            (s.z_reversed ? "z" : ""));
    if (s.origin) {
        const auto& [x, y, z] = *s.origin;
        add("origin " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z));
    }
    if (s.rotation) add("rotation " + std::to_string(*s.rotation));
    if (s.start_date) add("date " + std::to_string(*s.start_date));
    if (!s.length_units.empty()) add("units " + s.length_units + "|" + s.time_units);
    if (s.default_material) add("default " + std::to_string(*s.default_material));
    for (const int material : s.materials) add("material " + std::to_string(material));
    if (s.unstructured) add("unstructured");
    for (const SuperFile::Fault& fault : s.faults)
        add((fault.kind == SuperFile::Fault::Kind::kDate ? "bad date: " : "bad place: ") + fault.line);
    return text;
}

}  // namespace

TEST(SuperFile, CardsAreReadInEveryForm) {
    const std::pair<std::string, std::string> cases[] = {
        {"MF2KSUP\r\nNAME   99 \"My run.mfn\"\r\n", "name My run.mfn"},
        {"NAME run.mfn\nNAME\n", "name run.mfn"},
        {"name 99 run.mfn\n", ""},
        {"IJK -y +x -z\n", "reversed yz"},
        {"IJK -x y -Z\n", "reversed x"},
        {"ORIG 480899.5 4709996.25 -1019.5\n", "origin 480899.500000 4709996.250000 -1019.500000"},
        {"ROTZ 342.5\n", "rotation 342.500000"},
        {"ORIG 1 2\nROTZ 5\n", "bad place: ORIG 1 2"},
        {"  ROTZ east\nDMAT 4\n", "bad place: ROTZ east"},
        {"REFTIME 1999 12 31 12 0 0\n", "date 36525.500000"},
        {"REFTIME  s 0 1900 1 1 0 0 0\n", "date 2.000000"},
        {"REFTIME 1999 12 31 noon 0 0\nDMAT 4\n", "default 4; bad date: REFTIME 1999 12 31 noon 0 0"},
        {"REFTIME 1999 12 31\n", "bad date: REFTIME 1999 12 31"},
        {"UNITS ft d\n", "units ft|d"},
        {"UNITS \"m\"\t\"d\r\t\"g\"\n", "units m|d"},
        {"UNITS \"m\"\t\"yr\"\t\"mg\"\t\"mg/l\"\n", "units m|yr"},
        {"DMAT 1\nMPSC 1 0 0\n", "default 1"},
        {"MAT\n1 2\n3\nMPSC 1 0 0\n4\n", "material 1; material 2; material 3"},
        {"MAT\n7\nUNITS ft d\n8\n", "units ft|d; material 7"},
        {"# GMSVERS 8.2\nLAYER   1\n      3.5       4.5 \nROTZ 3 # turned\n", "rotation 3.000000"},
        {"MF2K5SUP\nMFPRECISION SINGLE\nROTZ 1\n", "rotation 1.000000"},
        {"MFUSGSUP\nNAME 99 run.mfn\n", "unstructured"},
        {"", ""}};
    const TempFolder folder;
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        SuperFile super;
        Problems problems;
        const std::string path = folder.write("a.mfs", text);
        ASSERT_TRUE(read_super_file(VXFile(path.c_str()), super, problems));
        EXPECT_EQ(summary(super), expected);
        EXPECT_EQ(problems.size(), super.faults.size());
    }
}

TEST(SuperFile, ProblemsNameTheLine) {
    const TempFolder folder;
    const std::string path = folder.write("a.mfs", "MF2KSUP\n# none\nDMAT clay\nMAT\n1 sand\nROTZ x\n");
    SuperFile super;
    Problems problems;
    ASSERT_TRUE(read_super_file(VXFile(path.c_str()), super, problems));
    EXPECT_EQ(problems, (Problems{"a.mfs: line 3: DMAT has no material number",
                                  "a.mfs: line 5: material \"sand\" is no number",
                                  "a.mfs: line 6: ROTZ is no angle: ROTZ x"}));
    EXPECT_FALSE(read_super_file(VXFile(folder.file("b.mfs").c_str()), super, problems));
}
