#pragma once

#include <filesystem>
#include <vector>

namespace plx::test {

/// Names of all files below a folder, relative to it and sorted.
std::vector<std::filesystem::path> files_below(const std::filesystem::path& folder);

/// Expects the same files with the same bytes in both folders. With PLX_RENEW_GOLDENS in the environment the
/// tree becomes the golden first.
void expect_tree(const std::filesystem::path& golden, const std::filesystem::path& tree);

}  // namespace plx::test
