#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "formats/text_source.h"

namespace plx {

/// The values of one array and how its rows lie in the file.
struct ArrayData {
    std::span<double> values;
    int columns = 1;          ///< values a row; each row starts on a new line
    double multiplier = 1.0;  ///< every value read is multiplied by it
};

/// What the file turned out to hold.
struct ArrayFindings {
    std::size_t found = 0;        ///< values that the file held
    bool layout_matters = false;  ///< reading word by word would have given other values
    bool empty_words =
        false;             ///< a blank before a line's end, which is a word of its own when read word by word
    bool tabs = false;     ///< a tab separated values
    std::string bad_word;  ///< the first text in a value's place that is no number (it counts as 0)
    int bad_line = 0;      ///< its line

    void note_bad_word(std::string_view word, int line) {
        if (bad_line != 0) return;
        bad_word = word;
        bad_line = line;
    }
};

/// True when nothing but blanks and tabs is there.
inline bool is_blank(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

}  // namespace plx
