#include "plxutils/core/WholeFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/part_file.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

class WholeFile : public testing::Test {
protected:
    bool open(const std::string& name) {
        return file_.open(folder_.file(name).c_str(), false) && file_.stream().Write("new") == 3;
    }
    bool write(const std::string& name) { return open(name) && file_.close() && folder_.read(name) == "new"; }

    plx::test::TempFolder folder_;
    plx::WholeFile file_;
};

TEST_F(WholeFile, PlaceThatIsLostLeavesNothing) {
    folder_.write("sub/x", "old");
    ASSERT_TRUE(open("sub/x"));
    fs::rename(folder_.path() / "sub", folder_.path() / "gone");
    EXPECT_FALSE(file_.close());
    EXPECT_STREQ(file_.fault(), "the complete file could not be given its name");
    ASSERT_TRUE(open("x"));
    fs::create_directories(folder_.path() / "x/y");
    EXPECT_FALSE(file_.close() || open("x") || open("none/x"));
    EXPECT_FALSE(fs::exists(folder_.path() / "~x.part"));
    folder_.write("~z.part", "left by an earlier run");
    EXPECT_TRUE(write("z") && !fs::exists(folder_.path() / "~z.part"));
    EXPECT_TRUE(write(std::string(127, 'n'))) << file_.fault();
    const std::string deep = "/" + std::string(4080, 'd') + "/";
    EXPECT_EQ(plx::platform::part_name(deep + "abcdefghijklm"), deep + "~abcdefg.part");
}

TEST_F(WholeFile, LinksAndPermissionsStay) {
    folder_.write("x", "old");
    fs::permissions(folder_.path() / "x", fs::perms(0640));
    std::error_code fault;
    for (const char* to : {"x", "missing", "circle"}) {
        SCOPED_TRACE(to);
        const std::string name = *to == 'c' ? to : std::string("to_") + to;
        fs::create_symlink(to, folder_.path() / name, fault);
        if (fault) GTEST_SKIP() << "no links here";
        EXPECT_EQ(write(name), *to != 'c');
        EXPECT_TRUE(fs::is_symlink(folder_.path() / name));
    }
    EXPECT_EQ(fs::status(folder_.path() / "x").permissions(), fs::perms(0640));
}

}  // namespace
