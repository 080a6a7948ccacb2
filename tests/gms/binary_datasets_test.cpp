#include <gtest/gtest.h>
#include <zlib.h>

#include "gms/small_project.h"
#include "support/gms_bytes.h"

namespace {

using plx::test::outcome;

using Bytes = plx::test::GmsBytes;

Bytes full_file(bool markers) {
    Bytes bytes(markers);
    bytes.head(130).ints({150, 2}).end().sizes(2, 3).name("heads");
    bytes.put(195).put(2.5).ints({0, 0, 0, 0, 0, 0, 0, 0}).end();
    bytes.ints({220, 1}).end().ints({230, 1}).end();
    bytes.put(197).ints({0, 0, 0, 0, 0, 0, 0, 0, 0}).end();
    bytes.step(0, 1.0F, "", {1.5F, 2}).step(1, 2.0F, {0, 1, 5}, {3, 4}).step(0, 3.0F, "", {5, 6});
    return bytes.close();
}

const std::string kFull = "[heads id 3.01 | 1: 1.5 2; cells 111 | 2: 3 4; cells 011 | 3: 5 6; cells 011]";
const std::string kParse = "E:GMStoPLX : read_binary - Error Parsing Data ";

std::string own(const std::string& message) { return "E:GMStoPLX : data_parse - " + message + "\n"; }

const std::string kEmpty = "file : P\n[ id 0]";
std::string unsupported(int size) {
    return "E:read_double_value : size " + std::to_string(size) + " not supported\n";
}

TEST(BinaryDatasets, CompleteFilesNewerOnesAndDamagedOnes) {
    Bytes vectors(false), doubles(false), two(true), planar(false), open_end(true), cards(true);
    Bytes many(false), cells(false), size(false), unset(false);
    vectors.head(140).sizes(1, 0).step(0, 1.0F, "", {1, 2, 3}).close();
    doubles.ints({3000, 100, 7, 120, 2, 110, 8, 130, 160, 1, 170, 2, 180, -5});
    doubles.put(200).put(std::int16_t{-1}).put(9.25).put(1e-3).put(1e300).ints({999}).close();
    two.head(130).sizes(1, 0).step(0, 1.0F, "", {1}).close().ints({4, 130}).end().ints({160, 4}).end();
    two.sizes(1, 0).step(0, 1.0F, "", {2}).step(0, 1.0F, "", {3}).close();
    planar.head(140).sizes(2, 0).step(0, 1.0F, "", {1, 2, 3, 4}).step(0, 2.0F, "", {5, 6, 7, 8}).close();
    open_end.head(130).sizes(1, 0).step(0, 1.0F, "", {1}).step(0, 2.0F, "", {2});
    open_end.text.resize(open_end.text.size() - 4);
    Bytes unfinished = open_end;
    unfinished.text.resize(unfinished.text.size() - 6);
    cards.put(28).ints({3000, 100, 8, 110, 4, 120, 1}).end().put(250).put(1).end().put(130).end();
    cards.put(240).put(2433282.5).end().put(250).put(2).end().sizes(1, 0).step(0, 1.0F, "", {7}).close();
    many.head(140).sizes(2000000000, 2000000000).name("big").put(200).put('\0').floats({1, 1, 2, 3, 4});
    cells.head(130).sizes(0, 2000000000).put(200).put('\1').put(1.0F).put('\1');
    size.ints({3000, 110, 5, 120, 1, 130, 220});
    unset.ints({3000, 130, 200, 0});
    const struct {
        Bytes bytes;
        bool lenient;
        std::string expected;
    } cases[] = {
        {full_file(false), false, "ok " + kFull},
        {full_file(true), false, "ok " + kFull},
        {full_file(true), true, "ok " + kFull},
        {doubles, false, "ok [ id 1.07 | 9.25: 0.001 1e+300]"},
        {vectors, false, "ok [ id 3.01 | 1: 1,2,3]"},
        {two, false,
         "ok E:GMStoPLX : read_binary - Invalid Card [4] found in P\n[ id 3.01 | 1: 1][ id 4.01 | 1: 3]"},
        {planar, true, "ok [ id 3.01 | 1: 1,2,0 3,4,0 | 2: 5,6,0 7,8,0]"},
        {open_end, true, "ok [ id 3.01 | 1: 1 | 2: 2]"},
        // An unfinished step is told and left out, those before it stay.
        {unfinished, true,
         "failed " + own("Invalid Data Value") + "E:Dataset  data value [0][0]\n" + kParse +
             "file : P\n[ id 3.01 | 1: 1]"},
        {cards, true, "ok [ id 0.08 | 1: 7]"},
        {many, false,
         "failed " + own("Invalid Data Value") + "E:Dataset big data value [1][1]\n" + kParse +
             "Set : P\n[big id 3.01 | 1: 1,2,3; cells 1111111111]"},
        {cells, false,
         "failed " + own("Invalid Cell Status") + kParse + "file : P\n[ id 3.01 | 1:; cells 1]"},
        {size, false, "failed " + unsupported(5) + own("Invalid ACTTS Value 0.000000") + kParse + kEmpty},
        {unset, false, "failed " + unsupported(0) + own("Invalid Reference Time") + kParse + kEmpty}};
    const plx::test::TempFolder folder;
    for (const auto& c : cases) {
        const std::string path = folder.write("set.bin", c.bytes.text), packed = folder.file("set.gz");
        EXPECT_EQ(outcome(plx::read_binary_datasets, path, c.lenient), c.expected);
        const gzFile gz = gzopen(packed.c_str(), "wb");
        gzwrite(gz, c.bytes.text.data(), static_cast<unsigned>(c.bytes.text.size()));
        gzclose(gz);
        EXPECT_EQ(outcome(plx::read_binary_datasets, packed, c.lenient), c.expected) << "packed";
    }
    EXPECT_NE(outcome(plx::read_binary_datasets, folder.write("set.bin", cards.text), false)
                  .find("Invalid Card [250]"),
              std::string::npos);
}

TEST(BinaryDatasets, CutAnywhereItSaysWhatIsMissing) {
    Bytes bytes(true);
    bytes.head(130).sizes(1, 1).step(1, 1.0F, "\1", {1}).close();
    const plx::test::TempFolder folder;
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
