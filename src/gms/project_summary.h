#pragma once

#include <string>

#include "plxutils/gms/GmsSummary.h"

namespace plx {

/// Describe a project by its stored path; `summary.problem` is set when it cannot be opened.
void describe_text_project(const std::string& stored, bool lenient, GmsProjectSummary& summary);
void describe_hdf5_project(const std::string& stored, GmsProjectSummary& summary);

}  // namespace plx
