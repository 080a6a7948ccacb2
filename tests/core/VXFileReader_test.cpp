#include "plxutils/core/VXFileReader.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "plxutils/core/VXOutputFile.h"
#include "support/capture_stdout.h"
#include "support/temp_folder.h"

namespace {

using plx::test::capture_stdout;

// Every word in brackets.
std::string join(const VX1DArray<String>& words) {
    std::string result;
    for (int i = 0; i < words.GetSize(); ++i) result += std::string("[") + words[i].c_str() + "]";
    return result;
}

TEST(LineToWords, SplitsWordsQuotesAndComments) {
    const struct {
        const char *line, *delims, *words, *with_comments;
    } cases[] = {
        {"a  \"b c\"  'd' x\"y z\" # e", " \t", "[a][b c][d][x\"y][z\"][#][e]", "[a][b c][d][x\"y][z\"]"},
        {"\"\" '' \"it's\"'a\"b'c '", " ", "[][][it's][a\"b][c][]", "[][][it's][a\"b][c][]"},
        {",,a#b,, \"#\",c,\"open, # end", ", ", "[a#b][#][c][open, # end]", "[a#b][#][c][open, # end]"},
        {"'a b' # c", "", "[a b][ # c]", "[a b][ # c]"},
        {"# \t", " \t", "[#]", ""}};
    VX1DArray<String> words;
    int count = 99;
    for (const auto& c : cases) {
        LineToWords(c.line, c.delims, count, words, false);
        EXPECT_EQ(join(words), c.words) << c.line;
        LineToWords(c.line, c.delims, count, words, true);
        EXPECT_EQ(join(words), c.with_comments) << c.line;
        EXPECT_EQ(count, words.GetSize());
    }
    LineToWords("'a b c' d", " ", count, words, true);
    LineToWords(words[0], " ", count, words, true);
    EXPECT_EQ(join(words), "[a][b][c]") << "one of its own words";
}

class Reader : public testing::Test {
protected:
    void open(const std::string& bytes) { ASSERT_TRUE(reader_.Open(folder_.write("in.txt", bytes).c_str())); }
    int next(bool skip = true, bool trim = true, bool marker = false) {
        return reader_.ReadLine(" \t,", skip, trim, marker);
    }

    plx::test::TempFolder folder_;
    VXFileReader reader_;
};

TEST_F(Reader, EndIsKnownAfterAReadThatFoundNothing) {
    // With the results of the calls, then the number of lines.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"a\r\n\r\n", "1 0 -1 @3", "1 -1 @3"},
        {"a b", "2 -1 @1", "2 -1 @1"},
        {"", "-1 @1", "-1 @1"},
        {"a\n,", "1 -1 @2", "1 -1 @2"},
        {",\nb c\n", "0 2 -1 @3", "0 2 -1 @3"},
        {"# x\n\n #y\nz\n", "2 0 1 1 -1 @5", "1 -1 @5"}};
    for (const auto& [bytes, all, uncommented] : cases) {
        for (const bool skip : {false, true}) {
            open(bytes);
            std::string results;
            for (int n = 0; n >= 0; results += std::to_string(n) + " ") n = next(skip);
            results += "@" + std::to_string(reader_.CurrentLineNumber());
            EXPECT_EQ(results, skip ? uncommented : all) << bytes;
        }
    }
}

TEST_F(Reader, LinesAreCutAtTheMarker) {
    open("#1\n  # 2\nab@@ 1 2 \nnone\n@@@@x\n");
    EXPECT_EQ(next(true, false), 0) << "without trimming an indented comment is not skipped";
    EXPECT_TRUE(reader_.CurrentLine() == "  # 2");
    EXPECT_EQ(next(true, true, true), 2);
    EXPECT_TRUE(reader_.CurrentLine() == "1 2");
    EXPECT_EQ(next(true, true, true), 0);
    EXPECT_EQ(next(true, true, true), 1);
    EXPECT_TRUE(reader_.GetWord(0) == "@@x");
}

