#include "formats/transport_package.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "core/text_number.h"
#include "formats/fortran_format.h"
#include "formats/list_directed.h"
#include "formats/modflow_words.h"

namespace plx {

namespace {

constexpr std::size_t kFieldColumns = 10, kFormatColumns = 20;
/// Layer types on one line.
constexpr int kTypesPerLine = 40;
/// Headings and comments that may stand before the line of sizes.
constexpr int kMostHeadings = 20;

struct Control {
    int form = 0;  ///< IREAD
    double constant = 0.0;
    std::string format;
};

/// An array of the package: values in rows of `columns`.
struct Target {
    std::span<double> values;
    int columns = 1;
    const char* what = "";
};

class PackageReader {
public:
    PackageReader(TextSource& in, const GridSize& grid, bool tab_separates, Problems& problems)
        : in_(in), grid_(grid), tab_separates_(tab_separates), problems_(problems) {}

    bool find_arrays() {
        std::string line;
        for (int i = 0; i < kMostHeadings && in_.read_line(line); ++i) {
            TextSource text = TextSource::of_text(line, in_.name());
            LineWords words(text, true);
            const int layers = words.next_int(), rows = words.next_int(), columns = words.next_int();
            if (layers != grid_.layers || rows != grid_.rows || columns != grid_.columns) continue;
            for (int rest = 2 + (layers + kTypesPerLine - 1) / kTypesPerLine; rest > 0; --rest)
                in_.read_line(line);
            return true;
        }
        return fail("no line with the model's layers, rows and columns at the begin");
    }

    bool read(const Target& target) {
        Control control;
        if (!read_control(control)) return fail("the file ends before " + std::string(target.what));
        const double multiplier = control.constant == 0.0 ? 1.0 : control.constant;
        switch (control.form) {
            case 0:
                std::fill(target.values.begin(), target.values.end(), control.constant);
                return true;
            case 100:
                return read_by_format(control, multiplier, target);
            case 101:
                return read_blocks(target);
            case 102:
                return read_zones(control, target);
            // One read statement takes the whole array, so that rows may share a line.
            case 103:
                return check(
                    read_list_directed(in_, {target.values, count(target), multiplier}, tab_separates_),
                    target);
            default:
                return fail("array form " + std::to_string(control.form) + " of " + target.what +
                            " is not read");
        }
    }

private:
    static int count(const Target& target) { return static_cast<int>(target.values.size()); }

    bool fail(const std::string& text) {
        problems_.push_back(in_.place() + ": " + text);
        return false;
    }

    bool read_control(Control& control) {
        std::string line;
        if (!in_.read_line(line)) return false;
        TextSource text = TextSource::of_text(std::string_view(line).substr(0, kFieldColumns), in_.name());
        LineWords first(text, true);
        first.next();
        if (!first.next().empty()) {
            TextSource whole = TextSource::of_text(line, in_.name());
            LineWords words(whole, true);
            control.form = words.next_int();
            control.constant = words.next_double();
            control.format = words.next();
            return true;
        }
        line.resize(std::max(line.size(), 2 * kFieldColumns), ' ');
        control.form = to_int(line.substr(0, kFieldColumns));
        parse_fortran_number(line.substr(kFieldColumns, kFieldColumns), 0, 0, control.constant);
        control.format = line.substr(2 * kFieldColumns, kFormatColumns);
        return true;
    }

    bool check(const ArrayFindings& findings, const Target& target) {
        if (findings.bad_line != 0) {
            problems_.push_back(in_.name() + ": line " + std::to_string(findings.bad_line) + ": \"" +
                                findings.bad_word.substr(0, kFormatColumns) + "\" in " + target.what +
                                " is not a number");
            return false;
        }
        if (findings.found == target.values.size()) return true;
        return fail(std::to_string(target.values.size()) + " values expected for " + target.what + ", " +
                    std::to_string(findings.found) + " found");
    }

