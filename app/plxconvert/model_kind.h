#pragma once

#include <filesystem>
#include <string>

#include "plxutils/converters/ModelKind.h"

namespace plx::tool {

/// True when the first bytes of a file cannot be text.
///
/// @throws InputFault when the file cannot be read.
bool is_binary(const std::filesystem::path& file);

/// Finds out what model a project file belongs to, as find_model_kind does.
///
/// @throws InputFault when it is no file that gives a model.
ModelKind find_kind(const std::filesystem::path& project, const std::string& wanted);

}  // namespace plx::tool
