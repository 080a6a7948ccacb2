#include "plxconvert/sample_columns.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "plxconvert/sample_cells.h"
#include "plxconvert/words.h"

namespace plx::tool {

namespace {

using Names = std::vector<std::string>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::size_t find_name(const Names& names, const std::string& wanted) {
    const auto found = std::find_if(names.begin(), names.end(), [&wanted](const std::string& name) {
        return lower(name) == lower(wanted);
    });
    return found == names.end() ? kNone : static_cast<std::size_t>(found - names.begin());
}

/// Columns of x, y and z; kNone for those that have no such name.
std::array<std::size_t, 3> find_place(const Names& names) {
    static const std::array<Names, 3> kKnown = {
        {{"x", "easting", "east"}, {"y", "northing", "north"}, {"z", "elevation", "elev"}}};
    std::array<std::size_t, 3> place = {kNone, kNone, kNone};
    for (std::size_t i = 0; i < place.size(); ++i) {
        for (const std::string& name : kKnown[i]) {
            if (place[i] == kNone) place[i] = find_name(names, name);
        }
    }
    return place;
}

std::ptrdiff_t missing_in(const std::array<std::size_t, 3>& place) {
    return std::count(place.begin(), place.end(), kNone);
}

/// Names may hold a separator, as in "x;y;z;Nitrate, mg/l"; the one that brings out x, y and z is meant.
char separator_of(const std::string& line) {
    for (const char separator : {',', ';', '\t', kBlanks}) {
        if (missing_in(find_place(cells_of(line, separator))) == 0) return separator;
    }
    for (const char separator : {',', ';', '\t'}) {
        if (cells_of(line, separator).size() > 1) return separator;
    }
    return kBlanks;
}

bool is_sample(const Names& cells) {
    double number = 0.0;
    if (missing_in(find_place(cells)) == 0) return false;
    if (cells.size() > 3 && is_measured(cells[3])) return true;
    const std::size_t coordinates = std::min<std::size_t>(cells.size(), 3);
    return std::any_of(cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(coordinates),
                       [&number](const std::string& cell) { return coordinate(cell, number); });
}

/// The column called "value", or the next behind z that has a name: usually a table goes on with what was
/// measured.
std::size_t default_value(const Names& names, const std::array<std::size_t, 3>& place) {
    const std::size_t named = find_name(names, "value");
    if (named != kNone) return named;
    for (std::size_t i = 1; i < names.size(); ++i) {
        const std::size_t column = (place[2] + i) % names.size();
        if (names[column].empty()) continue;
        if (std::find(place.begin(), place.end(), column) == place.end()) return column;
    }
    return kNone;
}

void take_names(SampleColumns& columns, const Names& names, const std::string& wanted) {
    columns.named = true;
    const std::array<std::size_t, 3> place = find_place(names);
    const std::ptrdiff_t missing = missing_in(place);
    if (missing > 0 && missing < 3) {
        throw std::invalid_argument("the column names must have all of x, y and z, or none");
    }
    if (missing == 3 && names.size() != 4) throw std::invalid_argument("no columns named x, y and z");
    if (missing == 0) {
        columns.place = place;
        columns.value = default_value(names, place);
    }
    if (!wanted.empty()) columns.value = find_name(names, wanted);
    if (columns.value == kNone) {
        throw std::invalid_argument("no column " + (wanted.empty() ? "with values" : "'" + wanted + "'"));
    }
    columns.name = names[columns.value];
    // A field file keeps names between such marks.
    columns.name.erase(std::remove(columns.name.begin(), columns.name.end(), '"'), columns.name.end());
}

}  // namespace

SampleColumns find_columns(const std::string& first_line, const std::string& wanted) {
    SampleColumns columns;
    columns.separator = separator_of(first_line);
    Names cells = cells_of(first_line, columns.separator);
    const bool sample = is_sample(cells);
    if (sample && columns.separator == ',' && cells_of(first_line, ';').size() > 1) {
        throw std::invalid_argument(
            "commas and semicolons in one line: cells have one separator, and numbers a decimal point");
    }
    if (sample && !wanted.empty()) {
        throw std::invalid_argument("no column names, so there is no column '" + wanted + "'");
    }
    while (cells.size() > (sample ? 4U : 0U) && cells.back().empty()) {
        cells.pop_back();
        ++columns.spare;
    }
    columns.cells = sample ? std::max<std::size_t>(cells.size(), 4) : cells.size();
    if (!sample) take_names(columns, cells, wanted);
    return columns;
}

}  // namespace plx::tool
