#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/ErrorTexts.h"
#include "plxutils/export.h"

namespace plx {

/// One result that a conversion can write.
struct ConversionOutput {
    const char* name;  ///< a word for a person to choose it by
    bool ConverterFactory::*flag;
};
using ConversionOutputs = std::array<ConversionOutput, Converter::kOutputs>;

/// All results, in the order of create_converter's flags.
PLX_EXPORT const ConversionOutputs& conversion_outputs();

/// What the caller of a conversion asked for.
struct ConversionRequest {
    std::size_t porosities = 0;              ///< number of values
    std::string porosity_name = "porosity";  ///< what the caller's users call them
    /// Outputs that must be there at the end. The others are written when the model has them.
    std::array<bool, Converter::kOutputs> named{};
};

/// Completes factory.report after a conversion: the errors that were heard besides those of the report,
/// outputs that were named and are not there, a conversion without field files, and warnings of porosities
/// that do not fit the layers, of a porosity that was named and is known to nobody, and of extents without a
/// cell: the layers and the cells are known only now.
PLX_EXPORT void finish_report(ConverterFactory& factory, const ErrorTexts& heard,
                              const ConversionRequest& request);

}  // namespace plx
