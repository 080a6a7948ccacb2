#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/host_runtime.h"

namespace plx {

/// The folder of the installation, from the command line of a process and the full path of its program.
///
/// The program lies in a folder of six letters below root or root\bin. The length of the full path decides
/// how much is cut off the program as it was typed. Separators are backslashes.
std::string installation_root(std::string_view command_line, std::string_view full_path);

/// The installation folder of this process. On POSIX it is the first element of the environment variable
/// XP_PATH when that is set.
const std::string& installation_root();

/// The host's search paths, last one first: those of the runtime, else the non-empty elements of an XP_PATH
/// value, which ";" separates.
std::vector<std::string> host_paths(platform::HostRuntime host, std::string_view xp_path);

/// The entry that "$XP_PATH<digit>" stands for: the first one when there are not that many, empty when there
/// are none. Taken from the paths of this process, which are collected once; while the host is asked for them
/// there are none.
std::string host_path(std::size_t digit);
/// The same for a list of paths.
std::string host_path(const std::vector<std::string>& paths, std::size_t digit);

}  // namespace plx
