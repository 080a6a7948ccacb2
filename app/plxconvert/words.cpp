#include "plxconvert/words.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <system_error>

namespace plx::tool {

std::string lower(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

std::string_view without_utf8_mark(std::string_view text) {
    constexpr std::string_view kMark = "\xef\xbb\xbf";
    if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
    return text;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find(separator, start);
        std::string part = text.substr(start, end == std::string::npos ? end : end - start);
        const std::size_t first = part.find_first_not_of(' ');
        part = first == std::string::npos ? "" : part.substr(first, part.find_last_not_of(' ') - first + 1);
        parts.push_back(part);
        if (end == std::string::npos) return parts;
        start = end + 1;
    }
}

bool parse_number(std::string_view word, double& number) {
    const char* const end = word.data() + word.size();
    const auto [stop, fault] = std::from_chars(word.data(), end, number);
    return fault == std::errc{} && stop == end && std::isfinite(number);
}

std::string_view without_plus(std::string_view word) {
    if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
    return word;
}

bool parse_numbers(const std::string& list, std::vector<double>& numbers) {
    numbers.clear();
    for (const std::string& part : split(list, ',')) {
        double value = 0.0;
        if (!parse_number(part, value)) return false;
        numbers.push_back(value);
    }
    return true;
}

void check_rectangle(const std::string& option, const std::vector<double>& edges) {
    for (const double edge : edges) {
        if (!std::isfinite(edge)) throw std::invalid_argument(option + ": coordinates must be finite");
    }
    if (!edges.empty() && !(edges[0] <= edges[2] && edges[1] <= edges[3])) {
        throw std::invalid_argument(option + ": XMIN must not exceed XMAX, nor YMIN YMAX");
    }
}

std::string counted(long long count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace plx::tool
