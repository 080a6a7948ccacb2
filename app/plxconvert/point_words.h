#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "plxconvert/words.h"

namespace plx::tool {

inline bool is_between_words(char c) { return c == ' ' || c == '\t' || c == ',' || c == '\r' || c == '\n'; }

/// Takes the first word off a line; empty at its end. In the header for the speed of a million lines.
inline std::string_view next_word(std::string_view& line) {
    std::size_t begin = 0;
    while (begin < line.size() && is_between_words(line[begin])) ++begin;
    std::size_t end = begin;
    while (end < line.size() && !is_between_words(line[end])) ++end;
    const std::string_view word = line.substr(begin, end - begin);
    line.remove_prefix(end);
    return word;
}

/// True for lines without words and for comments.
inline bool is_passed_over(std::string_view line) {
    const std::string_view word = next_word(line);
    return word.empty() || word.front() == '#';
}

/// Reads a word that is a finite decimal number as a whole. Free of the locale.
inline bool to_finite(std::string_view word, double& value) {
    return parse_number(without_plus(word), value);
}

/// The beginning of a word between quotes, fit for a message.
inline std::string printable(std::string_view word) {
    constexpr std::size_t kMost = 40;
    std::string text = "'";
    for (const char c : word.substr(0, kMost)) text += c >= ' ' && c <= '~' ? c : '?';
    return text + (word.size() > kMost ? "...'" : "'");
}

}  // namespace plx::tool
