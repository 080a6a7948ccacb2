#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <filesystem>

#include "gms/small_project.h"
#include "support/gms_bytes.h"

namespace {

using namespace plx::test;

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
        const TempFolder folder;
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
    const std::string quad = "quad_and_triangle_", id = "Dataset id 0.03 | ", face = "; cells 11]";
    const struct {
        std::string file, start, values = {}, cells = {};
    } cases[] = {
        {"lines_vertex_vector", "ok [VertexVector" + id + "0:", " 1,1,0 2,1,0 3,2,0 2,2,0", "; cells 111]"},
        {quad + "els_scalar", kBadData + "[FaceScalar" + id + "3600:", " 1 2", face},
        {quad + "els_vector", kBadData + "[FaceVector" + id + "60:", " 1,1,0 2,2,0", face},
        {quad + "vertex_scalar_tabs", "ok [VertexScalar" + id + "0:", " 1 2 3 2 1", face},
        {quad + "vertex_vector", "ok [VertexVector" + id + "0:", " 1,1,0 2,1,0 3,2,0 2,2,0 1,-2,0", face},
        {quad + "vertex_vector_old", kMissing + "VECTOR\n"}};
    const std::filesystem::path folder = PLX_TEST_DATA "/../../../shared/models/dat_ascii";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << folder << " is not there";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        const std::string path = std::filesystem::weakly_canonical(folder / (c.file + ".dat")).string();
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, false), c.start + c.cells);
        EXPECT_EQ(outcome(plx::read_ascii_datasets, path, true), c.start + c.values + c.cells);
    }
}

GmsBytes full_file(bool markers) {
    GmsBytes bytes(markers);
    bytes.head(130).ints({150, 2}).end().sizes(2, 3).name("heads");
    bytes.put(195).put(2.5).ints({0, 0, 0, 0, 0, 0, 0, 0}).end();
    bytes.ints({220, 1}).end().ints({230, 1}).end();
    bytes.put(197).ints({0, 0, 0, 0, 0, 0, 0, 0, 0}).end();
    bytes.step(0, 1.0F, "", {1.5F, 2}).step(1, 2.0F, {0, 1, 5}, {3, 4}).step(0, 3.0F, "", {5, 6});
    return bytes.close();
}

const std::string kFull = "[heads id 3.01 | 1: 1.5 2; cells 111 | 2: 3 4; cells 011 | 3: 5 6; cells 011]";
const std::string kParse = "E:GMStoPLX : read_binary - Error Parsing Data ";

std::string invalid(const std::string& card) {
    return "E:GMStoPLX : read_binary - Invalid Card [" + card + "] found in P\n";
}
std::string own(const std::string& message) { return "E:GMStoPLX : data_parse - " + message + "\n"; }

