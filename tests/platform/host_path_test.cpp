#include "platform/host_path.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/platform.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace plx::platform {
namespace {

constexpr const char* kNoTwins = "no two entries differ in case only on this system";
using Cases = std::vector<std::pair<std::string, std::string>>;

/// A folder for one test, with stored names relative to it.
class HostPath : public testing::Test {
protected:
    std::string stored(const std::string& rest) const {
        return test::kWindows ? folder_.file(rest) : "c:" + folder_.path().string() + "\\" + rest;
    }
    /// The native path below the folder; "none" when there is no such place.
    std::string found(const std::string& rest) const {
        const std::string native = native_path(stored(rest));
        return native.empty() ? "none" : native.substr(folder_.path().string().size() + 1);
    }
    test::TempFolder folder_;
};

TEST_F(HostPath, FindsWithoutCaseGoingBackAndPlacesNewNamesAsSpelt) {
    if (test::kWindows) GTEST_SKIP() << kNoTwins;
    for (const char* name :
         {"FOO/Y.NAM", "Foo/x.nam", "foo/z.nam", "one/Both.txt", "one/both.txt", "\xC3\x84/m"})
        folder_.write(name, "");
    // clang-format off
    const Cases cases = {
        {"foo\\x.nam", "Foo/x.nam"}, {"foo\\y.nam", "FOO/Y.NAM"}, {"foo/z.nam", "foo/z.nam"},
        {"ONE\\both.txt", "one/both.txt"}, {"one\\BOTH.TXT", "one/Both.txt"}, {"\xC3\xA4\\m", "none"},
        {"none\\..\\foo\\.\\\\x.nam", "Foo/x.nam"}, {"\xC3\x84\\M", "\xC3\x84/m"}, {"ONE\\GENERAL", "one/GENERAL"},
        {"missing\\new.pff", "none"}, {"one\\both.txt\\new", "none"}, {"One\\a\\..\\b", "one/b"}};
    // clang-format on
    for (const auto& [name, expected] : cases) EXPECT_EQ(found(name), expected) << name;
}

TEST(HostPathNames, OnlyTheSystemDriveExists) {
    // clang-format off
    const Cases cases = {
        {"", ""}, {"d:\\", ""}, {"c:tmp", ""}, {"C:", "/"}, {"c:\\", "/"}, {"c:\\tmp", "/tmp"}, {"\\TMP", "/tmp"},
        {"/..//tmp/.", "/tmp"}, {".", "."}, {"new.file", "new.file"}};
    // clang-format on
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(native_path(name), test::kWindows ? name : expected) << name;
}

TEST_F(HostPath, SearchFollowsDirectorySearchRules) {
    folder_.write("Data/Well.dat", "12345");
    std::filesystem::create_directory(folder_.path() / "empty");
    // clang-format off
    const std::vector<std::pair<std::string, bool>> cases = {
        {"data", true}, {"data\\", false}, {"data\\WELL.DAT", true}, {"data\\w*.d?t", true},
        {"data\\w?.dat", false}, {"data\\*l*l*.*", true}, {"d*\\well.dat", false}, {"empty\\*", true},
        {"empty\\*.*", true}, {"empty\\*.dat", false}, {"data\\well", false}, {"*\\..\\data", true}};
    // clang-format on
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(find_file(stored(name).c_str()).exists, expected) << name;
    for (const char* name : {"c:", "c:\\", "/", "", "d:\\tmp"}) EXPECT_FALSE(find_file(name).exists) << name;
}

TEST_F(HostPath, RememberedSpellingComesFirst) {
    if (test::kWindows) GTEST_SKIP() << kNoTwins;
    for (const char* name : {"test/a.txt", "Test/Sub/a.txt", "test/sub/a.txt"}) folder_.write(name, name);
    EXPECT_EQ(found("test\\sub\\a.txt"), "test/sub/a.txt");
    remember_spelling(folder_.file("Test/Sub/site.nam"));
    EXPECT_EQ(found("test\\sub\\a.txt"), "Test/Sub/a.txt");
    EXPECT_EQ(found("test\\sub\\new.txt"), "Test/Sub/new.txt");
    EXPECT_EQ(found("test\\a.txt"), "test/a.txt") << "what is not there is still found beside it";
    EXPECT_EQ(target_path(stored("test\\a.txt")), folder_.file("Test/a.txt"))
        << "but nothing there is written over";
    remember_spelling(folder_.file("test/sub/site.nam"));
    EXPECT_EQ(found("test\\sub\\a.txt"), "test/sub/a.txt") << "the last spelling counts";
}

TEST_F(HostPath, FolderIsListedWithItsTwins) {
    for (const char* name : {"Data/Well.DAT", "DATA/Sub/x", "data.txt"}) folder_.write(name, "");
    const auto names = [this](const char* rest) {
        auto listed = folder_names(stored(rest).c_str()).value_or(std::vector<std::string>{"none"});
        std::sort(listed.begin(), listed.end());
        return listed;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names("data"), (Names{"sub", "well.dat"}));
    EXPECT_EQ(names("data\\SUB\\"), Names{"x"});
    for (const char* rest : {"missing", "data.txt"}) EXPECT_EQ(names(rest), Names{}) << rest;
}

TEST_F(HostPath, FoldersLinkedInCirclesEndTheSearch) {
    if (test::kWindows) GTEST_SKIP() << kNoTwins;
    for (const char* name : {"loop", "LOOP", "Loop"})
        std::filesystem::create_symlink(".", folder_.path() / name);
    std::string deep;
    for (int i = 0; i < 30; ++i) deep += "loop\\";
    EXPECT_EQ(found(deep + "missing\\x"), "none");
    EXPECT_FALSE(folder_names(stored(deep).c_str())) << "names in it must be tried";
}

TEST(Storable, TellsWhatWouldNotSurvive) {
    const std::string n127(127, 'n'), n64(64, 'n');
    std::string many = test::kWindows ? "/a" : "", too_long;
    for (int i = 0; i < 255; ++i) many += "/a";
    for (int i = 0; i < 16; ++i) too_long += "/" + n64;
    // clang-format off
    const Cases cases = {
        {"/home/Me/site.nam", ""}, {"/data/./x/../y.nam", ""}, {"/d/" + n127, ""}, {many.substr(2), ""},
        {"/home/.cfg/x.nam", "the folder \".cfg\" begins with a dot"}, {"/d/a>b$c", ""},
        {"/d/..x", "the name \"..x\" begins with a dot"}, {"/d/a\"b", "the name \"a\"b\" holds a double quote"},
        {"/d/n" + n127, "the name \"n" + n127 + "\" is longer than 127 bytes"}, {"", "the path is empty"},
        {too_long, "the path is longer than 1023 bytes"}, {many, "the path has more than 255 components"},
        {"/d/$a/b>c", "\"$a/b>\" in the path would be read as a token"},
        {"/d/a\\b", test::kWindows ? "" : "the name \"a\\b\" holds a backslash"},
        {"/d/a??b", "the name \"a??b\" holds a wildcard"},
        {"x.nam", "the path \"x.nam\" names no folder and file"}};
    // clang-format on
    for (const auto& [name, expected] : cases) {
        std::string why;
        EXPECT_EQ(storable(name, why), expected.empty()) << name;
        EXPECT_EQ(why, expected);
    }
    EXPECT_TRUE(fits_stored_form("c:\\out\\" + n127));
    EXPECT_FALSE(fits_stored_form("c:\\out/n" + n127));
    EXPECT_FALSE(fits_stored_form(too_long));
}

}  // namespace
}  // namespace plx::platform
