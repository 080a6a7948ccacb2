#pragma once

#include <cstddef>
#include <string>

/// What PartFile asks of the operating system. All names are native.
namespace plx::platform {

/// Bytes of the longest path that a file can be created by.
std::size_t longest_path();
/// The file that a name leads to through links, there or not; empty for links in a circle.
std::string follow_links(const std::string& native);
/// Creates `part` in place of a file of that name; -1 too when there is a `target` that may not be written.
int create_part(const std::string& part, const std::string& target);
/// Renames within a folder, over an existing file.
bool move_over(const std::string& part, const std::string& target);
/// Async-signal-safe.
void delete_file(const char* native) noexcept;

}  // namespace plx::platform
