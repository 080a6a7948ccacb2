#include "plxconvert/residual_plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "plxconvert/messages.h"
#include "plxutils/core/WholeFile.h"

namespace plx::tool {

namespace {

constexpr double kWidth = 800.0, kMargin = 70.0, kHead = 60.0, kFoot = 70.0;
constexpr double kLongestArrow = 70.0;
/// As many letters as the width has room for.
constexpr std::size_t kMostTitle = 70;

/// The largest of 1, 2, 5, 10, 20, ... up to a limit.
double round_below(double limit) {
    const double power = std::pow(10.0, std::floor(std::log10(limit)));
    for (const double digit : {5.0, 2.0}) {
        if (digit * power <= limit) return digit * power;
    }
    return power;
}

template <class... Values>
std::string text(const char* format, Values... values) {
    std::array<char, 512> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, values...);
    return buffer.data();
}

/// The bytes of the UTF-8 character that a text begins with; 0 for what is none that a picture may hold.
std::size_t character_bytes(std::string_view text) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    if (byte(0) < 0x80) return byte(0) >= ' ' && byte(0) <= '~' ? 1 : 0;
    const std::size_t count = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) > 0xf4 || text.size() < count) return 0;
    unsigned code = byte(0) & (0x7fU >> count);
    for (std::size_t k = 1; k < count; ++k) {
        if ((byte(k) & 0xc0) != 0x80) return 0;
        code = code << 6 | (byte(k) & 0x3fU);
    }
    const unsigned least = count == 4 ? 0x10000 : count == 3 ? 0x800 : 0xa0;
    const bool is_surrogate = code >= 0xd800 && code <= 0xdfff;
    return code < least || code > 0x10ffff || is_surrogate || code == 0xfffe || code == 0xffff ? 0 : count;
}

std::string escaped(std::string_view plain) {
    std::vector<std::string> letters;
    while (!plain.empty()) {
        const std::size_t count = character_bytes(plain);
        const std::string letter(plain.substr(0, count));
        letters.push_back(count == 0      ? "?"
                          : letter == "<" ? "&lt;"
                          : letter == "&" ? "&amp;"
                          : letter == ">" ? "&gt;"
                                          : letter);
        plain.remove_prefix(std::max<std::size_t>(count, 1));
    }
    if (letters.size() > kMostTitle) {
        const auto middle = letters.begin() + kMostTitle / 2;
        letters.insert(
            letters.erase(middle, middle + static_cast<std::ptrdiff_t>(letters.size() - kMostTitle)), "...");
    }
    std::string out;
    for (const std::string& letter : letters) out += letter;
    return out;
}

/// World to picture, the same scale on both axes.
struct Frame {
    explicit Frame(const ImageMap& map) {
        const ControlPoint& first = map.points()[0];
        double right = first.X, low = first.Y;
        left = first.X, top = first.Y;
        for (const ControlPoint& p : map.points()) {
            left = std::min(left, p.X), right = std::max(right, p.X);
            low = std::min(low, p.Y), top = std::max(top, p.Y);
        }
        const double most = std::max(right - left, top - low);
        const double extent = most > 0.0 && std::isfinite(most) ? most : 1.0;
        scale = (kWidth - 2 * kMargin) / extent;
        height = kHead + kFoot + 2 * kMargin + (top - low) * scale;
        x0 = (kWidth - (right - left) * scale) / 2;
    }
    double x(double X) const { return x0 + (X - left) * scale; }
    double y(double Y) const { return kHead + kMargin + (top - Y) * scale; }

    double left, top, scale, height, x0;
};

/// The head is drawn as a shape of its own, because not every program that shows pictures knows markers.
std::string arrow(double x, double y, double dx, double dy) {
    const double length = std::hypot(dx, dy), head = std::min(9.0, 0.6 * length);
    const double ux = dx / length * head, uy = dy / length * head;
    const double foot_x = x + dx - ux, foot_y = y + dy - uy;
    return text("<path d=\"M%.1f %.1f L%.1f %.1f\" class=\"arrow\"/>", x, y, foot_x, foot_y) +
           text("<path d=\"M%.1f %.1f L%.1f %.1f L%.1f %.1f z\" class=\"head\"/>\n", x + dx, y + dy,
                foot_x - 0.4 * uy, foot_y + 0.4 * ux, foot_x + 0.4 * uy, foot_y - 0.4 * ux);
}