TEST_F(Reader, DamagedInputEnds) {
    VXOutputFile out;
    ASSERT_TRUE(out.Open(folder_.file("bad.gz").c_str(), true, false));
    for (int i = 0; i < 20000; ++i) out.Format("# %d\n", i * i % 7919);
    out.Close();
    std::string bytes = folder_.read("bad.gz");
    open(bytes.replace(bytes.size() / 2, 40, 40, '\xff'));
    EXPECT_EQ(next(), -1);
    EXPECT_TRUE(reader_.AssignToOpen(nullptr, "x"));
    EXPECT_EQ(next(), -1);
    EXPECT_EQ(next(false, false), -1);
    reader_.Close();
    EXPECT_EQ(next(), -1);
}

TEST_F(Reader, WordsAreFoundAndCopied) {
    open("One two ONE Two");
    next();
    EXPECT_TRUE(reader_.FindWord("ONE", true) == 2 && reader_.FindWord("ONE", false) == 0);
    EXPECT_TRUE(reader_.FindLastWord("two", true) == 1 && reader_.FindLastWord("two", false) == 3);
    VX1DArray<String> copy;
    EXPECT_EQ(reader_.CopyCurrentWords(copy, 2), 2);
    EXPECT_EQ(capture_stdout([&] { reader_.CopyCurrentWords(copy, -1); }), "[-1] index out of bounds.\n");
    EXPECT_EQ(join(copy), "[][One][two][ONE][Two]");
    for (const int first : {4, 9, INT_MAX, INT_MIN})
        EXPECT_EQ(reader_.CopyCurrentWords(copy, first), 0) << first;
    reader_.Close();
    EXPECT_EQ(reader_.FindWord("One", true) + reader_.FindLastWord("One", true), -2);
    EXPECT_EQ(capture_stdout([&] { EXPECT_TRUE(reader_.GetWord(0) + reader_.GetWord(-1) == ""); }), "");
}

TEST_F(Reader, WordsAreNumbers) {
    open("3.9 -3.9 1.5D3 x 1e20 ''");
    next();
    String results;
    int i = 7;
    double d = 7;
    for (int n = 0; reader_.WordToInt(n, i) && reader_.WordToDouble(n, d); ++n)
        results.Format("%s%d=%g ", results.c_str(), i, d);
    EXPECT_STREQ(results.c_str(), "3=3.9 -3=-3.9 1500=1500 0=0 -2147483648=1e+20 ") << "up to the empty word";
    EXPECT_EQ(capture_stdout([&] { EXPECT_FALSE(reader_.WordToInt(-1, i)); }), "[-1] index out of bounds.\n");
    EXPECT_EQ(capture_stdout([&] { EXPECT_FALSE(reader_.WordToDouble(6, d)); }), "");
    EXPECT_TRUE(i == INT_MIN && d == 1e20) << "unchanged";
}

TEST_F(Reader, ChemistryAndGeologyWords) {
    // With result, value, and the flag of the first.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"12.5", "1 12.5 0", "1 12.5"},         {"<5", "1 0.5 1", "0 -1e+09"},
        {"<<2e1x", "1 2 1", "0 -1e+09"},        {"<", "0 -1e+09 1", "0 -1e+09"},
        {"ND", "1 -7 2", "0 -1e+09"},           {"Non-Detect", "1 -7 2", "0 -1e+09"},
        {"NA", "1 -1e+09 0", "1 -1e+09"},       {"not-measured", "1 -1e+09 0", "0 -1e+09"},
        {"nan", "0 -1e+09 0", "0 -1e+09"},      {"0x1A", "0 -1e+09 0", "0 -1e+09"},
        {"Pinch-Out", "0 -1e+09 0", "1 1e+09"}, {"PINCH", "0 -1e+09 0", "1 1e+09"},
        {"short", "0 -1e+09 0", "1 -1e+09"},    {"unk", "1 -1e+09 0", "1 -1e+09"},
        {"''", "0 -1e+09 0", "0 -1e+09"}};
    for (const auto& [word, chemistry, geology] : cases) {
        SCOPED_TRACE(word);
        open(word);
        next();
        double v = 1, elevation = 1;
        int flag = 9;
        String chem, geo;
        const bool measured = reader_.WordToChemValue(0, 0.1, -7, v, flag);
        chem.Format("%d %g %d", measured, v, flag);
        EXPECT_STREQ(chem.c_str(), chemistry);
        const bool reached = reader_.WordToGeoValue(0, elevation);
        geo.Format("%d %g", reached, elevation);
        EXPECT_STREQ(geo.c_str(), geology);
    }
}

}  // namespace
