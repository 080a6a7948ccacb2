#include "formats/fortran_format.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "core/text_number.h"

namespace plx {

namespace {

constexpr int kMaxNumber = 1'000'000;
constexpr int kMaxDepth = 20;
constexpr std::size_t kMaxItems = 4096;

}  // namespace

/// Turns a format into a flat list: groups are written out as often as they repeat.
class FormatParser {
public:
    explicit FormatParser(std::string_view text) {
        for (const char c : text) {
            if (c != ' ' && c != '\t')
                text_ += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
    }

    bool parse(FortranFormat& out) {
        if (!take('(') || !list(out.items_, 0) || at_ != text_.size()) return false;
        out.restart_ = restart_;
        // Without a value in the part that repeats, a row would never be full.
        return std::any_of(
            out.items_.begin() + static_cast<std::ptrdiff_t>(restart_), out.items_.end(),
            [](const FortranFormat::Item& item) { return item.kind == FortranFormat::Kind::kValue; });
    }

private:
    using Kind = FortranFormat::Kind;
    using Items = std::vector<FortranFormat::Item>;

    bool take(char c) {
        if (at_ >= text_.size() || text_[at_] != c) return false;
        ++at_;
        return true;
    }

    /// A number at the current place; `otherwise` when there is none, -1 when it is absurd.
    int number(int otherwise) {
        if (at_ >= text_.size() || !std::isdigit(static_cast<unsigned char>(text_[at_]))) return otherwise;
        int value = 0;
        while (at_ < text_.size() && std::isdigit(static_cast<unsigned char>(text_[at_]))) {
            value = value * 10 + (text_[at_++] - '0');
            if (value > kMaxNumber) return -1;
        }
        return value;
    }

    /// Items up to the closing parenthesis.
    bool list(Items& items, int depth) {
        while (!take(')')) {
            if (at_ >= text_.size() || items.size() > kMaxItems) return false;
            if (take(',') || take(':')) continue;
            if (!entry(items, depth)) return false;
        }
        return true;
    }

    bool entry(Items& items, int depth) {
        const bool negative = take('-');
        if (!negative) take('+');
        const int repeat = number(1);
        if (repeat < 0 || at_ >= text_.size()) return false;
        const char letter = text_[at_++];
        if (letter == 'P') {
            scale_ = negative ? -repeat : repeat;
            return repeat < 100;
        }
        if (negative || repeat == 0) return false;
        switch (letter) {
            case '(':
                return group(items, repeat, depth);
            case 'X':
                items.push_back({Kind::kSkip, 1, repeat, 0, 0});
                return true;
            case '/':
                items.push_back({Kind::kNewLine, repeat, 0, 0, 0});
                return true;
            case 'B':
                return take('N');
            case 'S':
                if (!take('P')) take('S');
                return true;
            default:
                return value(items, letter, repeat);
        }
    }

    bool group(Items& items, int repeat, int depth) {
        if (depth >= kMaxDepth) return false;
        const std::size_t begin = items.size();
        Items inner;
        if (!list(inner, depth + 1)) return false;
        if (inner.size() * static_cast<std::size_t>(repeat) > kMaxItems) return false;
        for (int i = 0; i < repeat; ++i) items.insert(items.end(), inner.begin(), inner.end());
        if (depth == 0) restart_ = begin;
        return true;
    }

    bool value(Items& items, char letter, int repeat) {
        if (std::string_view("IFEDG").find(letter) == std::string_view::npos) return false;
        if (letter == 'E' && !take('N')) take('S');
        const int width = number(0);
        int decimals = take('.') ? number(-1) : 0;
        if (width < 1 || decimals < 0) return false;
        if ((letter == 'E' || letter == 'G') && take('E') && number(-1) < 0) return false;
        const int scale = letter == 'I' ? 0 : scale_;
        // In Iw.m the second number is a least count of digits for output.
        if (letter == 'I') decimals = 0;
        items.push_back({Kind::kValue, repeat, width, decimals, scale});
        return true;
    }

    std::string text_;
    std::size_t at_ = 0;
    std::size_t restart_ = 0;
    int scale_ = 0;
};

std::optional<FortranFormat> FortranFormat::parse(std::string_view text) {
    FortranFormat format;
    if (!FormatParser(text).parse(format)) return std::nullopt;
    return format;
}

std::size_t FortranFormat::values_per_pass() const {
    std::size_t count = 0;
    for (const Item& item : items_) {
        if (item.kind == Kind::kValue) count += static_cast<std::size_t>(item.repeat);
    }
    return count;
}

namespace {

bool is_exponent_letter(char c) { return std::string_view("eEdDqQ").find(c) != std::string_view::npos; }

}  // namespace

bool parse_fortran_number(std::string_view text, int decimals, int scale, double& value) {
    std::string digits;
    int fraction = 0, exponent = 0, exponent_sign = 1;
    bool point = false, in_exponent = false, has_digit = false, has_exponent_digit = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ' ') continue;
        const bool sign = c == '+' || c == '-';
        if (std::isdigit(static_cast<unsigned char>(c))) {
            if (in_exponent) {
                has_exponent_digit = true;
                exponent = std::min(exponent * 10 + (c - '0'), 99'999);
            } else {
                has_digit = true;
                digits += c;
                fraction += point ? 1 : 0;
            }
        } else if (sign && digits.empty() && !point && !in_exponent) {
            digits += c;
        } else if (c == '.' && !point && !in_exponent) {
            point = true;
        } else if (has_digit && !in_exponent && (sign || is_exponent_letter(c))) {
            in_exponent = true;
            if (c == '-') exponent_sign = -1;
        } else if (in_exponent && sign && !has_exponent_digit && text[i - 1] != '+' && text[i - 1] != '-') {
            exponent_sign = c == '-' ? -1 : 1;
        } else {
            return false;
        }
    }
    if (!has_digit || in_exponent != has_exponent_digit) return false;
    const int power = exponent_sign * exponent - (point ? fraction : decimals) - (in_exponent ? 0 : scale);
    digits += 'e' + std::to_string(power);
    return parse_double(digits.data(), digits.data() + digits.size(), value) != nullptr;
}

namespace {

/// Cuts the lines of one array.
class FormattedReader {
public:
    FormattedReader(TextSource& in, const FortranFormat& format, const ArrayData& data)
        : in_(in), format_(format), data_(data) {}

