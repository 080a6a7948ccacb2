#include "plxconvert/control_points.h"

#include <cmath>
#include <cstddef>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>

#include "plxconvert/messages.h"
#include "plxconvert/point_words.h"

namespace plx::tool {

namespace {

/// A hundred lines of the greatest length have a tenth of it.
constexpr std::size_t kMostBytes = std::size_t{8} << 20;

std::string read_small_text(const std::filesystem::path& file) {
    const std::string name = "'" + file.string() + "'";
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw InputFault(name + " cannot be opened for reading");
    std::string text(kMostBytes + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (stream.bad()) throw InputFault(name + " cannot be read");
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > kMostBytes) throw InputFault(name + " is too large for a file of control points");
    if (text.find('\0') != std::string::npos) throw InputFault(name + " is a binary file, not a text");
    text.erase(0, text.size() - without_utf8_mark(text).size());
    return text;
}

/// Hands the lines that count to `take` until it returns false; first words that begin with "#" are comments.
template <class Take>
void each_line(std::string_view text, Take take) {
    for (long long number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!is_passed_over(line) && !take(line, number)) return;
    }
}

template <std::size_t N>
std::array<double, N> numbers_of(std::string_view line, long long number, const std::filesystem::path& file,
                                 const char* what, double largest = std::numeric_limits<double>::infinity()) {
    std::array<double, N> values{};
    for (double& value : values) {
        const std::string_view word = next_word(line);
        const bool finite = to_finite(word, value);
        if (finite && std::fabs(value) <= largest) continue;
        const std::string fault = word.empty() ? "too few numbers"
                                  : finite     ? printable(word) + " is too large"
                                               : printable(word) + " is not a number";
        throw InputFault(file.string() + ": line " + std::to_string(number) + ": " + fault + "; " + what);
    }
    return values;
}

}  // namespace

std::vector<ControlPoint> read_control_points(const std::filesystem::path& file, PointOrder order,
                                              bool& more) {
    std::vector<ControlPoint> points;
    more = false;
    const bool is_gcp = order == PointOrder::gcp_file;
    each_line(read_small_text(file), [&](std::string_view line, long long number) {
        more = points.size() == kMostControlPoints;
        if (more) return false;
        const auto v = numbers_of<4>(
            line, number, file,
            is_gcp ? "a control point is X, minus Y, column and row" : "a point is column, row, X and Y",
            kLargestCoordinate);
        // Sums with 0 so that no minus zero is shown.
        points.push_back(is_gcp ? ControlPoint{v[2], v[3], v[0], 0.0 - v[1]}
                                : ControlPoint{v[0], v[1], v[2], v[3]});
        return true;
    });
    if (points.empty()) throw InputFault("'" + file.string() + "' holds no control point");
    return points;
}

void warn_if_rows_negative(const std::filesystem::path& file, const std::vector<ControlPoint>& points) {
    bool negative = false;
    for (const ControlPoint& p : points) {
        if (p.y > 0.0) return;
        negative = negative || p.y < 0.0;
    }
    if (negative) {
        print_warning(file.filename().string() + ": all rows are negative: the file seems to hold minus row");
    }
}

std::array<double, 6> read_world_file(const std::filesystem::path& file) {
    std::array<double, 6> values{};
    std::size_t count = 0;
    each_line(read_small_text(file), [&](std::string_view line, long long number) {
        values[count++] = numbers_of<1>(line, number, file, "a world file has six, one on a line")[0];
        return count < values.size();
    });
    if (count == values.size()) return values;
    throw InputFault("'" + file.string() + "' has " + std::to_string(count) +
                     " of the six numbers of a world file");
}

}  // namespace plx::tool
