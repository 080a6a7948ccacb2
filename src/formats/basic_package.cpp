#include "formats/basic_package.h"

#include <algorithm>

#include "core/text_number.h"
#include "formats/modflow_words.h"

namespace plx {

namespace {

/// The words of an options line.
std::vector<std::string> option_words(std::string_view line) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t first = line.find_first_not_of(" \t,", at);
        if (first == std::string_view::npos) break;
        const std::size_t last = std::min(line.find_first_of(" \t,", first), line.size());
        words.emplace_back(line.substr(first, last - first));
        at = last;
    }
    return words;
}

bool has_word(const std::vector<std::string>& words, std::string_view word) {
    return std::any_of(words.begin(), words.end(), [word](const auto& one) { return same_word(one, word); });
}

/// Values of one layer after the other; false when the file ended. `use` may be empty.
bool read_layers(TextSource& in, ArrayReader& arrays, const GridSize& size, bool whole,
                 const std::string& what, const std::function<void(int, const std::vector<double>&)>& use,
                 Problems& problems) {
    const std::string fault = grid_size_fault(size, in.remaining());
    if (!fault.empty()) {
        problems.push_back(in.place() + ": " + what + ": " + fault);
        return false;
    }
    std::vector<double> values;
    bool all = true;
    for (int layer = 0; layer < size.layers; ++layer) {
        const std::string name = what + " of layer " + std::to_string(layer + 1);
        const bool found = arrays.read({size.per_layer(), size.columns, whole, name, !use}, values);
        if (use && !values.empty()) use(layer, values);
        all = all && found;
        if (!found && arrays.ended()) return false;
    }
    return all;
}

}  // namespace

bool read_basic_header(TextSource& in, const ArrayStreams& streams, const TextRules& rules, BasicHeader& out,
                       Problems& problems) {
    std::string line;
    in.read_line(line);
    in.read_line(line);
    const std::string place = in.place();
    // NLAY, NROW, NCOL, NPER, ITMUNI.
    const std::vector<int> numbers = read_integers(in, rules.tab_separates, 4, 5);
    out.size = {numbers[0], numbers[1], numbers[2]};
    out.periods = numbers[3];
    out.time_unit = numbers[4];
    const std::string fault = grid_size_fault(out.size, in.remaining(), streams.most_cells());
    if (!fault.empty()) {
        problems.push_back(place + ": " + fault);
        out.size = {};
    }
    in.read_line(line);
    const std::vector<std::string> options = option_words(line.substr(0, line.find('#')));
    out.free_format = has_word(options, "FREE");
    out.cross_section = has_word(options, "XSECTION");
    out.chtoch = has_word(options, "CHTOCH");
    out.unit_list = !options.empty() && !out.free_format && !out.cross_section && !out.chtoch;
    if (out.unit_list) out.first_unit = to_int(options.front());
    return fault.empty();
}

void skip_iapart(TextSource& in, const TextRules& rules) {
    LineWords words(in, rules.tab_separates);
    words.next();
    words.next();
    words.finish();
}

Bas6Options read_bas6_options(TextSource& in) {
    std::string line;
    do {
        if (!in.read_line(line)) break;
    } while (line.starts_with('#'));
    const std::vector<std::string> words = option_words(std::string_view(line).substr(0, line.find('#')));
    return {has_word(words, "FREE"), has_word(words, "XSECTION")};
}

bool read_ibound(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                 const GridSize& size,
                 const std::function<void(int layer, const std::vector<double>& values)>& store,
                 Problems& problems) {
    ArrayReader arrays(in, streams, rules, used, problems);
    return read_layers(in, arrays, size, true, "IBOUND", store, problems);
}

double read_no_flow_head(TextSource& in, const TextRules& rules) {
    LineWords words(in, rules.tab_separates);
    const double value = words.next_double();
    words.finish();
    return value;
}

bool read_starting_heads(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                         const GridSize& size, Problems& problems) {
    ArrayReader arrays(in, streams, rules, used, problems);
    return read_layers(in, arrays, size, false, "starting heads", {}, problems);
}

bool read_stress_periods(TextSource& in, const TextRules& rules, int count, bool steady_word,
                         StressPeriods& out, Problems& problems) {
    std::string line;
    for (int i = 0; i < count; ++i) {
        bool found = false;
        std::string place;
        do {
            place = in.place();
            found = in.read_line(line);
        } while (found && is_comment(line));
        TextSource text = TextSource::of_text(line.substr(0, line.find('#')), in.name());
        LineWords words(text, rules.tab_separates);
        const std::string length = words.next();
        if (!found) {
            problems.push_back(in.place() + ": " + std::to_string(count) + " stress periods expected, " +
                               std::to_string(i) + " found");
            return false;
        }
        StressPeriod period;
        const std::string steps = words.next();
        period.length = to_double(length);
        period.steps = to_int(steps);
        if (!is_number(length) || !is_number(steps) || period.steps < 1) {
            problems.push_back(place + ": \"" + line.substr(0, 40) +
                               "\" is no length and number of steps of a stress period");
        }
        const std::string multiplier = words.next();
        if (!multiplier.empty()) period.multiplier = to_double(multiplier);
        if (steady_word) period.steady = same_word(words.next(), "SS");
        out.periods.push_back(period);
    }
    return true;
}

}  // namespace plx
