#pragma once

#include <string>
#include <vector>

#include "plxutils/gms/GmsSummary.h"

namespace plx {

/// Read the boreholes (BEGH, CONT) and the materials (MN) of a text project's files and append them. Damaged
/// places are reported; what stood before them counts.
void describe_bores(const std::string& path, std::vector<GmsObjectSummary>& out);
void describe_materials(const std::string& path, std::vector<GmsMaterialSummary>& out);

}  // namespace plx
