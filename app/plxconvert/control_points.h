#pragma once

#include <array>
#include <filesystem>
#include <vector>

#include "plxutils/georef/fit_polynomial.h"

namespace plx::tool {

/// As many control points as hosts read from one GCP file.
constexpr std::size_t kMostControlPoints = 100;

/// In which order the four numbers of a line stand.
enum class PointOrder {
    gcp_file,    ///< X, minus Y, column, row: as GCP files have it
    image_first  ///< column, row, X, Y: as people write it
};

/// Control points of a text file, x being the image column and y the image row, which counts downwards. Words
/// stand between blanks, tabs and commas; empty lines, lines that begin with "#" and what follows the fourth
/// number do not count.
///
/// @param more  told whether there are more than kMostControlPoints; only the first so many are given.
/// @throws InputFault with the line for one that is no control point, and when there is none at all.
std::vector<ControlPoint> read_control_points(const std::filesystem::path& file, PointOrder order,
                                              bool& more);

/// Prints a warning when no row is positive and one is negative: GCP files may hold them that way, but
/// nothing in such a file tells.
void warn_if_rows_negative(const std::filesystem::path& file, const std::vector<ControlPoint>& points);

/// The numbers A, D, B, E, C and F of a world file: X = A column + B row + C, Y = D column + E row + F.
///
/// @throws InputFault with the line for one that is no number, and when there are fewer than six.
std::array<double, 6> read_world_file(const std::filesystem::path& file);

}  // namespace plx::tool
