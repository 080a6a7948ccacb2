#pragma once

#include <vector>

#include "plxutils/core/VXString.h"

namespace plx {

struct ModelState;
struct SpeciesFile;

/// Looks for the concentrations of species 1 to 50 of a GMS model and opens what is there. They are GMS
/// dataset files, "<title>_MT3DMS\<title>00<number>.con" beside the project. Where result files count by
/// content, names with three digits, the super file's title and the names of the transport model itself are
/// tried too, in all of gms_transport_folders, and a file may be an MT3D one.
void find_gms_concentrations(ModelState& model);
/// The folders in which a GMS model's transport may be, the one beside the project first.
std::vector<String> gms_transport_folders(const ModelState& model);
/// Reads the next time step of a species that has a GMS dataset file: a value for each cell of the model.
/// False, after a message where a step is damaged, when there is none.
bool read_gms_step(ModelState& model, SpeciesFile& species, double* values, float& time);

}  // namespace plx
