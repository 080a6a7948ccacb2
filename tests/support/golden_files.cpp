#include "support/golden_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace plx::test {

std::vector<fs::path> files_below(const fs::path& folder) {
    std::vector<fs::path> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) names.push_back(fs::relative(entry.path(), folder));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void expect_tree(const fs::path& golden, const fs::path& tree) {
    if (std::getenv("PLX_RENEW_GOLDENS") != nullptr) {
        fs::remove_all(golden);
        fs::create_directories(golden.parent_path());
        fs::copy(tree, golden, fs::copy_options::recursive);
    }
    EXPECT_EQ(files_below(golden), files_below(tree));
    for (const fs::path& name : files_below(golden)) {
        EXPECT_EQ(read_bytes(golden / name), read_bytes(tree / name)) << name;
    }
}

}  // namespace plx::test
