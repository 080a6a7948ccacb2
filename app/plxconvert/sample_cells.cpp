#include "plxconvert/sample_cells.h"

#include <cmath>
#include <cstddef>

#include "plxconvert/samples.h"
#include "plxconvert/words.h"

namespace plx::tool {

namespace {

constexpr std::size_t kNone = std::string::npos;

bool is_blank(char c) { return c == ' ' || c == '\t'; }

class CellReader {
public:
    CellReader(const std::string& line, char separator) : line_(line), separator_(separator) {}

    std::vector<std::string> read() {
        std::vector<std::string> cells;
        skip_blanks();
        while (!ended() || (!cells.empty() && separator_ != kBlanks)) {
            cells.push_back(next_cell());
            if (ended() && !after_separator_) break;
        }
        return cells;
    }

private:
    /// Blanks around cells; a tab is none where it separates.
    bool is_padding(char c) const { return is_blank(c) && (c != separator_ || separator_ == kBlanks); }
    bool separates(char c) const { return separator_ == kBlanks ? is_blank(c) : c == separator_; }
    bool ended() const { return at_ == line_.size() || (line_[at_] == '#' && begins_word_); }

    void skip_blanks() {
        begins_word_ = true;
        while (at_ < line_.size() && is_padding(line_[at_])) ++at_;
    }

    void step(std::string& cell) {
        begins_word_ = is_blank(line_[at_]);
        cell += line_[at_++];
    }

    std::string next_cell() {
        std::string cell;
        after_separator_ = false;
        skip_blanks();
        if (!ended()) take_quoted(cell);
        const std::size_t quoted = cell.size();
        while (!ended() && !separates(line_[at_])) step(cell);
        while (cell.size() > quoted && is_padding(cell.back())) cell.pop_back();
        if (!ended()) {
            ++at_;
            skip_blanks();
            after_separator_ = separator_ != kBlanks;
        }
        return cell;
    }

    void take_quoted(std::string& cell) {
        const char mark = line_[at_];
        if (mark != '"' && mark != '\'') return;
        const std::size_t close = closing(mark);
        if (close == kNone) return;
        for (++at_; at_ < close; ++at_) {
            cell += line_[at_];
            if (mark == '"' && line_[at_] == '"') ++at_;
        }
        at_ = close + 1;
        begins_word_ = false;
    }

    /// An apostrophe may also be part of a name, as in 's-Hertogenbosch.
    std::size_t closing(char mark) {
        bool& hopeless = mark == '"' ? no_more_quotes_ : no_more_apostrophes_;
        for (std::size_t i = at_ + 1; i < line_.size() && !hopeless; ++i) {
            if (line_[i] != mark) continue;
            const char next = i + 1 < line_.size() ? line_[i + 1] : ',';
            if (mark == '"' && next == '"') {
                ++i;
            } else if (is_blank(next) || next == ',' || next == ';') {
                return i;
            }
        }
        // Remembered, lest a line of nothing but marks is searched again from each of them.
        hopeless = true;
        return kNone;
    }

    const std::string& line_;
    char separator_;
    std::size_t at_ = 0;
    bool begins_word_ = true, after_separator_ = false;
    bool no_more_quotes_ = false, no_more_apostrophes_ = false;
};

}  // namespace

std::vector<std::string> cells_of(const std::string& line, char separator) {
    return CellReader(line, separator).read();
}

bool whole_number(const std::string& word, double& number) {
    std::vector<double> numbers;
    if (!parse_numbers(std::string(without_plus(word)), numbers) || numbers.size() != 1) return false;
    number = numbers[0];
    return true;
}

bool coordinate(const std::string& word, double& number) {
    return whole_number(word, number) && std::fabs(number) <= kFarthest;
}

bool is_measured(std::string word) {
    double number = 0.0;
    const bool limit = !word.empty() && word[0] == '<';
    if (limit) word.erase(0, 1);
    return whole_number(word, number) && !(limit && number < 0.0);
}

}  // namespace plx::tool
