#pragma once

#include <string>

#include "converters/model_state.h"
#include "core/block_writer.h"
#include "plxutils/math/VX4X4Matrix.h"

namespace plx {

/// First lines of the boundary-flow file: grid placement and the model's time unit.
void write_flow_header(BlockWriter& out, const ConverterFactory& factory);

/// One step of the boundary-flow file: its date, or STEADY_STATE in a model of one step or none, then a
/// section for each term that the model has, a line (world x, y, z of the cell's centre, flow) for each cell
/// that carries it.
void write_boundary_flows(BlockWriter& out, const ModelState& model, const VX4X4Matrix& transform,
                          const std::string& date);

}  // namespace plx
