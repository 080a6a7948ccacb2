#pragma once

#include <string>

#include "formats/array_record.h"

namespace plx {

/// Reads a control record, traces it and finds the stream that it names.
///
/// @param what   the array's name for problems.
/// @return false when the file has ended or the stream is missing; a problem says so.
bool read_array_control(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                        const std::string& what, ArrayControl& control, Problems& problems);

/// True for CONSTANT, INTERNAL, EXTERNAL, OPEN/CLOSE and HDF5 in any case.
bool is_array_keyword(std::string_view word);

}  // namespace plx
