#pragma once

#include "converters/model_state.h"

namespace plx {

/// Stores the IBOUND arrays' values of one layer. A cell outside the cropping rectangle is not converted;
/// before cell widths are known its column and row stand for x and y.
void store_ibound(ModelState& model, int layer, const std::vector<double>& values);

/// Takes edges and surfaces over into the model's geometry; `file` is named in problems.
void store_geometry(ModelState& model, const std::string& file, const std::vector<double>& delr,
                    const std::vector<double>& delc, std::vector<GridGeometry::Surface> tops,
                    std::vector<GridGeometry::Surface> bottoms);

/// Takes the stress periods over, counts their steps and announces the time table's size.
void store_periods(ModelState& model, StressPeriods periods);

}  // namespace plx
