#include "formats/block_centered_flow.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "core/text_number.h"
#include "formats/array_data.h"
#include "formats/modflow_words.h"

namespace plx {

namespace {

/// What of the first record decides which arrays follow.
struct FirstRecord {
    int iss = 0;  ///< 0: transient
    double dry_head = 0.0;
    bool has_dry_head = false;  ///< its field is not blank
    int wetting = 0;            ///< IWDFLG
    bool operator==(const FirstRecord&) const = default;
};

constexpr int kFields = 7;
constexpr int kFieldWidth = 10;

FirstRecord first_record(const std::string& line, bool by_words, bool tab_separates) {
    TextSource text = TextSource::of_text(line, "");
    std::array<std::string, kFields> fields;
    WordStyle style;
    style.tab_separates = tab_separates;
    style.space_ends_word = by_words;
    style.fixed_width = !by_words;
    style.width = kFieldWidth;
    for (std::string& field : fields) {
        if (read_word(text, field, style) != WordEnd::kSeparator) break;
    }
    return {to_int(fields[0]), to_double(fields[2]), !fields[2].empty(), to_int(fields[3])};
}

/// LAYCON in columns of two, 40 a line; false when the line holds anything else there.
bool cut_layer_types(std::string_view line, std::span<int> types) {
    for (std::size_t i = 0; i < types.size(); ++i) {
        const std::string_view field = 2 * i < line.size() ? line.substr(2 * i, 2) : std::string_view();
        if (field.find_first_not_of(" 0123456789") != std::string_view::npos) return false;
        types[i] = to_int(field);
    }
    return true;
}

class FlowReader {
public:
    FlowReader(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
               const GridSize& size, BlockCenteredFlow& out, Problems& problems)
        : in_(in),
          rules_(rules),
          used_(used),
          size_(size),
          out_(out),
          problems_(problems),
          arrays_(in, streams, rules, used, problems) {}

    bool read(bool free_format, bool free_bcf_record, bool& free_used) {
        if (!read_first_record(free_format && free_bcf_record, free_used)) return false;
        if (!read_layer_types(free_format && free_bcf_record)) return false;
        const auto rows = static_cast<std::size_t>(size_.rows),
                   columns = static_cast<std::size_t>(size_.columns);
        std::vector<double> trpy;
        if (!read_array({static_cast<std::size_t>(size_.layers), size_.layers, false, "TRPY"}, trpy) ||
            !read_array({columns, size_.columns, false, "DELR"}, out_.delr) ||
            !read_array({rows, size_.rows, false, "DELC"}, out_.delc)) {
            return false;
        }
        for (int layer = 0; layer < size_.layers; ++layer) {
            if (!read_layer(layer)) return false;
        }
        out_.top = out_.tops.front();
        return true;
    }

private:
    bool read_first_record(bool by_words, bool& free_used) {
        std::string line;
        do {
            in_.read_line(line);
        } while (is_comment(line));
        const std::string fault = grid_size_fault(size_, in_.remaining());
        if (!fault.empty()) {
            problems_.push_back(in_.place() + ": " + fault);
            return false;
        }
        record_ = first_record(line, by_words, rules_.tab_separates);
        if (by_words && !(record_ == first_record(line, false, rules_.tab_separates))) free_used = true;
        out_.dry_head = record_.dry_head;
        out_.has_dry_head = record_.has_dry_head;
        return true;
    }

    bool read_layer_types(bool free_record) {
        out_.laycon.assign(static_cast<std::size_t>(size_.layers), 0);
        const bool columns = rules_.obey_formats && !free_record && fits_columns();
        const std::string place = in_.place();
        if (!(columns ? read_columns() : read_words())) {
            problems_.push_back(place + ": the file ends in LAYCON");
            return false;
        }
        for (int& type : out_.laycon) type %= 10;
        return true;
    }

    std::span<int> types_of_line(std::size_t first) {
        return std::span<int>(out_.laycon)
            .subspan(first, std::min<std::size_t>(40, out_.laycon.size() - first));
    }

    bool fits_columns() {
        const bool fits = cut_layer_types(in_.peek_line(), types_of_line(0));
        TextSource text = TextSource::of_text(in_.peek_line(), "");
        LineWords words(text, rules_.tab_separates);
        for (const int type : types_of_line(0)) {
            if (fits && words.next_int() != type) used_.obey_formats = true;
        }
        return fits;
    }

    bool read_columns() {
        for (std::size_t first = 0; first < out_.laycon.size(); first += 40) {
            std::string line;
            if (!in_.read_line(line)) return false;
            cut_layer_types(line, types_of_line(first));
        }
        return true;
    }

