#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <sstream>

#include "gms/small_project.h"

namespace {

using plx::test::outcome;

/// A binary file in the making; with markers every card ends as a record-oriented writer ends it.
class Bytes {
public:
    explicit Bytes(bool markers) : markers_(markers) {}
    template <class Number>
    Bytes& put(Number v) {
        char bytes[sizeof v];
        std::memcpy(bytes, &v, sizeof v);
        text.append(bytes, sizeof v);
        return *this;
    }
    Bytes& ints(const std::vector<std::int32_t>& values) {
        for (const auto v : values) put(v);
        return *this;
    }
    Bytes& floats(const std::vector<float>& values) {
        for (const float v : values) put(v);
        return *this;
    }
    Bytes& end() { return markers_ ? ints({0, 0}) : *this; }
    /// Everything up to the first card of a dataset: a TIN's, 32-bit numbers, flags of one byte.
    Bytes& head(int set_card) {
        if (markers_) put(28);
        ints({3000, 100, 1, 110, 4, 120, 1}).end();
        return ints({set_card}).end().ints({160, 3}).end();
    }
    Bytes& sizes(int values, int cells) { return ints({170, values}).end().ints({180, cells}).end(); }
    Bytes& name(std::string name) {
        name.resize(40);
        put(190);
        text += name;
        return end();
    }
    Bytes& step(char flag, float time, const std::string& flags, const std::vector<float>& values) {
        put(200).put(flag).put(time).end();
        text += flags;
        return floats(values).end();
    }
    Bytes& close() { return markers_ ? ints({210, 0}) : ints({210}); }

    std::string text;

private:
    bool markers_;
};

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
        {size, false,
         "failed E:read_double_value : size 5 not supported\n" + own("Invalid ACTTS Value 0.000000") +
             kParse + "file : P\n[ id 0]"},
        {unset, false,
         "failed E:read_double_value : size 0 not supported\n" + own("Invalid Reference Time") + kParse +
             "file : P\n[ id 0]"}};
    const plx::test::TempFolder folder;
    for (const auto& c : cases)
        EXPECT_EQ(outcome(plx::read_binary_datasets, folder.write("set.bin", c.bytes.text), c.lenient),
                  c.expected);
    EXPECT_NE(outcome(plx::read_binary_datasets, folder.write("set.bin", cards.text), false)
                  .find("Invalid Card [250]"),
              std::string::npos);
}

TEST(BinaryDatasets, CompressedFilesReadTheSame) {
    const plx::test::TempFolder folder;
    const gzFile gz = gzopen(folder.file("set.gz").c_str(), "wb");
    const std::string whole = full_file(true).text;
    gzwrite(gz, whole.data(), static_cast<unsigned>(whole.size()));
    gzclose(gz);
    EXPECT_EQ(outcome(plx::read_binary_datasets, folder.file("set.gz"), false), "ok " + kFull);
}

/// The complaint of a file cut at each of its bytes, where it changes.
std::vector<std::string> complaints_of_cuts(const std::string& whole, bool lenient) {
    const plx::test::TempFolder folder;
    std::vector<std::string> complaints;
    for (std::size_t n = 0; n < whole.size(); ++n) {
        const plx::test::MessageLog log;
        plx::DataSetList list;
        const bool good =
            plx::read_binary_datasets(folder.write("cut.bin", whole.substr(0, n)).c_str(), list, lenient);
        const std::string text = plx::test::MessageLog::text();
        EXPECT_EQ(good, text.empty()) << n;
        std::string first = text.substr(0, text.find('\n'));
        first = first.substr(0, first.find(" /"));
        if (const auto dash = first.find(" - "); dash != std::string::npos) first.erase(0, dash + 3);
        if (complaints.empty() || complaints.back() != first) complaints.push_back(first);
    }
    return complaints;
}

TEST(BinaryDatasets, CutAnywhereItSaysWhatIsMissing) {
    Bytes bytes(true);
    bytes.head(130).sizes(1, 1).step(1, 1.0F, "\1", {1}).close();
    // One per line; "*" is that of a dataset without its end.
    std::istringstream listed(
        "Invalid Version number in\nUnsupported Version number 28 in\n\nInvalid Type in\n\n"
        "Invalid Floating Type size in\n\nInvalid status flag size in\nMissing block bytes for block 120 \n\n"
        "Missing block bytes for block 130\n*\nInvalid Object ID\nMissing block bytes for block 160\n*\n"
        "Invalid Number of data values\nMissing block bytes for block 170\n*\nInvalid Number of cells\n"
        "Missing block bytes for block 180\n*\nInvalid Reference Time\nInvalid Time Size Time\n"
        "Missing block bytes for block 200\nInvalid Cell Status\nInvalid Data Value\n"
        "Missing block bytes for block 200\n*\nMissing block bytes for block 200\n");
    const std::string parse = "Error Parsing Data file :", block = "Missing block bytes for block 200";
    std::vector<std::string> expected;
    for (std::string line; std::getline(listed, line);) expected.push_back(line == "*" ? parse : line);
    EXPECT_EQ(complaints_of_cuts(bytes.text, false), expected);
    expected.resize(expected.size() - 3);
    expected.insert(expected.end(), {"", block});
    for (std::string& text : expected) text = text == parse ? "" : text;
    EXPECT_EQ(complaints_of_cuts(bytes.text, true), expected);
}

}  // namespace
