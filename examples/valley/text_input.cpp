#include "text_input.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <stdexcept>

namespace valley {
namespace {

std::vector<std::string> split(const std::string& line) {
    static constexpr const char* kSeparators = " \t,\r";
    std::vector<std::string> result;
    for (std::size_t at = line.find_first_not_of(kSeparators); at != std::string::npos;) {
        const std::size_t end = std::min(line.find_first_of(kSeparators, at), line.size());
        result.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(kSeparators, end);
    }
    return result;
}

}  // namespace

TextInput::TextInput(const std::filesystem::path& path) : path_(path), file_(path) {
    if (!file_) throw std::runtime_error(path.string() + ": cannot be opened");
}

void TextInput::fail(const std::string& what) const {
    throw std::runtime_error(path_.filename().string() + ": line " + std::to_string(line_) + ": " + what);
}

std::string TextInput::line() {
    std::string text;
    do {
        if (!std::getline(file_, text)) fail("the file ends too early");
        ++line_;
    } while (!text.empty() && text[0] == '#');
    return text;
}

std::vector<std::string> TextInput::words(std::size_t count) {
    std::vector<std::string> result = split(line());
    if (result.size() < count) {
        fail(std::to_string(count) + " words expected, " + std::to_string(result.size()) + " found");
    }
    return result;
}

double TextInput::number(const std::string& word) const {
    double value = 0.0;
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end) fail("\"" + word + "\" is not a number");
    return value;
}

std::vector<double> TextInput::numbers(std::size_t count) {
    const std::vector<std::string> found = words(count);
    std::vector<double> result;
    for (std::size_t i = 0; i < count; ++i) result.push_back(number(found[i]));
    return result;
}

std::vector<double> TextInput::array(std::size_t rows, std::size_t columns) {
    const std::vector<std::string> record = words(2);
    if (record[0] == "CONSTANT") return std::vector<double>(rows * columns, number(record[1]));
    const bool elsewhere = record[0] == "OPEN/CLOSE";
    const std::size_t at = elsewhere ? 2 : 1;
    if ((!elsewhere && record[0] != "INTERNAL") || record.size() < at + 2) {
        fail("an array record was expected, found \"" + record[0] + "\"");
    }
    const double multiplier = number(record[at]);
    const std::string& format = record[at + 1];
    const auto read = [&](TextInput& from) {
        return format == "(FREE)" ? from.free_values(rows * columns)
                                  : from.fixed_values(rows, columns, format);
    };
    std::vector<double> values;
    if (elsewhere) {
        TextInput other(path_.parent_path() / record[1]);
        values = read(other);
    } else {
        values = read(*this);
    }
    for (double& value : values) value *= multiplier;
    return values;
}

std::vector<double> TextInput::transport_array(std::size_t rows, std::size_t columns) {
    const std::vector<std::string> record = words(2);
    const double multiplier = number(record[1]);
    if (record[0] == "0") return std::vector<double>(rows * columns, multiplier);
    const bool fields = record[0] == "100" && record.size() > 2;
    if (!fields && record[0] != "103") fail("array form 0, 100 or 103 was expected, found " + record[0]);
    std::vector<double> values =
        fields ? fixed_values(rows, columns, record[2]) : free_values(rows * columns);
    for (double& value : values) value *= multiplier;
    return values;
}

std::vector<double> TextInput::free_values(std::size_t count) {
    std::vector<double> values;
    while (values.size() < count) {
        for (const std::string& word : split(line())) {
            if (values.size() < count) values.push_back(number(word));
        }
    }
    return values;
}

std::vector<double> TextInput::fixed_values(std::size_t rows, std::size_t columns,
                                            const std::string& format) {
    unsigned per_line = 0;
    unsigned width = 0;
    char bracket = 0, letter = 0;
    std::istringstream words(format);
    if (!(words >> bracket >> per_line >> letter >> width) || bracket != '(' || per_line == 0 || width == 0) {
        fail("format " + format + " is not of the form (12F8.2)");
    }
    std::vector<double> values;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string text;
        for (std::size_t column = 0; column < columns; ++column) {
            if (column % per_line == 0) text = line();
            const std::size_t from = column % per_line * width;
            const std::vector<std::string> field = split(from < text.size() ? text.substr(from, width) : "");
            if (field.size() != 1) fail("column " + std::to_string(from + 1) + ": one number expected");
            values.push_back(number(field[0]));
        }
    }
    return values;
}

}  // namespace valley
