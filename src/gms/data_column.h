#pragma once

#include <string>
#include <vector>

namespace plx {

/// Stands for a value that a file does not have.
inline constexpr double kMissingValue = -1.0e9;

/// Values of one dataset, one for each node or point of an object; kMissingValue where there is none.
struct DataColumn {
    std::string name;
    std::vector<double> values;
};

}  // namespace plx
