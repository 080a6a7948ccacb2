#include "formats/visual_modflow.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "core/ascii_text.h"
#include "core/text_number.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {
namespace {

constexpr const char* kSectionNames[] = {"column coordinates", "row coordinates", "cell status",
                                         "cell elevations"};

const char* name_of(VmgSection section) { return kSectionNames[static_cast<std::size_t>(section)]; }

/// Time words as projects spell them, and the words that the converters know.
std::string known_time_word(const std::string& word, bool& known) {
    static constexpr std::array<std::pair<std::string_view, const char*>, 17> kWords = {{
        {"yr", "yr"},
        {"year", "yr"},
        {"years", "yr"},
        {"d", "d"},
        {"day", "d"},
        {"days", "d"},
        {"h", "h"},
        {"hr", "h"},
        {"hour", "h"},
        {"hours", "h"},
        {"min", "min"},
        {"minute", "min"},
        {"minutes", "min"},
        {"s", "s"},
        {"sec", "s"},
        {"second", "s"},
        {"seconds", "s"},
    }};
    for (const auto& [written, meant] : kWords) {
        if (equal_no_case(word, written)) return meant;
    }
    known = false;
    return word;
}

/// Follows the tags of a project file word by word.
class UnitsBlock {
public:
    explicit UnitsBlock(VisualUnits& units) : units_(units) {}

    void begin_line() { value_ = nullptr; }
    void take(std::string word) {
        const auto is = [&word](std::string_view tag) {
            return equal_no_case(word, tag) || equal_no_case(word, std::string(tag) + ">");
        };
        if (is("<Project") || is("</Project")) {
            in_project_ = word[1] != '/';
            in_units_ = false;
        } else if (is("<Units") || is("</Units")) {
            in_units_ = in_project_ && word[1] != '/';
        } else if (value_ != nullptr) {
            *std::exchange(value_, nullptr) = std::move(word);
        } else if (in_units_ && is("Length")) {
            value_ = &units_.length;
        } else if (in_units_ && is("Time")) {
            value_ = &units_.time;
        }
    }

private:
    VisualUnits& units_;
    std::string* value_ = nullptr;
    bool in_project_ = false, in_units_ = false;
};

}  // namespace

bool read_vmf(const VXFile& file, VisualUnits& units, Problems& warnings) {
    units = {};
    VXFileReader reader;
    if (!reader.Open(file.GetFilePath().c_str())) return false;
    UnitsBlock block(units);
    while (reader.ReadLine("\r\n\t ,=", true, true, false) >= 0) {
        block.begin_line();
        for (int i = 0; i < reader.WordsFound(); ++i) block.take(reader.GetWord(i).c_str());
    }
    bool known = true;
    if (!units.time.empty()) units.time = known_time_word(units.time, known);
    if (!known) {
        warnings.push_back(std::string(file.GetFileName().c_str()) + ": the time unit " + units.time +
                           " is not known: dates count days");
    }
    return true;
}

namespace {

bool is_separator(char c) { return c == ' ' || c == '\t' || c == ',' || c == '\r'; }

/// Lines of a text where they lie in its block. A line longer than a block comes in pieces that end between
/// words, so that a binary file costs no more memory than a good one.
class LinePieces {
public:
    explicit LinePieces(TextSource& in) : in_(in) {}

    bool next(std::string_view& piece) {
        begins_line_ = ends_line_;
        line_ = in_.line();
        std::string_view bytes = in_.ahead();
        std::size_t end = bytes.find('\n');
        if (end == bytes.npos) {
            bytes = in_.peek_bytes(kLongest);
            end = bytes.find('\n');
        }
        if (bytes.empty()) return false;
        const bool line_end = end != bytes.npos;
        ends_line_ = line_end || bytes.size() < kLongest;
        if (!line_end) end = bytes.size();
        if (!ends_line_) end = std::min(end, bytes.find_last_of(" \t,\r"));
        piece = bytes.substr(0, end);
        in_.advance(std::min(end + 1, bytes.size()), line_end ? 1 : 0);
        return true;
    }
    bool begins_line() const { return begins_line_; }
    int line() const { return line_; }

private:
    static constexpr std::size_t kLongest = 64 * 1024;
    TextSource& in_;
    bool begins_line_ = true, ends_line_ = true;
    int line_ = 1;
};

/// The section that a line is the label of; empty for every other line.
std::optional<VmgSection> label_of(std::string_view line) {
    const std::string_view text = trimmed(line.substr(0, line.find('#')).substr(0, 200), " \t\r");
    if (text.empty() || std::strchr("0123456789+-.", text.front()) != nullptr) return std::nullopt;
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ascii_lower);
    // "Status by row" is a status section: what the values are comes before how they lie.
    static constexpr std::array<std::pair<const char*, VmgSection>, 5> kWords = {
        {{"status", VmgSection::kStatus},
         {"active", VmgSection::kStatus},
         {"elevation", VmgSection::kElevations},
         {"column", VmgSection::kColumns},
         {"row", VmgSection::kRows}}};
    for (const auto& [word, section] : kWords) {
        if (lower.find(word) != std::string::npos) return section;
    }
    return std::nullopt;
}