    bool read_by_format(const Control& control, double multiplier, const Target& target) {
        const std::size_t end = control.format.rfind(')');
        const auto format =
            FortranFormat::parse(control.format.substr(0, end == std::string::npos ? end : end + 1));
        if (!format) return fail("\"" + control.format + "\" of " + target.what + " is no known format");
        return check(read_formatted(in_, *format, {target.values, target.columns, multiplier}), target);
    }

    /// A count that stands on a line of its own.
    bool read_count(const Target& target, std::size_t& wanted) {
        double value = 0.0;
        if (!check(read_list_directed(in_, {{&value, 1}, 1, 1.0}, tab_separates_),
                   {{&value, 1}, 1, target.what})) {
            return false;
        }
        if (!(value >= 0.0) || value > static_cast<double>(in_.remaining())) {
            return fail("a count in " + std::string(target.what) + " that the file cannot hold");
        }
        wanted = static_cast<std::size_t>(value);
        return true;
    }

    bool read_blocks(const Target& target) {
        std::size_t blocks = 0;
        if (!read_count(target, blocks)) return false;
        std::fill(target.values.begin(), target.values.end(), 0.0);
        const int rows = count(target) / target.columns;
        for (std::size_t n = 0; n < blocks; ++n) {
            std::array<double, 5> block{};  // first and last row, first and last column, value
            if (!check(read_list_directed(in_, {block, 5, 1.0}, tab_separates_), {block, 5, target.what}))
                return false;
            const int last_row = std::min(truncate_to_int(block[1]), rows);
            const int last_column = std::min(truncate_to_int(block[3]), target.columns);
            for (int i = std::max(truncate_to_int(block[0]), 1); i <= last_row; ++i) {
                for (int j = std::max(truncate_to_int(block[2]), 1); j <= last_column; ++j) {
                    target.values[static_cast<std::size_t>((i - 1) * target.columns + j - 1)] = block[4];
                }
            }
        }
        return true;
    }

    bool read_zones(const Control& control, const Target& target) {
        std::size_t zones = 0;
        if (!read_count(target, zones)) return false;
        std::vector<double> values(zones);
        const int columns = static_cast<int>(zones);
        if (!check(read_list_directed(in_, {values, columns, 1.0}, tab_separates_),
                   {values, columns, target.what}) ||
            !read_by_format(control, 1.0, target)) {
            return false;
        }
        for (double& value : target.values) {
            if (value != 0.0 && !(value >= 1.0 && value < static_cast<double>(zones) + 1.0)) {
                return fail("a zone of " + std::string(target.what) + " that has no value");
            }
            value = value == 0.0 ? 0.0 : values[static_cast<std::size_t>(value) - 1];
        }
        return true;
    }

    TextSource& in_;
    const GridSize& grid_;
    bool tab_separates_;
    Problems& problems_;
};

}  // namespace

bool read_package_porosity(TextSource& in, const GridSize& grid, bool tab_separates,
                           std::vector<double>& porosity, Problems& problems) {
    porosity.assign(grid.cells(), 0.0);
    PackageReader reader(in, grid, tab_separates, problems);
    const auto columns = static_cast<std::size_t>(grid.columns), rows = static_cast<std::size_t>(grid.rows);
    // The arrays before the porosity go into its first layer, which is large enough for each of them.
    const std::span<double> spare(porosity.data(), grid.per_layer());
    bool whole = reader.find_arrays() &&
                 reader.read({spare.first(columns), grid.columns, "the column widths"}) &&
                 reader.read({spare.first(rows), grid.rows, "the row widths"}) &&
                 reader.read({spare, grid.columns, "the top"});
    for (int k = 0; k < grid.layers && whole; ++k)
        whole = reader.read({spare, grid.columns, "a layer's thickness"});
    for (int k = 0; k < grid.layers && whole; ++k) {
        const std::span<double> layer(porosity.data() + static_cast<std::size_t>(k) * grid.per_layer(),
                                      grid.per_layer());
        whole = reader.read({layer, grid.columns, "a layer's porosity"});
    }
    if (!whole) porosity.clear();
    return whole;
}

}  // namespace plx
