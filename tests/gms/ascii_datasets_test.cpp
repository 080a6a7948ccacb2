#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "gms/small_project.h"

namespace {

using plx::test::outcome;

const std::string kHead = "DATASET\nOBJTYPE tin\n";
const std::string kScalar = kHead + "BEGSCL\nOBJID 3\nND 2\nNC 2\nNAME \"the depth\"\n";
const std::string kError = "failed E:GMStoPLX : read_ascii - ";
const std::string kMissing = kError + "Missing -DATASET- in data file ";
const std::string kNotReached = kError + "End of Data values not reached\n";
const std::string kBadData = kError + "Invalid Number of Data components\n";
const std::string kBadCells = kError + "Invalid Number of Cell components\n";

TEST(AsciiDatasets, StepsHeadersAndStrayLines) {
    const struct {
        std::string text, prescribed, lenient;
    } cases[] = {
        {kScalar + "TS 0 5.0\n1\n2\nENDDS\n", "ok [the depth id 3.01 | 5: 1 2; cells 11]", ""},
        {kScalar + "TS 1 5.0\n0\n7\n1 9 9\n2,5\nENDDS", "ok [the depth id 3.01 | 5: 1 2; cells 01]", ""},
        {kScalar + "TS 01 5.0\n1\nx\nENDDS\n", "ok [the depth id 3.01 | 5: 1 0; cells 11]", ""},
        {kScalar + "TS 1 5\n0\n1\n1\n2\nTS 0 6\n3\n4\nTS 0 5\n5\n6\nENDDS\n",
         kNotReached + "[the depth id 3.01 | 5: 1 2; cells 01]",
         "ok [the depth id 3.01 | 5: 5 6; cells 01 | 6: 3 4; cells 01]"},
        {kScalar + "TS 7\n1\n2\nENDDS\n", "ok [the depth id 3.01 | 0: 1 2; cells 11]",
         "ok [the depth id 3.01 | 7: 1 2; cells 11]"},
        {kHead + "BEGVEC\nND 1\nTS 0 0\n1 2 3 4 5 6 7 8 9\nENDDS\nBEGSCL\nND 1\nTS 0 1\n8\nENDDS\n",
         "ok [ id 0.01 | 0: 1,2,3][ id 0.01 | 1: 8]", ""},
        {kHead + "BEGVEC\nND 1\nTS 0 0\n1 2\nENDDS\n", kBadData + "[ id 0.01 | 0:]",
         "ok [ id 0.01 | 0: 1,2,0]"},
        {"", kMissing + "\n", ""},
        {"SCALAR\nND 1\n", kMissing + "SCALAR\n", ""},
        {"DATASET\nND 1\n", kError + "Missing -OBJTYPE- in data file\n", ""},
        {kHead, "ok ", ""},
        {kHead + "REFTIME 2.5\nBEGSCL\nACTTS\nOBJID 4\n", "ok [ id 4.01]", ""},
        {kHead + "RT_JULIAN 9\nBEGSCL\nND 2\nTS 0 1\n3\n4\nENDDS\n", "ok [ id 0.01 | 1:]",
         "ok [ id 0.01 | 1: 3 4]"},
        {kScalar + "TS 0 5\n1\nENDDS\n", kNotReached + "[the depth id 3.01 | 5: 1 0; cells 11]",
         kBadData + "[the depth id 3.01 | 5: 1; cells 11]"},
        {kScalar + "TS 0 5\n1\n,,\nENDDS\n", kBadData + "[the depth id 3.01 | 5: 1; cells 11]", ""},
        {kScalar + "TS 1 5\n1\n", kBadCells + "[the depth id 3.01 | 5:; cells 1]", ""},
        {kHead + "BEGSCL\nND -4\nNC -2\nTS 1 0\nENDDS\n", "ok [ id 0.01 | 0:]", ""},
        {kHead + "BEGSCL\nND 2000000000\nNC 1e30\nTS 1 0\n1\n", kBadCells + "[ id 0.01 | 0:; cells 1]", ""},
        {kHead + "BEGSCL\nNAME " + std::string(5000, 'n') + "\n",
         "ok [" + std::string(1023, 'n') + " id 0.01]", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const plx::test::TempFolder folder;
        const std::string path = folder.write("set.dat", c.text);
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, false), c.prescribed);
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, true),
                  c.lenient.empty() ? c.prescribed : c.lenient);
        // Cut anywhere it ends with a message or in success.
        for (std::size_t n = 0; n < std::min(c.text.size(), std::size_t{200}); ++n) {
            const std::string cut = folder.write("cut" + std::to_string(n), c.text.substr(0, n));
            const std::string result = outcome(plx::read_ascii_datasets, cut, n % 2 == 1);
            EXPECT_EQ(result.starts_with("failed "), result.starts_with(kError)) << n;
        }
    }
}

// A card before the first block turns it into one without values, which loses them silently; newer programs
// write such cards. Datasets of elements hold fewer values than they announce.
TEST(AsciiDatasets, PublishedFilesUnderBothSettings) {
    const std::string quad = "quad_and_triangle_", face = "; cells 11", ok = "ok ";
    const struct {
        std::string file, result, start, values, cells;
    } cases[] = {{"lines_vertex_vector", ok, "VertexVector 0:", " 1,1,0 2,1,0 3,2,0 2,2,0", face + "1"},
                 {quad + "els_scalar", kBadData, "FaceScalar 3600:", " 1 2", face},
                 {quad + "els_vector", kBadData, "FaceVector 60:", " 1,1,0 2,2,0", face},
                 {quad + "vertex_scalar_tabs", ok, "VertexScalar 0:", " 1 2 3 2 1", face},
                 {quad + "vertex_vector", ok, "VertexVector 0:", " 1,1,0 2,1,0 3,2,0 2,2,0 1,-2,0", face},
                 {"mesh_with_numbering_gaps_scalar", kMissing, "SCALAR", "", ""},
                 {quad + "vertex_vector_old", kMissing, "VECTOR", "", ""}};
    const std::filesystem::path folder = PLX_TEST_DATA "/../../../shared/models/dat_ascii";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << folder << " is not there";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        const std::string path = std::filesystem::weakly_canonical(folder / (c.file + ".dat")).string();
        const std::string head = "[" + plx::test::replaced(c.start, " ", "Dataset id 0.03 | "),
                          tail = c.cells + "]";
        const bool sets = !c.cells.empty();
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, false),
                  c.result + (sets ? head + tail : c.start + "\n"));
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, true),
                  c.result + (sets ? head + c.values + tail : c.start + "\n"));
    }
}

}  // namespace
