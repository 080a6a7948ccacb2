#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/text_source.h"

namespace plx {

/// How a word ended; the values are those that the converters' read_word returns.
enum class WordEnd { kEndOfFile = 0, kSeparator = 1, kEndOfLine = 2 };

struct WordStyle {
    bool rest_of_line = false;    ///< the word is all that is left of the line
    bool space_ends_word = true;  ///< otherwise blanks inside a word are dropped: "1 2" reads as "12"
    bool fixed_width = false;     ///< the word ends after `width` characters, blanks and quotes counted
    int width = 0;
    bool tab_separates = false;  ///< a tab is a blank; otherwise it is part of a word
    bool* tab_met = nullptr;     ///< set where a tab separated
};

/// Reads one word of a MODFLOW input: quotes, commas, "#" comments that run to the end of the line.
///
/// A word that the line's end follows directly comes with kEndOfLine; after a blank before the line's end the
/// next call gives an empty word with kEndOfLine. The end of the file hands out what was read so far.
WordEnd read_word(TextSource& in, std::string& word, const WordStyle& style);

/// True for a line that begins with "#", blanks before it or not.
inline bool is_comment(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    return first != std::string_view::npos && line[first] == '#';
}

/// Drops the rest of the line unless the last word ended it already.
void finish_line(TextSource& in, WordEnd last);

/// Equal without regard to ASCII case.
bool same_word(std::string_view a, std::string_view b);

/// Reads lines until at least `needed` integers were found, at most `most` and as many of them as the last
/// line holds, and drops what is left of that line. What the file does not hold is 0.
std::vector<int> read_integers(TextSource& in, bool tab_separates, std::size_t needed, std::size_t most);

/// The words of one line: once the line has ended, every further word is empty, so that a missing field never
/// takes the next line's.
class LineWords {
public:
    LineWords(TextSource& in, bool tab_separates) : in_(in) { style_.tab_separates = tab_separates; }

    const std::string& next();
    int next_int();
    double next_double();
    /// What is left of the line.
    std::string rest();
    /// Drops what is left of the line.
    void finish();
    bool ended() const { return last_ != WordEnd::kSeparator; }
    /// Goes on with another line, which the source has been given.
    void restart() { last_ = WordEnd::kSeparator; }

private:
    TextSource& in_;
    WordStyle style_;
    std::string word_;
    WordEnd last_ = WordEnd::kSeparator;
};

/// True for a word that is a number as a whole, and for an empty one, which counts as 0.
bool is_number(std::string_view word);

}  // namespace plx
