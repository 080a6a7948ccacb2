#include "plxutils/georef/WorldFile.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "plxutils/c/GeoRef.h"
#include "support/capture_stdout.h"
#include "support/temp_folder.h"

namespace {

using Rows = std::vector<std::array<double, 4>>;
using plx::test::capture_stdout;
using plx::test::TempFolder;

Rows load(const std::string& image, int width, int height) {
    double* stale = nullptr;
    double** maps = &stale;  // must not survive a failure
    const int count = GeoRef_load_gcp_mappings(&maps, image.c_str(), width, height);
    Rows rows(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        auto& row = rows[static_cast<std::size_t>(i)];
        EXPECT_EQ(GeoRef_get_gcp_mapping(&maps, i, &row[0], &row[1], &row[2], &row[3]), 1);
    }
    EXPECT_EQ(GeoRef_free_gcp_mappings(&maps, count), 1);
    EXPECT_EQ(maps, nullptr);
    return rows;
}

constexpr const char* kWorld = "2\n0\n0\n-2\n1000\n5000\n";
const Rows kCorners = {{0, 0, 1000, 5000}, {99, -49, 1198, 4902}, {0, -49, 1000, 4902}};

TEST(GeoRefC, LoadsWhatLiesBesideTheImage) {
    const Rows turned = {{0, 0, 10, 20}, {1, -2, 28, 3}, {0, -2, 18, -4}};
    std::string many;
    Rows hundred;
    for (int i = 0; i < 150; ++i) many += std::to_string(i) + " 1 2 3\n";
    for (double i = 0; i < 100; ++i) hundred.push_back({i, 1, 2, 3});
    const std::tuple<std::string, std::string, std::string, int, int, Rows> cases[] = {
        {"site.jgw", kWorld, "Site.JPG", 100, 50, kCorners},
        {"site.tfw", "# note\r\n\r\n 1e1 x\r\n\"7\"\n\n4\n-12,9\n\t10\n20\n99\n", "site.tif", 2, 3, turned},
        {"site.pnw", "5\n\n\nbad\n", "site.png", 2, 2, {{0, 0, 0, 0}, {1, -1, 5, 0}, {0, -1, 0, 0}}},
        {"site.tfw", kWorld, "site.png", 100, 50, {}},
        {"site.tfw", kWorld, "site.", 100, 50, {}},
        {"site.gcp", "# dst\tsrc\r\n\r\n1.5\t-2,3 4\r\n", "site.tif", 0, 0, {{1.5, -2, 3, 4}}},
        {"site.gcp", "1 2 3 4 5 6 7 8 9 10 11\n #1 2\n,,\n6", "Site.", 0, 0, {{1, 2, 3, 4}, {6, 0, 0, 0}}},
        {"site.gcp", "12km abc -.5e1x 7", "site.x", 0, 0, {{12, 0, -5, 7}}},
        {"site.gcp", "\"1.5\" 2 \"3\" 4\n\"# 1\" 2\n", "site.x", 0, 0, {{1.5, 2, 3, 4}}},
        {"site.gcp", std::string(4997, ' ') + "1 2 3 4", "site.x", 0, 0, {{1, 0, 0, 0}, {2, 3, 4, 0}}},
        {"site.gcp", many, "site.x", 0, 0, hundred},
    };
    for (const auto& [file, bytes, image, width, height, expected] : cases) {
        SCOPED_TRACE(file + " for " + image + ": " + bytes.substr(0, 60));
        const TempFolder folder;
        folder.write(file, bytes);
        EXPECT_EQ(load(folder.file(image), width, height), expected);
    }
}

TEST(GeoRefC, AUselessGcpFileIsReportedAndTheWorldFileRead) {
    const TempFolder folder;
    folder.write("site.tiffw", kWorld);
    folder.write("site.gcp", "# nothing\n\n");
    const auto load_site = [&] { EXPECT_EQ(load(folder.file("site.tif"), 100, 50), kCorners); };
    EXPECT_EQ(capture_stdout(load_site), "parseGCPFile: GCP file needs at least one mapping.\n");
    std::filesystem::remove(folder.path() / "site.gcp");
    std::filesystem::create_directory(folder.path() / "site.gcp");
    EXPECT_EQ(capture_stdout(load_site),
              "Error: File [" + folder.file("site.gcp") + "] does not exist or cannot be opened.\n");

    char out[4096] = "as it was";
    double** maps = nullptr;
    EXPECT_EQ(parseWorldFile(folder.file("site.").c_str(), out, "Tif", &maps, 2, 2), 0);
    EXPECT_STREQ(out, "as it was") << "here letters are compared as they are";
    EXPECT_EQ(parseWorldFile(folder.file("site.").c_str(), out, "tif", &maps, 2, 2), 3);
    EXPECT_EQ(out, folder.file("site.tiffw"));
    EXPECT_EQ(GeoRef_free_gcp_mappings(&maps, 3), 1);
}

TEST(WorldFile, IsSearchedInTheCurrentFolderInTheOrderOfTheTable) {
    const TempFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const char* name : {"", "photo.jgw", "photo.jpegw", "photo.jpgw", "photo.jpw"}) {
        if (*name) folder.write(name, kWorld);
        EXPECT_STREQ(getWorldFile("/elsewhere/Photo.JPG").c_str(), name);
    }
    for (const char* image : {"photo.tif", "photo", ""}) EXPECT_STREQ(getWorldFile(image).c_str(), "");
    std::filesystem::current_path(before);
}

TEST(GeoRefC, WritesBesideTheImageAndKeepsOlderFiles) {
    const std::string world = "1.000000\n\n0.000000\n\n0.000000\n\n-1.000000\n\n90.000000\n\n180.000000\n\n";
    const std::string points = "100.000000\t-200.000000\t10.000000\t-20.000000\n";
    // An image that gives its own name as the file's: nothing happens.
    const std::tuple<std::string, std::string, bool> cases[] = {
        {"Site.TIF", "site.tfw", false}, {"b.jpeg", "b.jgw", false}, {"c.d.t", "c.d.ttw", false},
        {"Site.TIF", "site.gcp", true},  {"site.", "site.", false},  {"e.", "e.gcp", true},
        {"v1.tif/a", "v1.tif/a", true}};
    GeoRef* const object = GeoRef_new(1);
    EXPECT_EQ(GeoRef_set_gcp_values(object, 0, 10, 20, 100, 200), 1);
    EXPECT_EQ(GeoRef_process_type(object, 4), 1);
    for (const auto& [image, file, gcp] : cases) {
        SCOPED_TRACE(image + " gives " + file);
        const TempFolder folder;
        folder.write(file, "newer");
        folder.write(file + ".backup", "older");
        std::array<char, 4096> name{};
        folder.file(image).copy(name.data(), name.size() - 1);
        const bool works = file != image;
        EXPECT_EQ((gcp ? GeoRef_write_gcp : GeoRef_write_world)(object, name.data()), works ? 1 : 0);
        EXPECT_EQ(name.data(), folder.file(file));
        EXPECT_EQ(folder.text(file), !works ? "newer" : gcp ? points : world);
        EXPECT_EQ(folder.read(file + ".backup"), works ? "newer" : "older");
        EXPECT_EQ(folder.read(file + ".backup1"), works ? "older" : "");
    }
    EXPECT_EQ(GeoRef_delete(object), 1);
}

}  // namespace
