#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plxutils/converters/ReadingRules.h"

namespace plx {

/// What a conversion did, for programs that tell a person. Filled while parsePROJECT and write_to_PLX run.
struct ConversionReport {
    /// Faults of inputs or outputs that left the result incomplete, each a line without an end: file, place,
    /// what.
    std::vector<std::string> errors;
    /// What a person should know although everything asked for was written.
    std::vector<std::string> warnings;
    /// A flag is set when that rule changed this conversion.
    ReadingRules rules_used;
    std::int64_t nodes = 0;
    std::int64_t cells = 0;   ///< active cells
    int steps = 0;            ///< flow time steps whose field file was written
    int transport_times = 0;  ///< transport times whose field file was written
    /// Stored names of the files written, in the order in which they were finished.
    std::vector<std::string> files;
    std::int64_t bytes = 0;  ///< written, before compression
};

}  // namespace plx
