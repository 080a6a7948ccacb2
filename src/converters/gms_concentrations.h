#pragma once

#include "plxutils/core/VXArray.h"

namespace plx {

struct ModelState;
struct SpeciesFile;

/// Looks for the concentrations of species 1 to 50 of a GMS model and opens what is there. They are GMS
/// dataset files, "<title>_MT3DMS\<title>00<number>.con" beside the project. Where result files count by
/// content, names with three digits and those of the transport model itself are tried too, in that folder and
/// in those of the super file and the project, and a file may be an MT3D one.
void find_gms_concentrations(ModelState& model);
/// Reads the next transport time of every species, whatever kind its file is of, into `values` (cells,
/// species, 1, 1); false after a message when there is no further one.
bool read_gms_concentrations(ModelState& model, VXArray<double>& values, float& time);
/// Reads the next time step of a species that has a GMS dataset file: a value for each cell of the model.
/// False, after a message where a step is damaged, when there is none.
bool read_gms_step(ModelState& model, SpeciesFile& species, double* values, float& time);

}  // namespace plx
