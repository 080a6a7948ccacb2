#include "formats/list_directed.h"

#include <algorithm>
#include <cctype>

#include "core/text_number.h"
#include "formats/fortran_format.h"

namespace plx {

namespace {

class ListReader {
public:
    ListReader(TextSource& in, const ArrayData& data, bool tab_separates)
        : in_(in), data_(data), tab_separates_(tab_separates) {}

    ArrayFindings read() {
        const std::size_t columns = static_cast<std::size_t>(std::max(data_.columns, 1));
        const std::size_t count = data_.values.size();
        while (findings_.found < count) {
            stop_ = std::min(findings_.found + columns, count);
            if (!read_row()) break;
            if (findings_.found < count) check_line_rest();
        }
        return findings_;
    }

private:
    bool separates(char c) {
        if (c == ' ') return true;
        if (c != '\t' || !tab_separates_) return false;
        findings_.tabs = true;
        return true;
    }

    bool ends_value(const char* at) { return at == last_ || *at == ',' || *at == '/' || separates(*at); }

    /// Reads lines until the row is full or a "/" says that its other values stay as they are.
    bool read_row() {
        bool row_ended = false;
        while (findings_.found < stop_ && !row_ended) {
            line_number_ = in_.line();
            std::string_view line;
            if (!in_.next_line(line)) return false;
            next_ = first_ = line.data();
            last_ = first_ + line.size();
            row_ended = read_line();
            if (findings_.found < stop_ && !row_ended) check_line_rest();
        }
        findings_.found = stop_;
        return true;
    }

    /// True when a "/" ended the row.
    bool read_line() {
        while (findings_.found < stop_) {
            while (next_ != last_ && separates(*next_)) ++next_;
            if (next_ == last_) return false;
            if (*next_ == '#') return false;
            if (*next_ == '/') {
                findings_.layout_matters = true;
                return true;
            }
            if (*next_ == ',') {
                ++findings_.found;
            } else {
                value();
            }
            skip_comma();
        }
        return false;
    }

    void skip_comma() {
        while (next_ != last_ && separates(*next_)) ++next_;
        if (next_ != last_ && *next_ == ',') ++next_;
    }

    void value() {
        double v = 0.0;
        const char* end = parse_double(next_, last_, v);
        if (end && ends_value(end)) {
            next_ = end;
            data_.values[findings_.found++] = v * data_.multiplier;
        } else if (end && *end == '*' &&
                   std::all_of(next_, end, [](char c) { return c >= '0' && c <= '9'; })) {
            repeated(v, end + 1);
        } else {
            data_.values[findings_.found++] = odd_value(next_) * data_.multiplier;
        }
    }

    void repeated(double repeat, const char* at) {
        findings_.layout_matters = true;
        const auto room = static_cast<double>(stop_ - findings_.found);
        const auto count = static_cast<std::size_t>(std::min(repeat, room));
        double v = 0.0;
        next_ = at;
        if (!ends_value(at)) v = odd_value(at) * data_.multiplier;
        std::fill_n(data_.values.begin() + static_cast<std::ptrdiff_t>(findings_.found), count, v);
        findings_.found += count;
    }

    /// A number in a less common form, or a word that is none.
    double odd_value(const char* at) {
        const char* end = at;
        while (!ends_value(end) && *end != '#') ++end;
        // A word that begins with a separator would never move on.
        next_ = std::max(end, next_ + 1);
        double v = 0.0;
        const std::string_view word(at, static_cast<std::size_t>(end - at));
        if (!parse_fortran_number(word, 0, 0, v)) findings_.note_bad_word(word, line_number_);
        return v;
    }

    /// A word behind the row's last value, or a blank, would have been a value when read word by word.
    void check_line_rest() {
        while (next_ != last_ && separates(*next_)) ++next_;
        if (next_ != last_ && *next_ == '#') return;
        if (next_ != last_) findings_.layout_matters = true;
        if (first_ == last_ || last_[-1] == ' ') findings_.empty_words = true;
    }

    TextSource& in_;
    const ArrayData& data_;
    const bool tab_separates_;
    ArrayFindings findings_;
    std::size_t stop_ = 0;
    const char* first_ = nullptr;
    const char* next_ = nullptr;
    const char* last_ = nullptr;
    int line_number_ = 0;
};

}  // namespace

ArrayFindings read_list_directed(TextSource& in, const ArrayData& data, bool tab_separates) {
    return ListReader(in, data, tab_separates).read();
}

}  // namespace plx
