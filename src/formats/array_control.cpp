#include "formats/array_control.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

#include "core/ascii_text.h"
#include "core/text_number.h"
#include "formats/modflow_words.h"

namespace plx {

namespace {

using Form = ArrayControl::Form;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kHdf5 = "HDF5";

/// The value before a format that touches it: "1.0(FREE)".
double before_parenthesis(std::string_view word) { return to_double(word.substr(0, word.find('('))); }

/// A format in parentheses, or in quotes, at the beginning of the text; empty when there is none.
std::string_view leading_format(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t,'\"");
    if (first == std::string_view::npos || text[first] != '(') return {};
    int depth = 0;
    for (std::size_t i = first; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')' && --depth == 0) return text.substr(first, i + 1 - first);
    }
    return text.substr(first);
}

/// The older record by its columns: unit (10), multiplier (10), format (20).
struct FixedRecord {
    int unit = 0;
    double multiplier = 0.0;
    std::string_view format;
};

bool whole_field(std::string_view field, double& value) {
    value = 0.0;
    return field.empty() ||
           parse_double(field.data(), field.data() + field.size(), value) == field.data() + field.size();
}

/// Nothing when the columns do not hold a whole unit number and a whole multiplier.
std::optional<FixedRecord> cut_fixed_record(std::string_view line) {
    const auto columns = [line](std::size_t at, std::size_t count) {
        return at < line.size() ? line.substr(at, count) : std::string_view();
    };
    const std::string_view unit = trimmed(columns(0, 10), kBlanks),
                           multiplier = trimmed(columns(10, 10), kBlanks);
    const bool is_whole = unit.find_first_not_of("+-0123456789") == std::string_view::npos;
    double unit_value = 0.0;
    FixedRecord record;
    // A number that goes on in the next field was not written in columns.
    const bool cut = !multiplier.empty() && columns(19, 1) != " " && !columns(20, 1).empty() &&
                     columns(20, 1).find_first_of(" (\t") == std::string_view::npos;
    if (!is_whole || cut || !whole_field(unit, unit_value) || !whole_field(multiplier, record.multiplier))
        return {};
    record.unit = to_int(unit);
    record.format = leading_format(columns(20, line.size()));
    return record;
}

bool whole_field(std::string_view field) {
    double ignored = 0.0;
    return whole_field(field, ignored);
}

/// Takes a word off a line: quoted, when it may hold anything, or up to a blank, tab or comma.
std::string take_word(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t,"), text.size()));
    if (text.empty() || text.front() == '#') return {};
    const bool quoted = text.front() == '"' || text.front() == '\'';
    if (quoted) {
        const char quote = text.front();
        text.remove_prefix(1);
        const std::string_view word = text.substr(0, text.find(quote));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        return std::string(word);
    }
    const std::string_view word = text.substr(0, text.find_first_of(" \t,"));
    text.remove_prefix(word.size());
    return std::string(word);
}

bool take_size(std::string_view& text, std::size_t& size) {
    const std::string word = take_word(text);
    const char* last = word.data() + word.size();
    const auto [end, error] = std::from_chars(word.data(), last, size);
    return error == std::errc() && end == last;
}

/// The number of axes, then first index and length on each; nothing at all means the whole dataset.
bool take_slab(std::string_view text, Hdf5Slab& slab) {
    constexpr std::size_t kMostAxes = 32;
    std::string_view ahead = text;
    std::size_t axes = 0, start = 0, count = 0;
    if (take_word(ahead).empty()) return true;
    if (!take_size(text, axes) || axes < 1 || axes > kMostAxes) return false;
    for (std::size_t i = 0; i < axes; ++i) {
        if (!take_size(text, start) || !take_size(text, count)) return false;
        slab.start.push_back(start);
        slab.count.push_back(count);
    }
    return true;
}

class ControlReader {
public:
    ControlReader(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                  const std::string& what, ArrayControl& control, Problems& problems)
        : in_(in),
          streams_(streams),
          rules_(rules),
          used_(used),
          what_(what),
          control_(control),
          problems_(problems) {}

