#pragma once

#include <filesystem>

namespace plx::tool {

/// Checks before reading that a file is text, and a gzip file whole: reading alone takes the end of a file
/// that was cut for the end of its lines.
///
/// @throws InputFault when it is not.
void check_text_file(const std::filesystem::path& file);

}  // namespace plx::tool
