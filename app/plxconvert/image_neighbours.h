#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "plxconvert/image_map.h"
#include "plxconvert/image_size.h"

namespace plx::tool {

/// True for the names that GCP files and world files have.
bool is_placing_file(const std::filesystem::path& file);

/// Write what places an image, through the library's functions: an older file is kept as NAME.backup, and so
/// on. They print the name of the new file, warn when it does not hold what it should or does not count, and
/// throw InputFault when it cannot be written.
///
/// @param points  the GCP file that the map is of; any other one beside the image would count before the new
/// file.
void write_world_file(const std::filesystem::path& image, const std::filesystem::path& points, ImageMap& map);
void write_gcp_file(const std::filesystem::path& image, const std::vector<ControlPoint>& points);

/// The files that hosts find beside an image; empty paths where there are none.
struct Neighbours {
    std::filesystem::path gcp, world;
};
Neighbours neighbours_of(const std::filesystem::path& image);

/// Three corners of an image by its world file.
std::vector<ControlPoint> corners_by_world_file(const std::filesystem::path& world, ImageSize size);

/// Prints what lies beside an image and how it is used, broken files with what is wrong in them.
///
/// @throws InputFault in the end when there was a broken one.
void show_neighbours(const std::filesystem::path& image);

}  // namespace plx::tool
