#pragma once

#include <vector>

#include "formats/grid_geometry.h"
#include "formats/problems.h"
#include "formats/text_source.h"

namespace plx {

/// Reads the porosity from an MT3D basic-transport file (BTN).
///
/// Source: two heading lines, the line of NLAY, NROW, NCOL, lines of units, options and layer types (40 a
/// line), then arrays: widths of columns and rows, top, thickness and porosity of each layer. An array's
/// control record has fields of ten columns: IREAD, a constant, a Fortran format of twenty columns. IREAD 0:
/// the constant everywhere; 100: formatted; 101: a count of blocks, each two rows, two columns and a value;
/// 102: a count of zones, their values, and the zone of each cell, formatted; 103: list-directed with repeat
/// counts. A constant that is not 0 multiplies the values of 100 and 103. Fields that stand closer than ten
/// columns are taken as words.
///
/// @param porosity  one value per cell, layer by layer, row by row.
/// @return false when the file is of another grid, is cut short or has another array form; a problem says so,
/// and
///         `porosity` is empty.
bool read_package_porosity(TextSource& in, const GridSize& grid, bool tab_separates,
                           std::vector<double>& porosity, Problems& problems);

}  // namespace plx
