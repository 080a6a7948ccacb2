#pragma once

#include <algorithm>
#include <string>

namespace plx {

/// A name with blanks and tabs as underscores: one word of a file, whatever the project calls the thing.
inline std::string one_word(std::string name) {
    std::replace(name.begin(), name.end(), ' ', '_');
    std::replace(name.begin(), name.end(), '\t', '_');
    return name;
}

/// What follows the last separator of either kind: a file's name without its folder.
inline std::string last_component(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace plx
