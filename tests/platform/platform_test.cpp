#include "platform/platform.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/host_system.h"
#include "support/temp_folder.h"

namespace plx::platform {
namespace {

namespace fs = std::filesystem;

struct Platform : testing::Test {
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

    File open(const char* name, const char* mode) {
        return {open_file(folder.file(name).c_str(), mode), std::fclose};
    }
    FileFacts facts(const char* name) { return find_file(folder.file(name).c_str()); }
    bool make(const char* name) { return make_directory(folder.file(name).c_str()); }

    test::TempFolder folder;
};

TEST_F(Platform, FoldersAreFoundButNotOpened) {
    EXPECT_EQ(open(".", "rb"), nullptr);
    EXPECT_TRUE(facts("../.").directory && facts("../.").size == 0 && !facts("../.").read_only);
}

TEST_F(Platform, PositionsPassFourGiB) {
    const std::int64_t far = 5'000'000'000;
    const File file = open("big", "wb");
    EXPECT_TRUE(seek(file.get(), far, SEEK_SET) && std::fputc('x', file.get()) == 'x');
    EXPECT_EQ(tell(file.get()), far + 1);
    EXPECT_EQ(file_size(file.get()), far + 1) << "what is still buffered counts";
}

TEST_F(Platform, MakesFoldersAndMovesOverFiles) {
    EXPECT_TRUE(make("GENERAL") && make("general"));
    EXPECT_TRUE(fs::is_directory(folder.file("GENERAL")) &&
                (test::kWindows || !fs::exists(folder.file("general"))));
    folder.write("b.TXT", "old");
    const std::string source = folder.write("A.txt", "new"), target = folder.file("B.txt");
    EXPECT_FALSE(make("no/such") || make("a.txt"));
    EXPECT_TRUE(replace_move(source.c_str(), target.c_str()));
    EXPECT_FALSE(replace_move(source.c_str(), target.c_str())) << "the source has gone";
    EXPECT_EQ(folder.read("b.TXT"), "new");
}

TEST_F(Platform, MovesAcrossVolumes) {
    const fs::path other = fs::is_directory("/dev/shm") ? "/dev/shm" : folder.path();
    const fs::path target = other / folder.path().filename();
    const std::string source = folder.write("a.txt", "content");
    EXPECT_TRUE(replace_move(source.c_str(), target.string().c_str()));
    EXPECT_EQ(test::read_bytes(target), "content");
    EXPECT_FALSE(fs::exists(source));
    fs::remove(target);
}

TEST_F(Platform, IniValues) {
    const std::string ini = folder.write(
        "s.ini",
        "\xef\xbb\xbf[Units\r\nLength=outside\r\n; Units\r\n[ units ] text\r\n Length = ft us "
        "\r\nTime='days'\r\n"
        ";Mass=kg\r\nEmpty=\r\nFormula=\"a=b\"\r\nOpen=\"x\r\nInner=a \"b\"\r\nTail=6 ; tail\r\nNo line\r\n"
        "Twice=1\r\nTwice=2\rCr=3\r[Other]\r\nMass=g\r\n[Units]\r\nLate=1");
    // clang-format off
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"LENGTH", "ft us"}, {"time", "days"}, {"Mass", "none"}, {"Empty", ""}, {"Formula", "a=b"},
        {"Open", "\"x"}, {"Inner", "a \"b\""}, {"Tail", "6 ; tail"}, {"No line", "none"}, {"Twice", "1"},
        {"Cr", "3"}, {"Late", "none"}};
    // clang-format on
    for (const auto& [key, expected] : cases)
        EXPECT_EQ(ini_value(ini.c_str(), "Units", key, "none"), expected) << key;
    EXPECT_EQ(ini_value(folder.write("end.ini", "[Units]\nLength=m").c_str(), "Units", "Length", "ft"), "m");
}

TEST_F(Platform, IniDefaultsAreCutLikeValues) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {nullptr, ""}, {" ft  ", " ft"}, {"\"a b\"", "a b"}, {"'a'", "a"}, {"   ", ""}};
    for (const auto& [given, expected] : cases) {
        EXPECT_EQ(ini_value(folder.file("no.ini").c_str(), "Units", "Length", given), expected);
        EXPECT_EQ(ini_value("", "Units", "Length", given), expected);
    }
}

}  // namespace
}  // namespace plx::platform
