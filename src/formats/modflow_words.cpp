#include "formats/modflow_words.h"

#include <algorithm>

#include "core/text_number.h"

namespace plx {

namespace {

/// The state of a word that is being read.
struct Word {
    std::string& text;
    const WordStyle& style;
    bool started = false;
    bool quoted = false;

    /// True when the character ended the word.
    bool take(int c) {
        const bool tab = c == '\t' && style.tab_separates && !quoted;
        if (tab && style.tab_met) *style.tab_met = true;
        if ((c == ' ' && !quoted) || tab) return started && style.space_ends_word;
        if (c == ',' && !quoted) return true;
        if (c == '"' || c == '\'') {
            if (quoted) return true;
            quoted = true;
            return false;
        }
        if (c != ' ' && c != ',') started = true;
        text += static_cast<char>(c);
        return false;
    }
};

}  // namespace

WordEnd read_word(TextSource& in, std::string& word, const WordStyle& style) {
    word.clear();
    Word state{word, style};
    for (int count = 1;; ++count) {
        const int c = in.get();
        if (c == TextSource::kEnd) return WordEnd::kEndOfFile;
        if (c == '\n' || c == '\r') return WordEnd::kEndOfLine;
        if (style.rest_of_line) {
            word += static_cast<char>(c);
        } else if (c == '#') {
            std::string_view comment;
            in.next_line(comment);
            word.clear();
        } else if (state.take(c)) {
            // A comma behind a closing quote belongs to the quoted word.
            if (state.quoted && in.peek() == ',') in.get();
            return WordEnd::kSeparator;
        }
        if (style.fixed_width && count >= style.width) return WordEnd::kSeparator;
    }
}

void finish_line(TextSource& in, WordEnd last) {
    std::string_view rest;
    if (last == WordEnd::kSeparator) in.next_line(rest);
}

bool same_word(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [lower](char x, char y) { return lower(x) == lower(y); });
}

std::vector<int> read_integers(TextSource& in, bool tab_separates, std::size_t needed, std::size_t most) {
    std::vector<int> numbers(most, 0);
    std::size_t found = 0;
    while (found < needed && !in.at_end()) {
        LineWords words(in, tab_separates);
        while (found < most && !words.ended()) {
            const std::string& word = words.next();
            if (!word.empty()) numbers[found++] = to_int(word);
        }
        words.finish();
    }
    return numbers;
}

const std::string& LineWords::next() {
    if (ended()) {
        word_.clear();
    } else {
        last_ = read_word(in_, word_, style_);
    }
    return word_;
}

int LineWords::next_int() { return to_int(next()); }

double LineWords::next_double() { return to_double(next()); }

std::string LineWords::rest() {
    std::string text;
    if (!ended()) in_.read_line(text);
    last_ = WordEnd::kEndOfLine;
    return text;
}

void LineWords::finish() {
    finish_line(in_, last_);
    last_ = WordEnd::kEndOfLine;
}

bool is_number(std::string_view word) {
    const char* const end = word.data() + word.size();
    double value = 0.0;
    return word.empty() || parse_double(word.data(), end, value) == end;
}

}  // namespace plx
