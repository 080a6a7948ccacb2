#include "formats/array_record.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/text_number.h"
#include "formats/array_control.h"
#include "formats/list_directed.h"
#include "formats/modflow_words.h"

namespace plx {

namespace {

using Form = ArrayControl::Form;

/// Reads a number with nothing special about it: blanks, a number, one separator, all inside the source's
/// block. False, with nothing taken, when the next word needs the full rules.
bool take_plain_number(TextSource& in, double& value, WordEnd& end) {
    const std::string_view ahead = in.ahead();
    const char* p = ahead.data();
    const char* last = p + ahead.size();
    while (p != last && *p == ' ') ++p;
    if (p == last || !(static_cast<unsigned char>(*p - '0') < 10 || *p == '-' || *p == '+' || *p == '.'))
        return false;
    p = parse_double(p, last, value);
    if (!p || p == last) return false;
    int lines = 0;
    if (*p == ' ' || *p == ',') {
        end = WordEnd::kSeparator;
    } else if (*p == '\n' || (*p == '\r' && p + 1 != last && p[1] == '\n')) {
        p += *p == '\r' ? 1 : 0;
        end = WordEnd::kEndOfLine;
        lines = 1;
    } else {
        return false;
    }
    in.advance(static_cast<std::size_t>(p + 1 - ahead.data()), lines);
    return true;
}

ArrayFindings read_words(TextSource& in, const ArrayData& data, const TextRules& rules) {
    ArrayFindings findings;
    WordStyle style;
    style.tab_separates = rules.tab_separates;
    style.tab_met = &findings.tabs;
    std::string word;
    WordEnd end = WordEnd::kEndOfLine;
    for (double& value : data.values) {
        if (!take_plain_number(in, value, end)) {
            end = read_word(in, word, style);
            while (rules.skip_empty_words && word.empty() && end != WordEnd::kEndOfFile) {
                findings.empty_words = true;
                end = read_word(in, word, style);
            }
            if (end == WordEnd::kEndOfFile && word.empty()) return findings;
            value = to_double(word);
            if (rules.check_words && !is_number(word))
                findings.note_bad_word(word, in.line() - (end == WordEnd::kEndOfLine ? 1 : 0));
        }
        value *= data.multiplier;
        ++findings.found;
    }
    finish_line(in, end);
    return findings;
}

constexpr std::size_t kBinaryHeader = 44;
constexpr std::size_t kColumnsAt = 32, kRowsAt = 36;

/// True when the next bytes are the header of a layer of this size.
bool has_binary_header(TextSource& in, std::size_t columns, std::size_t rows) {
    const std::string_view bytes = in.peek_bytes(kBinaryHeader);
    if (bytes.size() < kBinaryHeader) return false;
    std::int32_t header_columns, header_rows;
    std::memcpy(&header_columns, bytes.data() + kColumnsAt, sizeof header_columns);
    std::memcpy(&header_rows, bytes.data() + kRowsAt, sizeof header_rows);
    return header_columns >= 0 && static_cast<std::size_t>(header_columns) == columns && header_rows >= 0 &&
           static_cast<std::size_t>(header_rows) == rows;
}

template <class Number>
std::size_t read_binary_values(TextSource& in, std::span<double> values, double multiplier) {
    constexpr std::size_t kPart = 4096;
    Number part[kPart];
    std::size_t found = 0;
    while (found < values.size()) {
        const std::size_t wanted = std::min(kPart, values.size() - found);
        const std::size_t got = in.read_bytes(part, wanted * sizeof(Number)) / sizeof(Number);
        for (std::size_t i = 0; i < got; ++i) values[found + i] = static_cast<double>(part[i]) * multiplier;
        found += got;
        if (got < wanted) break;
    }
    return found;
}

ArrayFindings read_binary(TextSource& in, const ArrayData& data, bool whole) {
    const auto columns = static_cast<std::size_t>(std::max(data.columns, 1));
    char header[kBinaryHeader];
    if (has_binary_header(in, columns, data.values.size() / columns)) in.read_bytes(header, sizeof header);
    ArrayFindings findings;
    findings.layout_matters = true;
    findings.found = whole ? read_binary_values<std::int32_t>(in, data.values, data.multiplier)
                           : read_binary_values<float>(in, data.values, data.multiplier);
    return findings;
}

/// The least number of bytes that an array takes up.
std::size_t least_bytes(const ArrayControl& control, const ArrayReader::Shape& shape) {
    const auto columns = static_cast<std::size_t>(std::max(shape.columns, 1));
    const std::size_t rows = (shape.count + columns - 1) / columns;
    switch (control.form) {
        case Form::kWords:
            return shape.count;
        case Form::kBinary:
            return shape.count * 4;
        case Form::kFormatted: {
            const std::size_t pass = control.format.values_per_pass();
            return rows * ((columns + pass - 1) / pass);
        }
        case Form::kListDirected: {
            // One repeat count can stand for a whole row.
            constexpr std::size_t kSample = 64 * 1024;
            const bool repeats = control.source->peek_bytes(kSample).find('*') != std::string_view::npos;
            return repeats ? rows : shape.count;
        }
        default:
            return 0;
    }
}

/// Zeros that stand for an array that an HDF5 file does not hold: the rest of the model may still be of use.
/// A larger array is rather a wrong size of the grid, and no memory is taken for it.
constexpr std::size_t kMostMadeUp = 1'000'000;

std::string hdf5_problem(const ArrayControl& control, const std::string& fault, const std::string& what) {
    return control.place + ": " + fault + " (" + what + ")";
}

}  // namespace

bool read_array_words(TextSource& in, std::span<double> values, double multiplier, const TextRules& rules,
                      TextRules& used) {
    std::fill(values.begin(), values.end(), 0.0);
    const ArrayData data{values, 1, multiplier};
    const ArrayFindings findings = read_words(in, data, rules);
    used.skip_empty_words |= findings.empty_words;
    used.tab_separates |= findings.tabs;
    return findings.found == values.size();
}

bool ArrayReader::read_control(const std::string& what, ArrayControl& control) {
    return read_array_control(in_, streams_, rules_, used_, what, control, problems_);
}

bool ArrayReader::has_room(const ArrayControl& control, const Shape& shape) {
    if (control.form == Form::kHdf5 && shape.count > kMostMadeUp) {
        const std::string fault = hdf5_slab_fault(control.hdf5, control.dataset, control.slab, shape.count);
        if (!fault.empty()) problems_.push_back(hdf5_problem(control, fault, shape.what));
        return fault.empty();
    }
    if (!control.source || shape.count == 0) return true;
    const auto room = static_cast<std::size_t>(control.source->remaining());
    if (least_bytes(control, shape) <= room) return true;
    problems_.push_back(control.source->place() + ": " + std::to_string(shape.count) +
                        " values expected for " + shape.what + ", but only " + std::to_string(room) +
                        " bytes follow");
    return false;
}

ArrayFindings ArrayReader::read_findings(const ArrayControl& control, const ArrayTarget& target) {
    const ArrayData data{target.values, target.columns, control.value};
    TextSource& source = *control.source;
    switch (control.form) {
        case Form::kListDirected:
            return read_list_directed(source, data, rules_.tab_separates);
        case Form::kFormatted:
            return read_formatted(source, control.format, data);
        case Form::kBinary:
            return read_binary(source, data, target.whole);
        default:
            return read_words(source, data, rules_);
    }
}

bool ArrayReader::read_hdf5(const ArrayControl& control, const ArrayTarget& target) {
    const std::string fault = read_hdf5_slab(control.hdf5, control.dataset, control.slab, target.values);
    if (!fault.empty()) {
        std::fill(target.values.begin(), target.values.end(), 0.0);
        problems_.push_back(hdf5_problem(control, fault, target.what));
        return false;
    }
    const auto bad = std::find_if_not(target.values.begin(), target.values.end(),
                                      [](double value) { return std::isfinite(value); });
    if (bad != target.values.end()) {
        const std::string number = std::to_string(bad - target.values.begin() + 1);
        problems_.push_back(hdf5_problem(
            control, "value " + number + " of " + control.dataset + " is not a number, 0 is used",
            target.what));
    }
    for (double& value : target.values) value = std::isfinite(value) ? value * control.value : 0.0;
    return true;
}

bool ArrayReader::read_values(const ArrayControl& control, const ArrayTarget& target) {
    if (control.form == Form::kHdf5) return read_hdf5(control, target);
    const double fill = control.form == Form::kConstant ? control.value : 0.0;
    std::fill(target.values.begin(), target.values.end(), fill);
    if (!control.source) return control.form == Form::kConstant;
    const ArrayFindings findings = read_findings(control, target);
    used_.skip_empty_words |= findings.empty_words && rules_.skip_empty_words;
    used_.tab_separates |= findings.tabs;
    used_.obey_formats |= findings.layout_matters;
    if (findings.bad_line != 0) {
        problems_.push_back(control.source->name() + ": line " + std::to_string(findings.bad_line) + ": \"" +
                            findings.bad_word.substr(0, 40) + "\" in " + target.what +
                            " is not a number, 0 is used");
    }
    if (findings.found == target.values.size()) return true;
    problems_.push_back(control.source->place() + ": " + std::to_string(target.values.size()) +
                        " values expected for " + target.what + ", " + std::to_string(findings.found) +
                        " found");
    ended_ = ended_ || control.source == &in_;
    return false;
}

bool ArrayReader::read(const Shape& shape, std::vector<double>& values) {
    values.clear();
    ArrayControl control;
    const bool found = read_control(shape.what, control);
    ended_ = found ? !has_room(control, shape) : control.form == Form::kEnded;
    if (ended_) return false;
    if (shape.unused && control.form == Form::kHdf5) return true;
    values.resize(shape.count);
    return read_values(control, {values, shape.columns, shape.whole, shape.what}) && found;
}

bool ArrayReader::read_into(const ArrayTarget& target) {
    ArrayControl control;
    const bool found = read_control(target.what, control);
    ended_ = control.form == Form::kEnded;
    return read_values(control, target) && found;
}

bool read_array_record(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                       const ArrayTarget& target, Problems& problems) {
    return ArrayReader(in, streams, rules, used, problems).read_into(target);
}

}  // namespace plx