TEST(BinaryDatasets, CompleteFilesNewerOnesAndDamagedOnes) {
    GmsBytes vectors(false), doubles(false), two(true), planar(false), open_end(true), cards(true);
    GmsBytes many(false), cells(false), size(false), unset(false);
    vectors.head(140).sizes(1, 0).step(0, 1.0F, "", {1, 2, 3}).close();
    doubles.ints({3000, 100, 7, 120, 2, 110, 8, 130, 160, 1, 170, 2, 180, -5});
    doubles.put(200).put(std::int16_t{-1}).put(9.25).put(1e-3).put(1e300).ints({999}).close();
    two.head(130).sizes(1, 0).step(0, 1.0F, "", {1}).close().ints({4, 130}).end().ints({160, 4}).end();
    two.sizes(1, 0).step(0, 1.0F, "", {2}).step(0, 1.0F, "", {3}).close();
    planar.head(140).sizes(2, 0).step(0, 1.0F, "", {1, 2, 3, 4}).step(0, 2.0F, "", {5, 6, 7, 8}).close();
    open_end.head(130).sizes(1, 0).step(0, 1.0F, "", {1}).step(0, 2.0F, "", {2});
    open_end.text.resize(open_end.text.size() - 4);
    GmsBytes unfinished = open_end;
    unfinished.text.resize(unfinished.text.size() - 6);
    cards.put(28).ints({3000, 100, 8, 110, 4, 120, 1}).end().put(250).put(1).end().put(130).end();
    cards.put(240).put(2433282.5).end().put(250).put(2).end().sizes(1, 0).step(0, 1.0F, "", {7}).close();
    many.head(140).sizes(2000000000, 2000000000).name("big").put(200).put('\0').floats({1, 1, 2, 3, 4});
    cells.head(130).sizes(0, 2000000000).put(200).put('\1').put(1.0F).put('\1');
    size.ints({3000, 110, 5, 120, 1, 130, 220});
    unset.ints({3000, 130, 200, 0});
    const struct {
        GmsBytes bytes;
        bool lenient;
        std::string expected;
    } cases[] = {{full_file(false), false, "ok " + kFull},
                 {full_file(true), false, "ok " + kFull},
                 {full_file(true), true, "ok " + kFull},
                 {doubles, false, "ok [ id 1.07 | 9.25: 0.001 1e+300]"},
                 {vectors, false, "ok [ id 3.01 | 1: 1,2,3]"},
                 {two, false, "ok " + invalid("4") + "[ id 3.01 | 1: 1][ id 4.01 | 1: 3]"},
                 {planar, true, "ok [ id 3.01 | 1: 1,2,0 3,4,0 | 2: 5,6,0 7,8,0]"},
                 {open_end, true, "ok [ id 3.01 | 1: 1 | 2: 2]"},
                 // An unfinished step is told and left out, those before it stay.
                 {unfinished, true,
                  "failed " + own("Invalid Data Value") + "E:Dataset  data value [0][0]\n" + kParse +
                      "file : P\n[ id 3.01 | 1: 1]"},
                 {cards, true, "ok [ id 0.08 | 1: 7]"},
                 {cards, false,
                  "ok " + invalid("250") + invalid("1") + invalid("0") + invalid("0") + "[ id 0.08 | 1: 7]"},
                 {many, false,
                  "failed " + own("Invalid Data Value") + "E:Dataset big data value [1][1]\n" + kParse +
                      "Set : P\n[big id 3.01 | 1: 1,2,3; cells 1111111111]"},
                 {cells, false,
                  "failed " + own("Invalid Cell Status") + kParse + "file : P\n[ id 3.01 | 1:; cells 1]"},
                 {size, false,
                  "failed E:read_double_value : size 5 not supported\n" +
                      own("Invalid ACTTS Value 0.000000") + kParse + "file : P\n[ id 0]"},
                 {unset, false,
                  "failed E:read_double_value : size 0 not supported\n" + own("Invalid Reference Time") +
                      kParse + "file : P\n[ id 0]"}};
    const TempFolder folder;
    for (const auto& c : cases) {
        const std::string path = folder.write("set.bin", c.bytes.text), packed = folder.file("set.gz");
        EXPECT_EQ(outcome(plx::read_binary_datasets, path, c.lenient), c.expected);
        const gzFile gz = gzopen(packed.c_str(), "wb");
        gzwrite(gz, c.bytes.text.data(), static_cast<unsigned>(c.bytes.text.size()));
        gzclose(gz);
        EXPECT_EQ(outcome(plx::read_binary_datasets, packed, c.lenient), c.expected) << "packed";
    }
}

TEST(BinaryDatasets, CutAnywhereItSaysWhatIsMissing) {
    GmsBytes bytes(true);
    bytes.head(130).sizes(1, 1).step(1, 1.0F, "\1", {1}).close();
    const TempFolder folder;
    std::string complaints, last = "none";
    for (std::size_t n = 0; n < bytes.text.size(); ++n) {
        const std::string path = folder.write("cut" + std::to_string(n), bytes.text.substr(0, n));
        const std::string result = outcome(plx::read_binary_datasets, path, false);
        const std::size_t dash = result.find(" - ");
        EXPECT_EQ(result.starts_with("ok "), dash == std::string::npos) << n;
        const std::string complaint =
            dash == std::string::npos ? "" : result.substr(dash + 3, result.find('\n') - dash - 3);
        if (complaint != last) complaints += complaint + "\n";
        last = complaint;
    }
    const std::string unended = "Error Parsing Data file : P\n", block = "Missing block bytes for block ";
    EXPECT_EQ(complaints,
              "Invalid Version number in P\nUnsupported Version number 28 in P\n\nInvalid Type in P\n\n"
              "Invalid Floating Type size in P\n\nInvalid status flag size in P\n" +
                  block + "120 \n\n" + block + "130\n" + unended + "Invalid Object ID\n" + block + "160\n" +
                  unended + "Invalid Number of data values\n" + block + "170\n" + unended +
                  "Invalid Number of cells\n" + block + "180\n" + unended +
                  "Invalid Reference Time\nInvalid Time Size Time\n" + block + "200\nInvalid Cell Status\n" +
                  "Invalid Data Value\n" + block + "200\n" + unended + block + "200\n");
}

}  // namespace
