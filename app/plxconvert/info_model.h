#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "plxconvert/info_output.h"

namespace plx::tool {

/// What was read of a model.
struct ModelReading {
    std::optional<ModelDescription> model;  ///< empty when it has no grid
    std::vector<std::string> errors, warnings;
};

/// Reads a model for its description; nothing is written and nothing is printed.
///
/// @throws InputFault when the file gives no model.
ModelReading read_model(const std::filesystem::path& project);

/// Prints what a model holds and returns the exit code.
int describe_model(const std::filesystem::path& project, bool json);

}  // namespace plx::tool