/// A section's values in lists of equal length: a layer each, once the length of a layer is known.
template <class T>
class Layers {
public:
    void set_length(std::size_t length) { length_ = length; }
    std::size_t count() const { return count_; }
    void add(T value, std::int64_t bytes_left) {
        if (lists_.empty() || lists_.back().size() == length_) {
            lists_.emplace_back();
            // Two bytes at least make a value.
            lists_.back().reserve(
                std::min(length_, static_cast<std::size_t>(std::max<std::int64_t>(bytes_left, 0)) / 2 + 64));
        }
        lists_.back().push_back(value);
        ++count_;
    }
    std::vector<std::vector<T>> take(std::size_t length) {
        if (length_ == length) return std::move(lists_);
        Layers cut;
        cut.set_length(length);
        for (std::vector<T>& list : lists_) {
            for (const T value : list) cut.add(value, static_cast<std::int64_t>(2 * count_));
            list = {};
        }
        return std::move(cut.lists_);
    }

private:
    std::size_t length_ = std::size_t{1} << 20, count_ = 0;
    std::vector<std::vector<T>> lists_;
};

class VmgReader {
public:
    VmgReader(TextSource& in, VisualGrid& grid) : in_(in), grid_(grid), lines_(in) {}

    std::optional<VmgFault> read() {
        std::string_view piece;
        bool comment = false;
        while (!fault_ && lines_.next(piece)) {
            if (lines_.begins_line()) {
                comment = false;
                if (const auto label = label_of(piece)) {
                    begin_section(*label);
                    continue;
                }
            }
            if (!comment) comment = take_values(piece);
        }
        if (!fault_) check_edges();
        if (!fault_) check_layers();
        if (!fault_) finish();
        return std::move(fault_);
    }

private:
    /// Where a section's last values are, for messages about the whole of it.
    struct Last {
        int line = 0;
        std::string text;
    };

    std::size_t count_of(VmgSection section) const {
        switch (section) {
            case VmgSection::kColumns:
                return grid_.column_edges.size();
            case VmgSection::kRows:
                return grid_.row_edges.size();
            case VmgSection::kStatus:
                return status_.count();
            default:
                return elevations_.count();
        }
    }

    void fail(VmgSection section, int line, std::string_view text, const std::string& what) {
        const std::string place = line > 0 ? in_.name() + ": line " + std::to_string(line) : in_.name();
        fault_ = VmgFault{section, line, std::string(trimmed(text.substr(0, 200), " \t\r")),
                          place + ": " + name_of(section) + ": " + what};
    }
    void fail_at_last(VmgSection section, const std::string& what) {
        const Last& last = last_[static_cast<std::size_t>(section)];
        fail(section, last.line, last.text, what);
    }

    void begin_section(VmgSection section) {
        if (count_of(section) > 0) {
            fail(section, lines_.line(), "", "the section is there twice");
            return;
        }
        section_ = section;
        const bool edges_known = grid_.column_edges.size() > 1 && grid_.row_edges.size() > 1;
        if (!edges_known || section == VmgSection::kColumns || section == VmgSection::kRows) return;
        const std::size_t cells = (grid_.column_edges.size() - 1) * (grid_.row_edges.size() - 1);
        if (cells > static_cast<std::size_t>(kMaxCells)) return;
        section == VmgSection::kStatus ? status_.set_length(cells) : elevations_.set_length(cells);
    }

    /// Reads a line's values into the current section; true when the rest of the line is a comment.
    bool take_values(std::string_view piece) {
        const std::string_view text = trimmed(piece, " \t,\r");
        if (text.empty()) return false;
        if (text.front() == '#') return true;
        if (!section_) {
            // Titles may stand before the first section, values may not.
            if (std::strchr("0123456789+-.", text.front()) != nullptr)
                fail(VmgSection::kColumns, lines_.line(), text, "values before the first section's label");
            return false;
        }
        Last& last = last_[static_cast<std::size_t>(*section_)];
        last.line = lines_.line();
        last.text.assign(text.substr(0, 200));
        const std::int64_t left = in_.remaining() + std::ssize(text);
        switch (*section_) {
            case VmgSection::kColumns:
                return take_edges(text, grid_.column_edges);
            case VmgSection::kRows:
                return take_edges(text, grid_.row_edges);
            case VmgSection::kStatus:
                return for_each_value(text, [this, left](double v) {
                    if (v != std::floor(v) || std::fabs(v) > INT_MAX || status_.count() >= kMaxValues)
                        return false;
                    status_.add(static_cast<std::int32_t>(v), left);
                    return true;
                });
            default:
                return for_each_value(text, [this, left](double v) {
                    if (elevations_.count() >= 2 * kMaxValues) return false;
                    elevations_.add(v, left);
                    return true;
                });
        }
    }

