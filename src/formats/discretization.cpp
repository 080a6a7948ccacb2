#include "formats/discretization.h"

#include <array>
#include <utility>

#include "formats/array_control.h"
#include "formats/basic_package.h"
#include "formats/list_directed.h"
#include "formats/modflow_words.h"

namespace plx {

std::string time_unit_word(int code) {
    static constexpr std::array kWords = {"undefined", "seconds", "minutes", "hours", "days", "years"};
    return code >= 0 && static_cast<std::size_t>(code) < kWords.size()
               ? kWords[static_cast<std::size_t>(code)]
               : "";
}

std::string length_unit_word(int code) {
    static constexpr std::array kWords = {"undefined", "feet", "meters", "centimeters"};
    return code >= 0 && static_cast<std::size_t>(code) < kWords.size()
               ? kWords[static_cast<std::size_t>(code)]
               : "";
}

namespace {

bool is_integer(const std::string& word) {
    return !word.empty() && word.find_first_not_of("+-0123456789") == std::string::npos;
}

/// Drops blank lines and comments, so that the next line is one with words.
void skip_to_words(TextSource& in) {
    while (!in.at_end()) {
        const std::string_view line = in.peek_line();
        const std::size_t first = line.find_first_not_of(" \t");
        if (first != std::string_view::npos && line[first] != '#') return;
        std::string_view dropped;
        in.next_line(dropped);
    }
}

class DiscretizationReader {
public:
    DiscretizationReader(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                         Discretization& out, Problems& problems)
        : in_(in),
          rules_(rules),
          out_(out),
          problems_(problems),
          arrays_(in, streams, rules, used, problems),
          most_cells_(streams.most_cells()) {}

    bool read() {
        int periods = 0;
        if (!read_sizes(periods) || !read_confining_beds() || !read_widths() || !read_surfaces())
            return false;
        if (periods < 0)
            problems_.push_back(in_.place() + ": " + std::to_string(periods) + " stress periods");
        read_stress_periods(in_, rules_, periods, true, out_.periods, problems_);
        return true;
    }

private:
    bool read_sizes(int& periods) {
        skip_to_words(in_);
        const std::string place = in_.place();
        // NLAY, NROW, NCOL, NPER, ITMUNI, LENUNI; the units may be missing.
        const std::vector<int> numbers = read_integers(in_, rules_.tab_separates, 4, 6);
        out_.size = {numbers[0], numbers[1], numbers[2]};
        periods = numbers[3];
        out_.time_unit = numbers[4];
        out_.length_unit = numbers[5];
        const std::string fault = grid_size_fault(out_.size, in_.remaining(), most_cells_);
        if (fault.empty()) return true;
        problems_.push_back(place + ": " + fault);
        out_.size = {};
        return false;
    }

    /// The line of LAYCBD may be missing: then the control record of DELR is next.
    bool has_confining_beds() {
        skip_to_words(in_);
        const std::string line(in_.peek_line());
        TextSource text = TextSource::of_text(line, in_.name());
        LineWords words(text, rules_.tab_separates);
        std::string word = words.next();
        if (is_array_keyword(word)) return false;
        if (line.substr(0, line.find('#')).find('(') == std::string::npos) return true;
        // A parenthesis belongs to a format, or to a remark behind as many integers as there are layers.
        for (int layer = 0; layer < out_.size.layers; ++layer, word = words.next()) {
            if (!is_integer(word)) return false;
        }
        // A fixed record has two numbers before its format.
        return out_.size.layers > 2 || (out_.size.layers > 1 && word.find('(') == std::string::npos);
    }

    bool read_confining_beds() {
        if (!has_confining_beds()) {
            beds_.assign(static_cast<std::size_t>(out_.size.layers), 0.0);
            return true;
        }
        beds_.resize(static_cast<std::size_t>(out_.size.layers));
        const std::string place = in_.place();
        const ArrayFindings findings =
            read_list_directed(in_, {beds_, out_.size.layers, 1.0}, rules_.tab_separates);
        if (findings.found == beds_.size() && findings.bad_line == 0) return true;
        problems_.push_back(place + ": LAYCBD is no list of " + std::to_string(beds_.size()) + " integers");
        return false;
    }

    /// False when the file has no more to give.
    bool read_array(const ArrayReader::Shape& shape, std::vector<double>& values) {
        return arrays_.read(shape, values) || !arrays_.ended();
    }

    bool read_widths() {
        const auto rows = static_cast<std::size_t>(out_.size.rows);
        const auto columns = static_cast<std::size_t>(out_.size.columns);
        return read_array({columns, out_.size.columns, false, "DELR"}, out_.delr) &&
               read_array({rows, out_.size.rows, false, "DELC"}, out_.delc);
    }

    bool read_surface(const std::string& what, GridGeometry::Surface& surface) {
        std::vector<double> values;
        const bool found = read_array({out_.size.per_layer(), out_.size.columns, false, what}, values);
        surface = std::make_shared<const std::vector<double>>(std::move(values));
        return found;
    }

    bool read_surfaces() {
        if (!read_surface("TOP", out_.top)) return false;
        GridGeometry::Surface top = out_.top;
        for (int layer = 0; layer < out_.size.layers; ++layer) {
            GridGeometry::Surface bottom;
            const std::string number = std::to_string(layer + 1);
            if (!read_surface("BOTM of layer " + number, bottom)) return false;
            out_.tops.push_back(top);
            out_.bottoms.push_back(bottom);
            top = bottom;
            const bool bed = beds_[static_cast<std::size_t>(layer)] != 0.0 && layer + 1 < out_.size.layers;
            if (bed && !read_surface("BOTM below layer " + number, top)) return false;
        }
        return true;
    }

    TextSource& in_;
    const TextRules& rules_;
    Discretization& out_;
    Problems& problems_;
    ArrayReader arrays_;
    long long most_cells_;
    std::vector<double> beds_;
};

}  // namespace

bool read_discretization(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                         Discretization& out, Problems& problems) {
    return DiscretizationReader(in, streams, rules, used, out, problems).read();
}

}  // namespace plx