    ArrayFindings read() {
        const std::size_t columns = static_cast<std::size_t>(std::max(data_.columns, 1));
        const std::size_t count = data_.values.size();
        while (findings_.found < count) {
            if (!read_row(std::min(findings_.found + columns, count))) break;
        }
        return findings_;
    }

private:
    bool new_line() {
        if (line_number_ != 0 && findings_.found < data_.values.size()) check_line_rest();
        line_number_ = in_.line();
        position_ = 0;
        if (!in_.next_line(line_)) return false;
        last_line_ = in_.remaining() == 0 && !in_.line_had_end();
        return true;
    }

    /// Words behind the last field, or a blank, would have been values of their own.
    void check_line_rest() {
        if (position_ < line_.size() && !is_blank(line_.substr(position_))) findings_.layout_matters = true;
        if (line_.empty() || line_.back() == ' ') findings_.empty_words = true;
    }

    bool read_row(std::size_t stop) {
        if (!new_line()) return false;
        for (std::size_t i = 0;; ++i) {
            if (i == format_.items().size()) {
                if (findings_.found == stop) return true;
                if (!new_line()) return false;
                i = format_.restart();
            }
            const FortranFormat::Item& item = format_.items()[i];
            for (int n = 0; n < item.repeat; ++n) {
                if (item.kind == FortranFormat::Kind::kSkip) {
                    skip(static_cast<std::size_t>(item.width));
                } else if (item.kind == FortranFormat::Kind::kNewLine) {
                    if (!new_line()) return findings_.found == stop;
                } else if (findings_.found == stop) {
                    return true;
                } else if (!field(item)) {
                    return false;
                }
            }
        }
    }

    void skip(std::size_t width) {
        if (position_ < line_.size() && !is_blank(line_.substr(position_, width)))
            findings_.layout_matters = true;
        position_ += width;
    }

    bool field(const FortranFormat::Item& item) {
        const std::size_t begin = std::min(position_, line_.size());
        if (begin == line_.size() && last_line_) return false;
        const std::string_view text = line_.substr(begin, static_cast<std::size_t>(item.width));
        position_ += static_cast<std::size_t>(item.width);
        data_.values[findings_.found++] = number(text, item) * data_.multiplier;
        return true;
    }

    double number(std::string_view text, const FortranFormat::Item& item) {
        const char* first = text.data();
        const char* last = first + text.size();
        while (first != last && is_gap(*first)) ++first;
        while (first != last && is_gap(last[-1])) --last;
        if (first == last) {
            findings_.layout_matters = true;
            return 0.0;
        }
        if (touches_neighbour(first, last)) findings_.layout_matters = true;
        double word = 0.0, value = 0.0;
        const auto length = static_cast<std::size_t>(last - first);
        const bool is_word = parse_double(first, last, word) == last;
        // The point stands where the format puts it, as a rule.
        const auto decimals = static_cast<std::size_t>(item.decimals);
        const bool point =
            (length > decimals && *(last - 1 - decimals) == '.') || std::memchr(first, '.', length);
        if (is_word && item.scale == 0 && (item.decimals == 0 || point)) return word;
        const std::string_view token(first, length);
        if (!parse_fortran_number(token, item.decimals, item.scale, value)) {
            findings_.note_bad_word(token, line_number_);
        }
        if (!is_word || word != value) findings_.layout_matters = true;
        return value;
    }

    static bool is_gap(char c) { return c == ' ' || c == '\t'; }

    bool touches_neighbour(const char* first, const char* last) const {
        return (first != line_.data() && first[-1] != ' ') ||
               (last != line_.data() + line_.size() && *last != ' ');
    }

    TextSource& in_;
    const FortranFormat& format_;
    const ArrayData& data_;
    ArrayFindings findings_;
    std::string_view line_;
    std::size_t position_ = 0;
    int line_number_ = 0;
    bool last_line_ = false;
};

}  // namespace

ArrayFindings read_formatted(TextSource& in, const FortranFormat& format, const ArrayData& data) {
    return FormattedReader(in, format, data).read();
}

}  // namespace plx