    bool read() {
        if (!read_line()) {
            problems_.push_back(in_.place() + ": the file ends before " + what_);
            control_.form = Form::kEnded;
            return false;
        }
        text_ = TextSource::of_text(line_, in_.name());
        LineWords words(text_, rules_.tab_separates);
        const std::string keyword = words.next();
        if (same_word(keyword, "CONSTANT")) return constant(keyword, words);
        if (same_word(keyword, "INTERNAL")) return internal(keyword, words);
        if (same_word(keyword, "EXTERNAL")) return external(keyword, words);
        if (same_word(keyword, "OPEN/CLOSE")) return open_close(keyword, words);
        if (rules_.hdf5_records && same_word(keyword, kHdf5)) return hdf5(keyword);
        return fixed(keyword, words);
    }

private:
    /// The next line that is more than a comment.
    bool read_line() {
        do {
            place_ = in_.place();
            if (!in_.read_line(line_)) return false;
        } while (is_comment(line_));
        if (rules_.tab_separates && line_.find('\t') != std::string::npos) used_.tab_separates = true;
        return true;
    }

    /// The next word. By the plain rules a record goes on in the next line where a word ended its own; a
    /// Fortran READ takes one line.
    std::string field(LineWords& words) {
        if (words.ended() && !rules_.obey_formats && read_line()) {
            text_ = TextSource::of_text(line_, in_.name());
            words.restart();
        }
        return words.next();
    }

    /// The value before a format that touches it; a word that is no number counts as 0 and is told.
    double checked_number(const std::string& word) {
        if (!whole_field(std::string_view(word).substr(0, word.find('(')))) {
            report("\"" + word + "\" is not a number, 0 is used");
        }
        return before_parenthesis(word);
    }

    bool constant(const std::string& keyword, LineWords& words) {
        std::printf("[%s\t", keyword.c_str());
        const std::string word = field(words);
        std::printf("%s\t", word.c_str());
        control_.form = Form::kConstant;
        control_.value = word.starts_with('(') ? to_double(word) : checked_number(word);
        if (word.starts_with('(')) {
            const std::string second = field(words);
            std::printf("%s\t", second.c_str());
            const double multiplier = before_parenthesis(second);
            control_.value *= multiplier > 0.0 ? multiplier : 1.0;
        }
        std::printf("%s]\n", words.rest().c_str());
        return true;
    }

    bool internal(const std::string& keyword, LineWords& words) {
        std::printf("[%s\t", keyword.c_str());
        multiplier_and_format(words);
        if (control_.value == 0.0) control_.value = 1.0;
        control_.source = &in_;
        return true;
    }

    bool external(const std::string& keyword, LineWords& words) {
        const int unit = to_int(field(words));
        std::printf("[%s\t%d\t", keyword.c_str(), unit);
        multiplier_and_format(words);
        apply_zero_rule();
        return use_unit(unit);
    }

    bool open_close(const std::string& keyword, LineWords& words) {
        const std::string name = field(words);
        std::printf("[%s\t%s\t", keyword.c_str(), name.c_str());
        multiplier_and_format(words);
        apply_zero_rule();
        return use_source(streams_.open(name), "cannot open " + name);
    }

    bool hdf5(const std::string& keyword) {
        std::string_view rest = std::string_view(line_).substr(taken());
        const std::string multiplier = take_word(rest), flag = take_word(rest), file = take_word(rest);
        control_.dataset = take_word(rest);
        const std::string slab(trimmed(rest, kBlanks));
        std::printf("[%s\t%s\t%s\t%s\t%s\t%s]\n", keyword.c_str(), multiplier.c_str(), flag.c_str(),
                    file.c_str(), control_.dataset.c_str(), slab.c_str());
        if (!whole_field(multiplier, control_.value)) {
            report("\"" + multiplier + "\" is not a number, 1 is used");
            control_.value = 1.0;
        }
        if (control_.value == 0.0) control_.value = 1.0;
        if (control_.dataset.empty()) return missing("a file and a dataset are missing in an HDF5 record");
        if (!take_slab(rest, control_.slab)) {
            return missing("\"" + slab + "\" is no part of a dataset (axes, then start and count of each)");
        }
        control_.hdf5 = streams_.hdf5_file(file, in_);
        if (control_.hdf5 < 0) return missing("cannot open " + file + " as an HDF5 file");
        control_.place = place_ + ": " + file;
        control_.form = Form::kHdf5;
        return true;
    }

