#pragma once

#include <nlohmann/json.hpp>

#include "plxconvert/info_output.h"

namespace plx::tool {

/// The object of a model, alone or as a member of its project's.
nlohmann::ordered_json to_json(const ModelDescription& model);

/// Prints an object. File names and labels are bytes of any code page; what is not UTF-8 is replaced.
void print(const nlohmann::ordered_json& json);

}  // namespace plx::tool
