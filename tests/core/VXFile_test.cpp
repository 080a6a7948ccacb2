#include "plxutils/core/VXFile.h"

#include <gtest/gtest.h>

#include "plxutils/core/VXNativePath.h"
#include "plxutils/core/VXUtilities.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace {

std::string repeated(const char* text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

TEST(VXFile, NormalisesPaths) {
    const std::string n130(130, 'n'), n127(127, 'n');
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"C:/Data/Well.DAT", "c:\\data\\well.dat"},
        {"a\\.\\b.txt", "a\\b.txt"}, {"./x.nam", ".\\x.nam"}, {"../x.nam", "..\\x.nam"},
        {"c:\\data\\.hidden\\x.dat", "c:\\datahidden\\x.dat"}, {"c:\\a..b\\x..dat", "c:\\a..b\\x..dat"},
        {"c:\\a\\b\\..\\c.txt", "c:\\a\\c.txt"}, {"c:\\a\\..\\c.txt", "c:\\c.txt"},
        {"c:\\a\\b\\..", "c:\\a\\.."}, {"c:\\a\\b\\..\\..\\c.txt", "c:\\a\\..\\c.txt"},
        {"c:\\a\\b\\c\\..\\..\\..\\x.txt", "c:\\a\\b\\x.txt"}, {"..\\..\\x.dat", "..\\x.dat"},
        {"a\\..\\x.dat", "a\\x.dat"}, {"x.dat", "x.dat\\x.dat"}, {"c:\\", "c:\\c:"},
        {"c:\\\"my dir\"\\x.dat", "c:\\my dir\\\\x.dat"}, {"c:\\\xC3\x84Z\\x", "c:\\\xC3\x84z\\x"},
        {"c:\\" + n130 + "\\x", "c:\\" + n127 + "\\x"},
        {"c:" + repeated("\\a", 253) + "\\x.t", "c:" + repeated("\\a", 253) + "\\x.t"},
        {"c:" + repeated("\\a", 254) + "\\x.t", ""}, {"c:" + repeated("\\a", 255) + "\\x.t", "x.t\\x.t"},
        {"$NO_SUCH_TAG>", ""}};
    // Leading separators stand for the system drive on POSIX only.
    const std::vector<std::pair<std::string, std::string>> by_system = {
        {"/Data/Well.DAT", "data\\well.dat"}, {"\\data\\x", "data\\x"}, {"/", ""}, {"\\\\", ""},
        {"\\\\server\\share\\f", "\\\\server\\share\\f"}};
    // clang-format on
    for (const auto& [name, expected] : cases)
        EXPECT_STREQ(VXFile(name.c_str()).GetFilePath().c_str(), expected.c_str()) << name;
    for (const auto& [name, windows] : by_system) {
        std::string stored = windows.substr(windows.starts_with("\\") ? 2 : 0);
        stored = stored.empty() ? "c:\\c:" : "c:\\" + stored;
        EXPECT_EQ(VXFile(name.c_str()).GetFilePath().c_str(), plx::test::kWindows ? windows : stored) << name;
    }
    EXPECT_EQ(VXFile(("c:/" + repeated("long", 300)).c_str()).GetFilePath().GetLength(), 3 + 127);
}

TEST(MakeFilename, NamesAreCutWhereTheyAlwaysWere) {
    SetFileTag("$Long>", std::string(1000, 'v').c_str());
    const std::pair<std::string, std::string> cases[] = {
        {std::string(1022, 'n'), std::string(1022, 'n')},
        {std::string(1023, 'n'), std::string(1023, 'n')},
        {std::string(1024, 'n'), std::string(1023, 'n')},
        {"$Long>" + std::string(23, 'n') + "x", std::string(1000, 'v') + std::string(23, 'n')},
        {repeated("$none>", 1365) + "abc", "ab"},  // 8192 characters are looked at before any is expanded
        {repeated("$none>", 1366), "$n"},
    };
    for (const auto& [name, made] : cases) {
        SCOPED_TRACE(name.substr(0, 20) + " of " + std::to_string(name.size()));
        EXPECT_EQ(MakeFilename(name.c_str()).c_str(), made);
        std::vector<char> buffer(name.size() + 2000, '\x7f');
        name.copy(buffer.data(), name.size());
        buffer[name.size()] = '\0';
        FixFilenameString(buffer.data());
        EXPECT_LE(std::string(buffer.data()).size(), 1023U);
    }
}

TEST(VXFile, SplitsThePath) {
    // clang-format off
    const struct {
        const char *name, *file, *title, *extension, *directory, *drive;
    } cases[] = {
        {"c:\\data\\well.dat", "well.dat", "well", "dat", "c:\\data", "c:\\"},
        {"c:\\data\\readme", "readme", "readm", "", "c:\\data", "c:\\"},
        {"c:\\a.b\\x.", "x.", "x", "", "c:\\a.b", "c:\\"}, {"x.tar.gz", "x.tar.gz", "x.tar", "gz", "x.tar.gz", "x.t"},
        {nullptr, "", "", "", "c:", ""}, {"", "", "", "", "c:", ""}};
    // clang-format on
    VXFile file;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name ? c.name : "null");
        file.SetFile(c.name);
        EXPECT_STREQ(file.GetFileName().c_str(), c.file);
        EXPECT_STREQ(file.GetFileTitle().c_str(), c.title);
        EXPECT_STREQ(file.GetFileExtension().c_str(), c.extension);
        EXPECT_STRCASEEQ(file.GetDirectoryName().c_str(), c.directory);
        EXPECT_STREQ(file.GetDrive().c_str(), c.drive);
    }
    EXPECT_TRUE(VXFile(String("c:\\data"), String("x.txt")).GetFilePath() == "c:\\data\\x.txt");
    EXPECT_TRUE(VXFile(String("c:/data/"), String("x.txt")).GetFilePath() == "c:\\data\\x.txt");
    EXPECT_TRUE(VXFile(String(""), String("a/x.txt")).GetFilePath() == "a\\x.txt");
}

TEST(VXFile, FactsAreThoseOfTheMomentOfNaming) {
    const plx::test::TempFolder folder;
    const std::string name = folder.write("Sub/Well.dat", "12345");
    VXFile file(name.c_str());
    EXPECT_TRUE(file.FileExists() && !file.IsReadOnly());
    EXPECT_EQ(file.FileSize(), 5);

    std::filesystem::permissions(name, std::filesystem::perms::owner_read);
    VXFile newer(name.c_str());
    EXPECT_TRUE(newer.IsReadOnly());
    file = newer;
    EXPECT_FALSE(file.IsReadOnly()) << "an equal path is not assigned";

    std::filesystem::permissions(name, std::filesystem::perms::owner_all);
    std::filesystem::remove(name);
    newer.SetFile(name.c_str());
    EXPECT_FALSE(newer.FileExists() || newer.FileSize());
    EXPECT_TRUE(newer.IsReadOnly()) << "a file that is not found leaves this as it was";
}

TEST(VXFile, NativeNameDecidesBetweenFoldersOfTheSameLetters) {
    if (plx::test::kWindows) GTEST_SKIP() << "no two folders differ in case only on this system";
    const plx::test::TempFolder folder;
    folder.write("test/a.txt", "lower");
    const std::string upper = folder.write("Test/a.txt", "upper");
    EXPECT_STREQ(VXNativePath(VXFile(upper.c_str()).GetFilePath().c_str()).c_str(), upper.c_str());
}

}  // namespace
