#include "plxconvert/georef_report.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "plxconvert/info_json.h"
#include "plxconvert/messages.h"
#include "plxconvert/words.h"

namespace plx::tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kTerms[] = {"1",   "x",  "y",  "x2",  "xy",   "y2",  "x3", "x2y",
                                  "xy2", "y3", "x4", "x3y", "x2y2", "xy3", "y4"};

const char* method(const ImageMap& map) { return map.prescribed() ? "prescribed" : "well_conditioned"; }

Json finite(double value) { return std::isfinite(value) ? Json(value) : Json(); }

Json list(const ImageMap::Coefficients& values, std::size_t count) {
    Json json = Json::array();
    for (std::size_t k = 0; k < count; ++k) json.push_back(finite(values[k] + 0.0));
    return json;
}

Json centred(const ImageMap::Polynomials& p, const char* x, const char* y) {
    return {{"centre", {p.centre_x, p.centre_y}},
            {"scale", {p.scale_x, p.scale_y}},
            {x, list(p.X, p.count)},
            {y, list(p.Y, p.count)}};
}

Json way_back(ImageMap& map) {
    const ImageMap::Polynomials p = map.back_polynomials();
    return {{"determined", map.back().state == FitState::determined},
            {"condition", finite(map.back().condition)},
            {"column", list(p.x_terms, p.count)},
            {"row", list(p.y_terms, p.count)},
            {"centred", centred(p, "column", "row")}};
}

void print_coefficients(const ImageMap::Polynomials& p) {
    std::printf("  %-6s%24s%24s\n", "term", "X", "Y");
    for (std::size_t k = 0; k < p.count; ++k) {
        std::printf("  %-6s%24.15g%24.15g\n", kTerms[k], p.x_terms[k] + 0.0, p.y_terms[k] + 0.0);
    }
}

void print_residuals(ImageMap& map) {
    std::printf("\n  %5s %12s %12s %18s %18s %12s %12s %12s\n", "point", "column", "row", "X", "Y", "dX",
                "dY", "distance");
    int number = 0;
    for (const ControlPoint& p : map.points()) {
        const WorldPoint r = map.residual(p);
        std::printf("  %5d %12.10g %12.10g %18.15g %18.15g %12.4g %12.4g %12.4g\n", ++number, p.x, p.y, p.X,
                    p.Y, r.X, r.Y, std::hypot(r.X, r.Y));
    }
    const double rms = map.rms();
    std::printf("  RMS %.6g in world units, %.4g pixels of %.6g\n", rms, rms / map.pixel(), map.pixel());
}

}  // namespace

const char* type_title(int type) {
    constexpr const char* kTitles[] = {"translation",
                                       "similarity of the first two points",
                                       "scale and offset per axis",
                                       "first degree",
                                       "second degree",
                                       "third degree",
                                       "fourth degree"};
    return kTitles[type - 1];
}

void warn_if_singular(const PolynomialFit& fit, const char* which) {
    if (fit.state != FitState::singular) return;
    print_warning(std::string("the control points determine only ") + std::to_string(fit.rank) + " of " +
                  counted(fit.unknowns, "coefficient") + " per axis" + which +
                  ": points on one line, repeated or on one curve; trust the fit near them only");
}

void warn_if_lowered(const ImageMap& map, int requested) {
    if (map.type() == requested) return;
    print_warning("type " + std::to_string(requested) + " is not possible with these points; type " +
                  std::to_string(map.type()) + " is used");
}

std::string told_difference(ImageMap& map, ImageMap& other, bool back) {
    const double distance = back ? map.difference_back(other) : map.difference(other);
    const double pixels = back ? distance : distance / map.pixel();
    if (pixels <= kNotablePixels) return {};
    char how[96];
    if (!std::isfinite(pixels)) {
        std::snprintf(how, sizeof how, "cannot be compared: one of the two is not a number");
    } else if (back) {
        std::snprintf(how, sizeof how, "differs by up to %.4g pixels", pixels);
    } else {
        std::snprintf(how, sizeof how, "differs by up to %.4g, %.4g pixels", distance, pixels);
    }
    return std::string(back ? "the way back of the " : "the ") +
           (other.prescribed() ? "prescribed" : "well-conditioned") + " fit " + how;
}

void warn_if_different(ImageMap& map, ImageMap& other, bool back) {
    const std::string text = told_difference(map, other, back);
    if (!text.empty()) print_warning(text);
}

void print_fit_text(const std::string& file, int requested, ImageMap& map, ImageMap& other) {
    std::printf("%s: %s, type %d (%s), %s fit\n", file.c_str(),
                counted(static_cast<long long>(map.points().size()), "control point").c_str(), map.type(),
                type_title(map.type()), map.prescribed() ? "prescribed" : "well-conditioned");
    if (map.type() != requested) {
        std::printf("  type %d is not possible with these points\n", requested);
    }
    std::printf("\n  world X and Y by the image column x and row y; rows count downwards, Y upwards\n");
    print_coefficients(map.polynomials());
    print_residuals(map);
    for (const bool back : {false, true}) {
        const std::string text = told_difference(map, other, back);
        if (!text.empty()) std::printf("  %s\n", text.c_str());
    }
}

void print_fit_json(const std::string& file, int requested, ImageMap& map, ImageMap& other) {
    const ImageMap::Polynomials p = map.polynomials();
    Json terms = Json::array(), residuals = Json::array();
    for (std::size_t k = 0; k < p.count; ++k) terms.push_back(kTerms[k]);
    for (const ControlPoint& point : map.points()) {
        const WorldPoint r = map.residual(point);
        residuals.push_back({{"column", point.x},
                             {"row", point.y},
                             {"X", point.X},
                             {"Y", point.Y},
                             {"dX", finite(r.X)},
                             {"dY", finite(r.Y)},
                             {"distance", finite(std::hypot(r.X, r.Y))}});
    }
    const double difference = map.difference(other);
    print({{"file", file},
           {"type", map.type()},
           {"requested_type", requested},
           {"method", method(map)},
           {"determined", map.fit().state == FitState::determined},
           {"condition", finite(map.fit().condition)},
           {"terms", terms},
           {"X", list(p.x_terms, p.count)},
           {"Y", list(p.y_terms, p.count)},
           {"centred", centred(p, "X", "Y")},
           {"back", way_back(map)},
           {"residuals", residuals},
           {"rms", finite(map.rms())},
           {"pixel", map.pixel()},
           {"difference",
            {{"to", method(other)},
             {"distance", finite(difference)},
             {"pixels", finite(difference / map.pixel())},
             {"back", finite(map.difference_back(other))}}}});
}

}  // namespace plx::tool
