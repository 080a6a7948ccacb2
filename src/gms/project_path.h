#pragma once

#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXString.h"

namespace plx {

/// The path of a file that a text project names: beside the project, unless the name is complete itself. It
/// keeps its letters as written, because extensions are told apart by case.
inline String project_path(const VXFile& project, const String& name) {
    const bool complete = name[0] == '/' || name[0] == '\\' || (name.length() > 1 && name[1] == ':');
    return complete ? name : project.GetDirectoryName() + "\\" + name;
}

}  // namespace plx