    bool missing(const std::string& fault) {
        control_.form = Form::kMissing;
        report(fault);
        return false;
    }

    bool fixed(const std::string& keyword, LineWords& words) {
        std::printf("[%s\t", keyword.c_str());
        int unit = to_int(keyword);
        const auto columns = rules_.obey_formats ? cut_fixed_record(line_) : std::nullopt;
        if (columns) {
            std::printf("%s\t", words.next().c_str());
            std::printf("%s]\n", words.rest().c_str());
            if (unit != columns->unit) used_.obey_formats = true;
            unit = columns->unit;
            control_.value = columns->multiplier;
            use_format(columns->format);
        } else {
            multiplier_and_format(words);
        }
        if (!columns && !whole_field(keyword)) {
            return missing(
                same_word(keyword, kHdf5)
                    ? "HDF5 arrays belong to GMS models, which are given by their super file (.mfs) "
                      "or project (.gpr)"
                    : "\"" + keyword + "\" is no array record");
        }
        if (unit == 0 && rules_.unit_zero_is_constant) {
            used_.unit_zero_is_constant = true;
            control_.form = Form::kConstant;
            return true;
        }
        apply_zero_rule();
        return use_unit(unit);
    }

    void multiplier_and_format(LineWords& words) {
        const std::size_t before = taken();
        const std::string word = field(words);
        std::printf("%s\t", word.c_str());
        control_.value = checked_number(word);
        const bool touching = word.find('(') != std::string::npos;
        const std::size_t start = touching ? line_.find('(', before) : taken();
        std::printf("%s]\n", words.rest().c_str());
        use_format(leading_format(std::string_view(line_).substr(std::min(start, line_.size()))));
    }

    std::size_t taken() const { return line_.size() - static_cast<std::size_t>(text_.remaining()); }

    void use_format(std::string_view format) {
        control_.form = Form::kWords;
        if (!rules_.obey_formats) return;
        control_.form = Form::kListDirected;
        if (format.empty() || same_word(format, "(FREE)") || format == "(*)") return;
        if (same_word(format, "(BINARY)")) {
            control_.form = Form::kBinary;
        } else if (auto known = FortranFormat::parse(format)) {
            control_.form = Form::kFormatted;
            control_.format = std::move(*known);
        } else {
            report("format " + std::string(format) + " is not known, values are read as words");
        }
    }

    void apply_zero_rule() {
        if (control_.value != 0.0 || !rules_.zero_multiplier_is_one) return;
        used_.zero_multiplier_is_one = true;
        control_.value = 1.0;
    }

    /// With formats obeyed a negative number stands for a binary file at the positive one.
    bool use_unit(int unit) {
        if (unit < 0 && unit > -1'000'000 && rules_.obey_formats) {
            unit = -unit;
            control_.form = Form::kBinary;
        }
        return use_source(streams_.unit(unit), "no open file at unit " + std::to_string(unit));
    }

    bool use_source(TextSource* source, const std::string& fault) {
        control_.source = source;
        return source != nullptr || missing(fault);
    }

    void report(const std::string& fault) { problems_.push_back(place_ + ": " + fault + " (" + what_ + ")"); }

    TextSource& in_;
    ArrayStreams& streams_;
    const TextRules& rules_;
    TextRules& used_;
    const std::string& what_;
    ArrayControl& control_;
    Problems& problems_;
    std::string line_;
    std::string place_;
    TextSource text_ = TextSource::of_text("", "");
};

}  // namespace

bool read_array_control(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                        const std::string& what, ArrayControl& control, Problems& problems) {
    return ControlReader(in, streams, rules, used, what, control, problems).read();
}

bool is_array_keyword(std::string_view word) {
    return same_word(word, "CONSTANT") || same_word(word, "INTERNAL") || same_word(word, "EXTERNAL") ||
           same_word(word, "OPEN/CLOSE") || same_word(word, kHdf5);
}

}  // namespace plx
