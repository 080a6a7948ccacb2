#pragma once

#include <string>

namespace plx {

/// What follows the last separator of either kind: a file's name without its folder.
inline std::string last_component(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace plx
