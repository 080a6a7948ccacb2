#include "formats/modflow_words.h"

#include <gtest/gtest.h>

using namespace plx;

TEST(ModflowWords, WordsAndTheirEnds) {
    bool tab_met = false;
    const WordStyle plain, line{.rest_of_line = true}, joined{.space_ends_word = false},
        fixed{.space_ends_word = false, .fixed_width = true, .width = 4},
        tab{.tab_separates = true, .tab_met = &tab_met};
    // Each word is followed by its end's code.
    const std::vector<std::tuple<std::string, WordStyle, std::string>> cases = {
        {"1 2\n3", plain, "1|1 2|2 3|0 "},
        {"1 \n2", plain, "1|1 |2 2|0 "},
        {"'a b',c", plain, "a b|1 c|0 "},
        {"\"x#y\nz", plain, "z|0 "},
        {"'it,s' 5", plain, "it,s|1 5|0 "},
        {"1,,2\r\n", plain, "1|1 |1 2|2 |0 "},
        {"1 # note\n2", plain, "1|1 2|0 "},
        {"# a\n# b\n 7\n", plain, "7|2 |0 "},
        {"1\t2\n", plain, "1\t2|2 |0 "},
        {"5\r6\r\n", plain, "5|2 6|2 |0 "},
        {" a 'b',#c\nd", line, " a 'b',#c|2 d|0 "},
        {"1 2,3", joined, "12|1 3|0 "},
        {"   1   2 34\n", fixed, "1|1 2|1 34|2 |0 "},
        {"1\t2 3", tab, "1|1 2|1 3|0 "}};
    for (const auto& [text, style, words] : cases) {
        SCOPED_TRACE(text);
        TextSource in = TextSource::of_text(text, "x");
        std::string found, word;
        for (WordEnd end = WordEnd::kSeparator; end != WordEnd::kEndOfFile;) {
            end = read_word(in, word, style);
            found += word + "|" + std::to_string(static_cast<int>(end)) + " ";
        }
        EXPECT_EQ(found, words);
    }
    EXPECT_TRUE(tab_met);
}
