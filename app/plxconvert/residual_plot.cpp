#include "plxconvert/residual_plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "plxconvert/messages.h"

namespace plx::tool {

namespace {

constexpr double kWidth = 800.0, kMargin = 70.0, kHead = 60.0, kFoot = 70.0;
constexpr double kLongestArrow = 70.0;

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

std::string escaped(const std::string& plain) {
    std::string out;
    for (const char c : plain) {
        const bool is_plain = c >= ' ' && c <= '~' && c != '<' && c != '&' && c != '>';
        out += is_plain   ? std::string(1, c)
               : c == '<' ? "&lt;"
               : c == '&' ? "&amp;"
               : c == '>' ? "&gt;"
                          : "?";
    }
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

std::string point_and_arrow(const Frame& frame, const ControlPoint& p, WorldPoint r, double factor,
                            int number) {
    const double x = frame.x(p.X), y = frame.y(p.Y);
    // Residuals are wanted minus projected, and the picture's y runs downwards.
    const double dx = -r.X * frame.scale * factor, dy = r.Y * frame.scale * factor;
    std::string out;
    if (factor > 0.0 && std::hypot(dx, dy) > 1.0) {
        out += text("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\" class=\"arrow\"/>\n", x, y, x + dx,
                    y + dy);
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
    double longest = 0.0;
    for (const ControlPoint& p : map.points()) {
        const WorldPoint r = map.residual(p);
        longest = std::max(longest, std::hypot(r.X, r.Y));
    }
    // What rounding leaves is no residual.
    const bool arrows = std::isfinite(longest) && longest > 1e-9 * map.pixel();
    const double factor = arrows ? round_below(kLongestArrow / (longest * frame.scale)) : 0.0;
    std::string out =
        text(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" viewBox=\"0 0 %.0f "
            "%.0f\">\n",
            kWidth, frame.height, kWidth, frame.height) +
        "<style>text{font:13px sans-serif;fill:#333}.title{font-size:17px}.number{text-anchor:end;fill:#666}"
        "circle{fill:#1f5f99}.arrow{stroke:#c8402a;stroke-width:1.6;marker-end:url(#head)}"
        ".bar{fill:none;stroke:#333;stroke-width:1.4}</style>\n"
        "<defs><marker id=\"head\" markerWidth=\"8\" markerHeight=\"8\" refX=\"6\" refY=\"3\" "
        "orient=\"auto\">"
        "<path d=\"M0 0 L7 3 L0 6 z\" fill=\"#c8402a\"/></marker></defs>\n"
        "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n<text x=\"" +
        text("%.0f", kMargin) + "\" y=\"34\" class=\"title\">" + escaped(title) + "</text>\n";
    const std::string told =
        arrows ? text("arrows from the control points to where the fit puts them, %g times as long", factor)
               : "the fit meets every control point";
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
    std::FILE* const stream = std::fopen(file.string().c_str(), "wb");
    if (stream == nullptr) throw InputFault(name + " cannot be opened for writing");
    const bool written = std::fwrite(svg.data(), 1, svg.size(), stream) == svg.size();
    if (std::fclose(stream) != 0 || !written) throw InputFault(name + ": not all of it could be written");
}

}  // namespace plx::tool
