#include "formats/word_lines.h"

#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <string>
#include <vector>

#include "plxutils/core/VXFileReader.h"
#include "support/temp_folder.h"

namespace {

using Lines = std::vector<std::vector<std::string>>;

Lines by_word_lines(const std::string& path) {
    Lines result;
    plx::WordLines lines;
    EXPECT_TRUE(lines.open(path.c_str()));
    while (lines.next()) {
        result.emplace_back();
        for (int i = 0; i < lines.count(); ++i) result.back().emplace_back(lines.word(i));
    }
    EXPECT_FALSE(lines.next());
    return result;
}

Lines by_file_reader(const std::string& path) {
    Lines result;
    VXFileReader reader;
    EXPECT_TRUE(reader.Open(path.c_str()));
    while (reader.ReadLine("\r\n\t ,", true, true, false) >= 0) {
        result.emplace_back();
        for (int i = 0; i < std::min(reader.WordsFound(), plx::WordLines::kMaxWords); ++i) {
            const String word = reader.GetWord(i);
            result.back().emplace_back(word.c_str(), static_cast<std::size_t>(word.length()));
        }
    }
    return result;
}

/// Texts put together from what is special, by a fixed seed.
std::string odd_text(unsigned seed) {
    static const std::vector<std::string> kPieces = {
        "word", "1.5", ",",  " ", "\t",      "\n",   "\r\n",
        "\r",   "#",   "\"", "'", "\"a b\"", ",,\n", std::string(1, '\0')};
    std::string text;
    for (unsigned state = seed * 2654435761U + 1, i = 0; i < 5 + seed % 40; ++i) {
        state = state * 1664525U + 1013904223U;
        text += kPieces[(state >> 16) % kPieces.size()];
    }
    return text;
}

TEST(WordLines, GivesTheWordsOfTheFileReader) {
    std::vector<std::string> texts = {"", "\n", "a", "a\n", ",,", ",,\n", ",,\na", "# c\nb # c\n", "#"};
    texts.insert(texts.end(),
                 {"a b c d e f g h i j\n", std::string(700000, 'x') + " y\nz\n", std::string(65536, 'x'),
                  std::string(262143, 'x') + "\ny", std::string(65535, ' ') + "\n,"});
    for (unsigned seed = 0; seed < 400; ++seed) texts.push_back(odd_text(seed));
    const plx::test::TempFolder folder;
    for (const std::string& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text.substr(0, 200)));
        const std::string path = folder.write("odd.txt", text);
        EXPECT_EQ(by_word_lines(path), by_file_reader(path));
    }
}

TEST(WordLines, NumbersOfWords) {
    const std::tuple<std::string, bool, double, int> cases[] = {
        {"2.9", true, 2.9, 2},           {"-2.9", true, -2.9, -2}, {"1e20", true, 1e20, INT_MAX},
        {"-1e20", true, -1e20, INT_MIN}, {"x", true, 0.0, 0},      {"1d2", true, 100.0, 100},
        {"\"\"", false, -7.0, -7}};
    const plx::test::TempFolder folder;
    for (const auto& [word, there, expected, whole] : cases) {
        SCOPED_TRACE(word);
        plx::WordLines lines;
        ASSERT_TRUE(lines.open(folder.write("n.txt", word + "\n").c_str()) && lines.next());
        double number = -7.0;
        int integer = -7;
        EXPECT_EQ(lines.number(0, number), there);
        EXPECT_EQ(lines.integer(0, integer), there);
        EXPECT_FALSE(lines.number(1, number));
        EXPECT_DOUBLE_EQ(number, expected);
        EXPECT_EQ(integer, whole);
    }
    EXPECT_EQ(plx::saturate_to_int(std::nan("")), 0);
}

TEST(WordLines, FolderAndMissingFileHaveNoLines) {
    const plx::test::TempFolder folder;
    for (const std::string& path : {folder.path().string(), folder.file("missing")}) {
        plx::WordLines lines;
        EXPECT_FALSE(lines.open(path.c_str()));
        EXPECT_FALSE(lines.next());
        EXPECT_TRUE(lines.word(0).empty());
    }
}

}  // namespace