std::string point_and_arrow(const Frame& frame, const ControlPoint& p, WorldPoint r, double factor,
                            int number) {
    const double x = frame.x(p.X), y = frame.y(p.Y);
    // Residuals are wanted minus projected, and the picture's y runs downwards.
    const double dx = -r.X * frame.scale * factor, dy = r.Y * frame.scale * factor;
    std::string out;
    if (factor > 0.0 && std::hypot(dx, dy) > 1.0) {
        out += arrow(x, y, dx, dy);
    }
    // The number stands where the arrow does not go.
    out += text(
        "<circle cx=\"%.1f\" cy=\"%.1f\" r=\"3.5\"/>\n<text x=\"%.1f\" y=\"%.1f\" "
        "class=\"number\">%d</text>\n",
        x, y, x - 5, dy < 0 ? y + 15 : y - 7, number);
    return out;
}

std::string scale_bar(const Frame& frame) {
    const double length = round_below(kWidth / 4 / frame.scale), y = frame.height - 30;
    const double end = kMargin + length * frame.scale;
    return text(
        "<path d=\"M%.1f %.1f v8 h%.1f v-8\" class=\"bar\"/>\n<text x=\"%.1f\" y=\"%.1f\">%g world units"
        "</text>\n",
        kMargin, y - 8, end - kMargin, end + 10, y, length);
}

std::string picture(const std::string& title, ImageMap& map) {
    const Frame frame(map);
    double longest = 0.0, farthest = 0.0;
    for (const ControlPoint& p : map.points()) {
        const WorldPoint r = map.residual(p);
        const double length = std::hypot(r.X, r.Y);
        longest = std::isnan(length) ? length : std::max(length, longest);
        if (!std::isfinite(longest)) break;
        farthest = std::max({farthest, std::fabs(p.X), std::fabs(p.Y)});
    }
    // What rounding leaves is no residual.
    const double rounding = 8 * std::numeric_limits<double>::epsilon() * farthest;
    const bool arrows = std::isfinite(longest) && longest > std::max(1e-9 * map.pixel(), rounding);
    const double factor = arrows ? round_below(kLongestArrow / (longest * frame.scale)) : 0.0;
    std::string out =
        text(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" viewBox=\"0 0 %.0f "
            "%.0f\">\n",
            kWidth, frame.height, kWidth, frame.height) +
        "<style>text{font:13px sans-serif;fill:#333}.title{font-size:17px}.number{text-anchor:end;fill:#666}"
        "circle{fill:#1f5f99}.arrow{stroke:#c8402a;stroke-width:1.6}.head{fill:#c8402a}"
        ".bar{fill:none;stroke:#333;stroke-width:1.4}</style>\n"
        "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n<text x=\"" +
        text("%.0f", kMargin) + "\" y=\"34\" class=\"title\">" + escaped(title) + "</text>\n";
    const std::string told = arrows
                                 ? text("arrows to where the fit puts the points, %g times as long", factor)
                             : std::isfinite(longest) ? "the fit meets every control point"
                                                      : "the fit does not give numbers everywhere";
    out += text("<text x=\"%.0f\" y=\"56\">RMS %.4g, longest %.4g; %s</text>\n", kMargin, map.rms(), longest,
                told.c_str());
    int number = 0;
    for (const ControlPoint& p : map.points()) {
        out += point_and_arrow(frame, p, map.residual(p), factor, ++number);
    }
    return out + scale_bar(frame) + "</svg>\n";
}

}  // namespace

void write_residual_plot(const std::filesystem::path& file, const std::string& title, ImageMap& map) {
    const std::string svg = picture(title, map), name = "'" + file.string() + "'";
    WholeFile plot;
    if (!plot.open(file.string().c_str(), false)) throw InputFault(name + " cannot be opened for writing");
    plot.stream().WriteRawBytes(svg.data(), static_cast<int>(svg.size()));
    if (!plot.close()) throw InputFault(name + ": " + plot.fault());
}

}  // namespace plx::tool
