#pragma once

#include <string>
#include <vector>

namespace plx {

/// A line of a text project that names a file.
struct ProjectLine {
    std::string keyword;
    std::string name;  ///< as written
    std::string path;  ///< complete; a name without folder is beside the project
};

/// What a keyword of a text project stands for; null for a word that is none.
const char* project_keyword_title(const std::string& keyword);

/// Reads the lines of a text project that the conversion heeds: those with a known keyword that end in a line
/// break.
/// @param stored  the project's stored path.
/// @return false when it cannot be opened.
bool read_project_lines(const std::string& stored, std::vector<ProjectLine>& lines);

}  // namespace plx
