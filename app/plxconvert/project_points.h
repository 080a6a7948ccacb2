#pragma once

#include "plxconvert/image_map.h"

namespace plx::tool {

/// Reads lines "column row" from standard input and writes lines "X Y" to standard output, or the other way
/// round; empty lines and comments are passed on as they are.
///
/// @throws InputFault with the number of the first line that is not two numbers, once the results of the
/// lines before it are written.
void project_points(ImageMap& map, bool reverse);

}  // namespace plx::tool
