#pragma once

#include "formats/array_data.h"

namespace plx {

/// Reads an array as Fortran's list-directed input does: values between blanks or commas, repeat counts
/// ("5*1.0"), nothing between two commas leaves a 0, "/" ends the row. What a row's last line holds behind
/// the row's last value is dropped; "#" hides the rest of a line.
ArrayFindings read_list_directed(TextSource& in, const ArrayData& data, bool tab_separates);

}  // namespace plx
