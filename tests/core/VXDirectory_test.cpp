#include "plxutils/core/VXDirectory.h"

#include <gtest/gtest.h>

TEST(VXDirectory, TextAndParents) {
    // clang-format off
    const std::tuple<const char*, bool, int, const char*> cases[] = {
        {nullptr, false, 0, "c:"}, {"", true, 0, "c:"}, {"c:\\Data\\\\", false, 0, "c:\\Data"},
        {"c:\\a\\\\x.dat", true, 0, "c:\\a"}, {"x.dat", true, 0, "c:"}, {"/a/b/", false, 0, "/a/b/"},
        {"c:\\a\\b", false, 1, "c:\\a"}, {"c:\\a\\\\b", false, 1, "c:\\a"}, {"c:\\a\\b", false, 2147483647, "c:"},
        {"c:", false, 1, "c:"}, {"c:\\a\\b", false, -1, "c:\\a\\b"}, {"data", false, 1, "c:"}};
    // clang-format on
    for (const auto& [path, has_file, levels, expected] : cases) {
        SCOPED_TRACE(path ? path : "null");
        const VXDirectory directory = VXDirectory(path, has_file).GetParentDirectory(levels);
        // The system drive is spelt as the system does.
        EXPECT_STRCASEEQ(directory.GetDirectory(false).c_str(), expected);
        EXPECT_STRCASEEQ(directory.GetDirectory(true).c_str(), (expected + String("\\")).c_str());
    }
    EXPECT_TRUE(VXDirectory("x.dat", true).GetDirectory(false) == "")
        << "no folder, before a parent is asked for";
}
