#pragma once

#include <string>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "support/temp_folder.h"

namespace plx::test {

/// A copy of the small model, which a test may change, with another folder for the results.
struct SmallModel {
    SmallModel();
    void replace(const std::string& name, const std::string& from, const std::string& to) const;
    ConversionReport convert(const ReadingRules& rules = ReadingRules::modflow(), bool compress = false);

    TempFolder folder, out;
    int outputs[Converter::kOutputs];
};

}  // namespace plx::test
