#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace valley {

/// Lines and arrays of one MODFLOW text input. Faults are thrown as std::runtime_error: "valley.dis: line 12:
/// what".
class TextInput {
public:
    explicit TextInput(const std::filesystem::path& path);

    /// Words of the next line that is no "#" comment, separated by blanks and commas; at least `count` of
    /// them.
    std::vector<std::string> words(std::size_t count);
    /// The first `count` words of the next line as numbers.
    std::vector<double> numbers(std::size_t count);
    /// An array of rows x columns after its CONSTANT, INTERNAL or OPEN/CLOSE record; a file is looked for
    /// beside this one. Numbers are words with (FREE), fields with a format such as (12F8.2), each row on new
    /// lines.
    std::vector<double> array(std::size_t rows, std::size_t columns);
    /// The same after a control record of MT3DMS: 0 and the value everywhere, 100 and 103 with a multiplier
    /// and values as fields or as words.
    std::vector<double> transport_array(std::size_t rows, std::size_t columns);
    /// A whole word as a number.
    double number(const std::string& word) const;
    [[noreturn]] void fail(const std::string& what) const;

private:
    std::string line();
    std::vector<double> free_values(std::size_t count);
    std::vector<double> fixed_values(std::size_t rows, std::size_t columns, const std::string& format);

    std::filesystem::path path_;
    std::ifstream file_;
    int line_ = 0;
};

}  // namespace valley
