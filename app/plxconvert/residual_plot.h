#pragma once

#include <filesystem>
#include <string>

#include "plxconvert/image_map.h"

namespace plx::tool {

/// Writes a picture (SVG) of the control points in the world, with an exaggerated arrow from each to where
/// the map puts it, and a scale bar.
///
/// @throws InputFault when it cannot be written.
void write_residual_plot(const std::filesystem::path& file, const std::string& title, ImageMap& map);

}  // namespace plx::tool
