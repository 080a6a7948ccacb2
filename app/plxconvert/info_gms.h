#pragma once

#include <filesystem>
#include <string>

#include "plxutils/gms/GmsSummary.h"

namespace plx::tool {

/// "text", "hdf5" or "datasets"; empty for a file that is neither a GMS project nor a dataset file. The
/// extension .gpr makes a text that names no files a project, too.
std::string gms_kind(const std::filesystem::path& file);

/// What a project holds: "2 TINs, 1 image"; empty when it holds nothing.
std::string contents_of(const GmsProjectSummary& summary);

/// Prints what a GMS file of this kind holds and returns the exit code.
int describe_gms(const std::filesystem::path& file, const std::string& kind, bool json);

}  // namespace plx::tool
