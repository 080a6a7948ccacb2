#pragma once

#include <string>
#include <vector>

#include "plxutils/core/VXArray.h"

namespace plx {

class NodeMesh;
struct ModelState;
struct OutputPaths;

/// Names under which a transport model may have left the concentrations of a species (from 1), in the order
/// in which they are tried. Style 0 has the plain number, style 1 three digits after a dot, every other style
/// three digits with and without the dot.
std::vector<std::string> species_file_names(const std::string& title, int number, int style);

/// Looks for the concentration files of species 1 to 50 beside the project and opens those that are there.
void find_concentrations(ModelState& model);
/// True when at least one concentration file is open.
bool has_concentrations(const ModelState& model);
/// Times that every species has, by the size of its file; 0 without any.
int count_transport_times(const ModelState& model);
/// Reads the next transport time of every species into `values` (cells, species, 1, 1); false after a message
/// when there is no further one.
bool read_transport_time(ModelState& model, VXArray<double>& values, float& time);
/// Hands the mesh's nodes and weights (NodeMesh::build_weights must have run) to the factory's write_MT3D.
void write_transport_results(ModelState& model, const NodeMesh& mesh, const OutputPaths& paths);

}  // namespace plx
