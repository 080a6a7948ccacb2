#pragma once

#include <array>
#include <string>

#include "plxutils/converters/finish_report.h"

namespace plx::tool {

/// One result that a conversion can write, in the order of create_converter's flags.
struct Output {
    const char* name;
    const char* help;
    bool ConverterFactory::*flag;
};

using OutputTable = std::array<Output, Converter::kOutputs>;
const OutputTable& output_table();

/// What a person asked for.
struct OutputChoice {
    std::array<int, Converter::kOutputs> flags{};
    /// Outputs called by name: each must be there at the end. The others are written when the model has them.
    std::array<bool, Converter::kOutputs> named{};
};

/// Reads a list of output names: comma separated, letters of either case, or one of "all" and "none";
/// "all" holds the porosity only when values for it were given.
///
/// @throws std::invalid_argument with a text for the user.
OutputChoice parse_outputs(const std::string& list, bool porosity_given);

/// One line of help for each name.
std::string outputs_help();

}  // namespace plx::tool
