#pragma once

#include <cstddef>
#include <string>

#include "support/temp_folder.h"

namespace plx::test {

/// Writes a model of 2 layers, 3 rows and 4 columns with two saved steps: site.nam, its inputs, site.hds and
/// site.cbb. One cell of the first layer is inactive, one has constant head. Returns the path of site.nam.
std::string write_small_model(const TempFolder& folder);

/// Number of files and folders right in the folder.
std::ptrdiff_t entry_count(const TempFolder& folder);

/// The head file alone.
std::string small_model_heads();

}  // namespace plx::test
