#pragma once

#include <string>
#include <vector>

namespace plx {

/// Values of one dataset, one for each node or point of an object; -1.0e9 where there is none.
struct DataColumn {
    std::string name;
    std::vector<double> values;
};

}  // namespace plx
