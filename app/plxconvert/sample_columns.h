#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace plx::tool {

/// Where things stand in the lines of a file with samples.
struct SampleColumns {
    char separator = ',';  ///< of the cells, as cells_of takes it
    bool named = false;    ///< the first line holds names and no sample
    std::array<std::size_t, 3> place = {0, 1, 2};
    std::size_t value = 3;
    std::size_t cells = 4;  ///< in each line
    std::size_t spare = 0;  ///< so many empty cells more may end a line
    std::string name;       ///< of the value's column; empty when it has none
};

/// Finds the columns by the first line that is no comment.
///
/// @param wanted  name of the value's column; may be empty.
/// @throws std::invalid_argument with what is wrong, when they are not found.
SampleColumns find_columns(const std::string& first_line, const std::string& wanted);

}  // namespace plx::tool
