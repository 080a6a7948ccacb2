#pragma once

#include <string>
#include <vector>

#include "plxutils/converters/ConversionReport.h"
#include "plxutils/export.h"

namespace plx {

/// Collects what the library says through its error hook, for a report.
class PLX_EXPORT ErrorTexts {
public:
    /// Takes a text without its line end; null, and one that equals the text before, is left out. Of very
    /// many only the first 1000 are kept.
    void add(const char* text);
    /// The texts, and a last one that tells how many further ones came.
    std::vector<std::string> texts() const;
    /// The errors of a report, then the texts that say something new; no text twice.
    std::vector<std::string> merged_with(const ConversionReport& report) const;

private:
    std::vector<std::string> texts_;
    long long dropped_ = 0;
};

}  // namespace plx
