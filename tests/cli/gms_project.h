#pragma once

#include <string>

#include "support/temp_folder.h"

namespace plx::test {

/// Writes a GMS project with a TIN of two times, a scatter set, a borehole, two materials and a grid that is
/// not converted. Returns the path of site.gpr; the datasets of the TIN are in heads.dat.
std::string write_gms_project(const TempFolder& folder);

/// An HDF5 file's first bytes, and nothing else that belongs to one.
std::string broken_hdf5();

/// A binary dataset file with one scalar dataset of three values for TIN 3.
std::string binary_dataset();

}  // namespace plx::test
