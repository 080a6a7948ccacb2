#pragma once

#include <string>
#include <vector>

namespace plx {

/// Faults found in inputs, each ready to be shown: file, place in it and what was found there, for instance
/// "site.dis: line 12: 40 row widths expected, 37 found".
using Problems = std::vector<std::string>;

}  // namespace plx
