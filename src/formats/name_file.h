#pragma once

#include <string>
#include <vector>

#include "plxutils/core/VXFile.h"

namespace plx {

/// One line of a MODFLOW name file.
struct NameFileEntry {
    std::string type;  ///< upper case: "BAS6", "DATA(BINARY)"
    int unit = 0;
    std::string name;  ///< as written
    std::string path;  ///< `name` resolved against the name file's folder
    int line = 0;      ///< 1-based
};

/// Reads a name file: type, unit and file name a line; "#" lines, blank lines and lines under three words are
/// passed over, quoted names keep their blanks. False when the file cannot be opened.
bool read_name_file(const VXFile& file, std::vector<NameFileEntry>& entries);

/// True for a name with a drive ("c:...") and, except on Windows, for one that begins with a slash.
bool is_absolute_name(const std::string& name);
/// The name itself when it is absolute, otherwise the folder, a backslash and the name.
std::string resolve_beside(const String& folder, const std::string& name);

}  // namespace plx
