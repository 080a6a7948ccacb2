#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace plx::tool {

/// A path from text as arguments and the library have it: bytes, and UTF-8 on Windows.
std::filesystem::path path_of(std::string_view text);

/// Absolute native path of an existing input file.
///
/// @param wanted  what to give in place of a folder.
/// @throws InputFault when it is missing, a folder, or has a path that the library cannot keep.
std::filesystem::path input_file(const std::string& given,
                                 const std::string& wanted = "the model's name file");

/// Absolute native path of a folder for results, made with its parents when it is missing.
///
/// @throws InputFault when it cannot be made, is no folder, or has a path that the library cannot keep.
std::filesystem::path result_folder(const std::string& given);

/// Absolute native path of a file to write, in a folder that exists; the file's name is in lower case, as the
/// library makes it.
///
/// @throws InputFault when there is no such folder, it names a folder or anything else that is not a regular
/// file, or the library cannot keep the path.
std::filesystem::path output_file(const std::string& given);

}  // namespace plx::tool
