#pragma once

#include <string>
#include <vector>

#include "formats/array_record.h"
#include "formats/grid_geometry.h"
#include "formats/stress_periods.h"

namespace plx {

/// A MODFLOW 2000 discretization file (DIS).
struct Discretization {
    GridSize size;
    int time_unit = 0;    ///< ITMUNI
    int length_unit = 0;  ///< LENUNI
    std::vector<double> delr, delc;
    GridGeometry::Surface top;
    std::vector<GridGeometry::Surface> tops, bottoms;  ///< one per layer; confining beds lie between
    StressPeriods periods;
};

/// The word of a DIS time code ("undefined", "seconds", ... "years"); empty for an unknown code.
std::string time_unit_word(int code);
/// The word of a DIS length code ("undefined", "feet", "meters", "centimeters"); empty for an unknown code.
std::string length_unit_word(int code);

/// Reads a discretization file.
/// @return false when it could not be read far enough to know the grid; a problem says why. What was read is
///         kept, but a size that no grid can have becomes 0.
bool read_discretization(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                         Discretization& out, Problems& problems);

}  // namespace plx
