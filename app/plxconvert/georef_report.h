#pragma once

#include <string>

#include "plxconvert/image_map.h"

namespace plx::tool {

/// Another arithmetic must differ by more than this many pixels to be worth a word.
constexpr double kNotablePixels = 1e-3;

/// What a fit type is called.
const char* type_title(int type);
/// Prints a warning when the control points leave coefficients undetermined.
void warn_if_singular(const PolynomialFit& fit, const char* which);

/// Prints a warning when few points lowered the type.
void warn_if_lowered(const ImageMap& map, int requested);
/// Prints a warning when the map by the other arithmetic differs notably, on the way there or back.
void warn_if_different(ImageMap& map, ImageMap& other, bool back);
/// Says how the map by the other arithmetic differs; empty when it is not worth a word.
std::string told_difference(ImageMap& map, ImageMap& other, bool back);

/// Print coefficients, residuals and their RMS to standard output; `other` is the map by the other
/// arithmetic.
void print_fit_text(const std::string& file, int requested, ImageMap& map, ImageMap& other);
void print_fit_json(const std::string& file, int requested, ImageMap& map, ImageMap& other);

}  // namespace plx::tool