    bool read_words() {
        WordStyle style;
        style.tab_separates = rules_.tab_separates;
        WordEnd end = WordEnd::kEndOfLine;
        std::string word;
        for (int& type : out_.laycon) {
            do {
                end = read_word(in_, word, style);
            } while (word.empty() && rules_.skip_empty_words && end != WordEnd::kEndOfFile);
            if (word.empty() && end == WordEnd::kEndOfFile) return false;
            type = to_int(word);
        }
        finish_line(in_, end);
        return true;
    }

    /// False when the file has no more to give.
    bool read_array(const ArrayReader::Shape& shape, std::vector<double>& values) {
        return arrays_.read(shape, values) || !arrays_.ended();
    }

    bool read_layer(int layer) {
        const int type = out_.laycon[static_cast<std::size_t>(layer)];
        const bool transient = record_.iss == 0, last = layer + 1 == size_.layers;
        const bool has_bottom = type == 1 || type == 3, has_top = type == 2 || type == 3;
        std::vector<double> passed, bottom, top;
        const auto read = [&](bool present, const char* what, std::vector<double>& values) {
            const std::string name = what + (" of layer " + std::to_string(layer + 1));
            return !present || read_array({size_.per_layer(), size_.columns, false, name}, values);
        };
        const bool found =
            read(transient, "primary storage", passed) && read(!has_bottom, "transmissivity", passed) &&
            read(has_bottom, "conductivity", passed) && read(has_bottom, "bottom", bottom) &&
            read(!last, "vertical conductance", passed) &&
            read(transient && has_top, "secondary storage", passed) && read(has_top, "top", top) &&
            read(record_.wetting != 0 && has_bottom, "wetting thresholds", passed);
        if (!found) return false;
        add_surfaces(layer, std::move(top), std::move(bottom));
        return true;
    }

    /// Makes up the surfaces that the layer's type does not give.
    void add_surfaces(int layer, std::vector<double> top, std::vector<double> bottom) {
        constexpr double kThickness = 100.0;
        const auto moved = [](const std::vector<double>& from, double by) {
            std::vector<double> to(from);
            for (double& value : to) value += by;
            return to;
        };
        GridGeometry::Surface top_surface;
        if (top.empty() && bottom.empty()) {
            top_surface = layer > 0 ? out_.bottoms.back()
                                    : std::make_shared<const std::vector<double>>(size_.per_layer(), 0.0);
            bottom = moved(*top_surface, -kThickness);
        } else if (top.empty()) {
            top = moved(bottom, kThickness);
        } else if (bottom.empty()) {
            bottom = moved(top, -kThickness);
        }
        if (!top_surface) top_surface = std::make_shared<const std::vector<double>>(std::move(top));
        out_.tops.push_back(std::move(top_surface));
        out_.bottoms.push_back(std::make_shared<const std::vector<double>>(std::move(bottom)));
    }

    TextSource& in_;
    const TextRules& rules_;
    TextRules& used_;
    const GridSize size_;
    BlockCenteredFlow& out_;
    Problems& problems_;
    ArrayReader arrays_;
    FirstRecord record_;
};

}  // namespace

bool read_block_centered_flow(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                              const GridSize& size, bool free_format, bool free_bcf_record, bool& free_used,
                              BlockCenteredFlow& out, Problems& problems) {
    return FlowReader(in, streams, rules, used, size, out, problems)
        .read(free_format, free_bcf_record, free_used);
}

bool read_flow_package_dry_head(TextSource& in, double& dry_head) {
    std::string line;
    do {
        if (!in.read_line(line)) return false;
    } while (is_comment(line) || is_blank(line));
    const auto number = [&dry_head](std::string_view text) {
        const char* last = text.data() + text.size();
        const char* end = parse_double(text.data(), last, dry_head);
        return end && std::isfinite(dry_head) &&
               std::string_view(end, static_cast<std::size_t>(last - end)).find_first_not_of(" \t") ==
                   std::string_view::npos;
    };
    const bool first_blank = line.substr(0, 10).find_first_not_of(' ') == std::string::npos;
    TextSource text = TextSource::of_text(line, "");
    LineWords words(text, true);
    const std::string first = words.next();
    const bool first_whole = first.find_first_not_of("+-0123456789") == std::string::npos;
    if (!first_blank && first_whole && number(words.next())) return true;
    return line.size() > 10 && number(std::string_view(line).substr(10, 10));
}

}  // namespace plx
