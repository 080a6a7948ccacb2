#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/grid_geometry.h"
#include "formats/problems.h"
#include "formats/text_source.h"
#include "plxutils/core/VXFile.h"

namespace plx {

/// Unit words of a Visual MODFLOW project.
struct VisualUnits {
    std::string length;  ///< as written
    std::string time;    ///< "yr", "d", "h", "min" or "s"; another word as written
};

/// Reads the <Units> block of a project file (.vmf, docs/formats/visual_modflow.md).
///
/// @param warnings  gets a line for a time unit that is not known.
/// @return false when the file cannot be opened.
bool read_vmf(const VXFile& file, VisualUnits& units, Problems& warnings);

/// Grid of a Visual MODFLOW grid file (.vmg).
struct VisualGrid {
    GridSize size;
    std::vector<double> column_edges;               ///< columns + 1 positions from the west
    std::vector<double> row_edges;                  ///< rows + 1 positions from the north: y falls
    std::vector<std::vector<std::int32_t>> status;  ///< per layer, row * columns + column; 0 is inactive
    std::vector<GridGeometry::Surface> surfaces;    ///< layers + 1 from the top
};

enum class VmgSection { kColumns, kRows, kStatus, kElevations };

/// Why a grid file could not be read.
struct VmgFault {
    VmgSection section = VmgSection::kColumns;
    int line = 0;         ///< 1-based; 0 when the section is missing
    std::string text;     ///< of that line, at most its first 200 characters
    std::string problem;  ///< file, line, what was expected and what is there
};

/// Reads a grid file from its first line to its end. Source: labelled sections in any order as
/// docs/formats/visual_modflow.md tells; row edges may rise or fall, row 1 is at the largest y. Units are the
/// model's length unit. The sizes follow from the number of values in each section.
///
/// @return the first fault; empty when the grid is whole.
std::optional<VmgFault> read_vmg(TextSource& in, VisualGrid& grid);

}  // namespace plx
