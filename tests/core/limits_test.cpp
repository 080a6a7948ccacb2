#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXOutputFile.h"
#include "plxutils/core/VXUtilities.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace {

using plx::test::TempFolder;

std::string repeated(const std::string& part, int times) {
    std::string text;
    while (times-- > 0) text += part;
    return text;
}

TEST(Limits, NamesAreCutWhereTheyAlwaysWere) {
    SetFileTag("$Long>", std::string(1000, 'v').c_str());
    const struct {
        std::string name, made;
    } cases[] = {
        {std::string(1022, 'n'), std::string(1022, 'n')},
        {std::string(1023, 'n'), std::string(1023, 'n')},
        {std::string(1024, 'n'), std::string(1023, 'n')},
        {"$Long>" + std::string(23, 'n') + "x", std::string(1000, 'v') + std::string(23, 'n')},
        {repeated("$none>", 1365) + "abc", "ab"},  // 8192 characters are looked at before any is expanded
        {repeated("$none>", 1366), "$n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name.substr(0, 20) + " of " + std::to_string(c.name.size()));
        EXPECT_EQ(MakeFilename(c.name.c_str()).c_str(), c.made);
        std::vector<char> buffer(c.name.size() + 2000, '\x7f');
        c.name.copy(buffer.data(), c.name.size());
        buffer[c.name.size()] = '\0';
        FixFilenameString(buffer.data());
        EXPECT_LE(std::string(buffer.data()).size(), 1023U);
    }
    char extension[1100];
    EXPECT_EQ(SetExtension((std::string(1020, 'n') + ".abc").c_str(), extension), 1);
    EXPECT_STREQ(extension, "ab");
    EXPECT_EQ(SetExtension((std::string(1023, 'n') + ".abc").c_str(), extension), 0);
}

TEST(Limits, FilesOfWholeBlocksAreReadWhole) {
    const TempFolder folder;
    for (const std::size_t size : {0U, 1U, 8191U, 8192U, 8193U, 16384U}) {
        std::string bytes(size, 'b');
        if (size > 0) bytes.back() = 'e';
        const std::string path = folder.write("block.txt", bytes);
        EXPECT_EQ(ReadStringFromFile(path.c_str()).c_str(), bytes) << size;
    }
}

TEST(Limits, AFileGrowsPastFourGiB) {
    if (plx::test::kWindows) GTEST_SKIP() << "holes would be written";
    const TempFolder folder;
    const std::string path = folder.write("far.txt", "");
    for (const std::uintmax_t size : {0x7fffffffULL, 0xffffffffULL}) {
        std::error_code error;
        std::filesystem::resize_file(path, size, error);
        if (error) GTEST_SKIP() << "no files with holes";
        VXOutputFile out;
        ASSERT_TRUE(out.Open(path.c_str(), false, true));
        EXPECT_EQ(out.Write("tail\n"), 6);
        EXPECT_TRUE(out.Close() && !out.Failed());
        EXPECT_EQ(std::filesystem::file_size(path), size + 6);
        EXPECT_TRUE(VXFile(path.c_str()).FileExists());
    }
}

}  // namespace
