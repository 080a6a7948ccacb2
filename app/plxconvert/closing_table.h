#pragma once

#include <string>

#include "plxutils/converters/ConversionReport.h"

namespace plx::tool {

/// What the tool knows about a conversion besides the library's report.
struct RunFacts {
    std::string project;  ///< native path
    std::string kind;     ///< what a modeller calls it
    std::string rules;    ///< "modflow" or "prescribed"
    std::string place;    ///< native path of the folder that holds the results
    std::string log;      ///< native path of the trace; empty when there is none
    bool compressed = false;
    double seconds = 0.0;
};

/// Prints what was converted, where the results are and how much there is, to standard output.
void print_closing_table(const RunFacts& facts, const ConversionReport& report);

}  // namespace plx::tool
