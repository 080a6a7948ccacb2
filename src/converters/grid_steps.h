#pragma once

#include <functional>

#include "converters/model_state.h"

namespace plx {

/// Reads a discretization file (DIS) into the model: extents, units, edges, surfaces and stress periods.
/// @param tell  called once when the file was read, to report the problems that it left in model.problems.
void read_grid(ModelState& model, TextSource& in, const std::function<void()>& tell);

/// Reads a BAS6 file into the model: FREE, active cells, HNOFLO. Problems stay in model.problems.
/// @param cross_section  what to print when the option XSECTION ends the reading.
void read_active_cells(ModelState& model, TextSource& in, const char* cross_section);

/// Takes HDRY from the first record of whichever flow package the name file lists.
void find_dry_head(ModelState& model);

}  // namespace plx