    bool take_edges(std::string_view text, std::vector<double>& edges) {
        return for_each_value(text, [&edges](double v) {
            if (edges.size() > kMaxExtent) return false;
            edges.push_back(v);
            return true;
        });
    }

    /// Hands over the numbers of a line; a word that is none, or that `take` refuses, is the section's fault.
    template <class Take>
    bool for_each_value(std::string_view text, Take take) {
        const char* p = text.data();
        const char* const end = p + text.size();
        while (p != end) {
            if (is_separator(*p)) {
                ++p;
                continue;
            }
            if (*p == '#') return true;
            double value = 0.0;
            const char* const after = parse_double(p, end, value);
            const bool whole = after != nullptr && (after == end || is_separator(*after));
            if (!whole || !std::isfinite(value) || !take(value)) {
                const char* const word_end = std::find_if(p, end, is_separator);
                const std::string word(p, std::min(word_end, p + 40));
                fail(*section_, lines_.line(), text,
                     whole ? "\"" + word + "\" is out of range" : "\"" + word + "\" is no number");
                return false;
            }
            p = after;
        }
        return false;
    }

    bool check_edge_list(VmgSection section, std::vector<double>& edges, bool may_fall) {
        const std::size_t count = edges.size();
        if (count < 2) {
            fail_at_last(section, count == 0 ? "the section is missing or empty"
                                             : "one position, at least two make a cell");
            return false;
        }
        const bool rises =
            std::adjacent_find(edges.begin(), edges.end(), std::greater_equal<>()) == edges.end();
        const bool falls = std::adjacent_find(edges.begin(), edges.end(), std::less_equal<>()) == edges.end();
        if (rises || (falls && may_fall)) {
            if (rises && may_fall) std::reverse(edges.begin(), edges.end());
            return true;
        }
        fail_at_last(section, may_fall ? "the positions neither rise nor fall throughout"
                                       : "the positions do not rise throughout");
        return false;
    }

    void check_edges() {
        if (!check_edge_list(VmgSection::kColumns, grid_.column_edges, false)) return;
        check_edge_list(VmgSection::kRows, grid_.row_edges, true);
    }

    void check_layers() {
        const std::size_t rows = grid_.row_edges.size() - 1, columns = grid_.column_edges.size() - 1;
        const std::size_t cells = rows * columns, status = status_.count(), elevations = elevations_.count();
        const std::string layer = std::to_string(cells) + " cells (" + std::to_string(rows) + " rows, " +
                                  std::to_string(columns) + " columns)";
        if (status == 0 || status % cells != 0) {
            fail_at_last(VmgSection::kStatus,
                         status == 0 ? "the section is missing or empty"
                                     : std::to_string(status) + " values are no whole layers of " + layer);
        } else if (elevations != status + cells) {
            fail_at_last(VmgSection::kElevations,
                         elevations == 0
                             ? "the section is missing or empty"
                             : std::to_string(elevations) + " values, " + std::to_string(status / cells) +
                                   " layers of " + layer + " have " + std::to_string(status + cells));
        } else {
            grid_.size = {static_cast<int>(status / cells), static_cast<int>(rows),
                          static_cast<int>(columns)};
        }
    }

    void finish() {
        grid_.status = status_.take(grid_.size.per_layer());
        for (std::vector<double>& surface : elevations_.take(grid_.size.per_layer()))
            grid_.surfaces.push_back(std::make_shared<const std::vector<double>>(std::move(surface)));
    }

    static constexpr std::size_t kMaxValues = static_cast<std::size_t>(kMaxCells);
    static constexpr std::size_t kMaxExtent = 10'000'000;

    TextSource& in_;
    VisualGrid& grid_;
    LinePieces lines_;
    std::optional<VmgSection> section_;
    std::array<Last, 4> last_;
    Layers<std::int32_t> status_;
    Layers<double> elevations_;
    std::optional<VmgFault> fault_;
};

}  // namespace

std::optional<VmgFault> read_vmg(TextSource& in, VisualGrid& grid) {
    grid = {};
    return VmgReader(in, grid).read();
}

}  // namespace plx
