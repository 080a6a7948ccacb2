#pragma once

#include <string>
#include <vector>

#include "plxutils/core/VXArray.h"

namespace plx {

class FolderNames;
class NodeMesh;
struct ModelState;
struct OutputPaths;
struct SpeciesFile;

/// Numbers under which concentration files are looked for, from 1.
inline constexpr int kMostSpecies = 50;
/// "007", as concentration files have it in their names.
std::string three_digits(int number);

/// Names under which a transport model may have left the concentrations of a species (from 1), in the order
/// in which they are tried. Style 0 has the plain number, style 1 three digits after a dot, every other style
/// three digits with and without the dot.
std::vector<std::string> species_file_names(const std::string& title, int number, int style);

/// Tells that a species has no file, with the path of the first name that was tried.
void tell_missing(ModelState& model, const FolderNames& folders, const std::string& name, int number);
/// Sets up the reading of an open MT3D concentration file; false after a message for one that does not belong
/// to the model.
bool adopt_species(ModelState& model, const std::string& path, SpeciesFile& species);
/// Warns of a species that has no further time: cut within one, or over before the others are.
void warn_of_end(ModelState& model, const SpeciesFile& species, bool cut);
/// Has the factory read the MT3D project file when it was not yet, for the species' names and the style of
/// their files: the one it was given, the porosity file when that is one or, where result files count by
/// content, that of the project's title in one of the folders.
void read_transport_settings(ModelState& model, const FolderNames& folders);

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
