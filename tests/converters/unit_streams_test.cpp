#include "converters/unit_streams.h"

#include <gtest/gtest.h>

#include "support/hdf5_file.h"
#include "support/temp_folder.h"

namespace plx {
namespace {

TEST(UnitStreams, Hdf5FilesAreFoundBesideTheInputThenBesideTheModel) {
    const test::TempFolder folder;
    folder.write("in/site.dis", "1 1 1\n");
    for (const char* name : {"in/near.h5", "far.h5", "1.h5", "2.h5", "3.h5", "4.h5"})
        test::Hdf5Writer(folder.file(name)).ints(name, {1}, {1});
    VX1DArray<std::FILE*> files;
    UnitStreams streams(files, [&] { return folder.path().string(); });
    ASSERT_TRUE(streams.open_unit(10, folder.file("in/site.dis")));
    const TextSource& dis = *streams.unit(10);
    const Hdf5Id near = streams.hdf5_file(".\\near.h5", dis);
    EXPECT_GE(near, 0);
    EXPECT_EQ(streams.hdf5_file(".\\near.h5", dis), near);
    for (const char* name : {"far.h5", "1.h5", "2.h5", "3.h5", "4.h5", ".\\near.h5"})
        EXPECT_TRUE(is_hdf5_group(streams.hdf5_file(name, dis), "/")) << name;
    EXPECT_LT(streams.hdf5_file("in/site.dis", dis), 0);
}

TEST(UnitStreams, UnitNumbersHaveAnEnd) {
    const test::TempFolder folder;
    const std::string path = folder.write("a.txt", "1\n");
    VX1DArray<std::FILE*> files;
    files.SetSize(100, nullptr);
    UnitStreams streams(files, [&] { return folder.path().string(); });
    const std::pair<int, bool> cases[] = {{-2147483647, false}, {-1, false},        {0, true},
                                          {99, true},           {100, true},        {99'999, true},
                                          {100'000, false},     {2147483647, false}};
    for (const auto& [unit, opened] : cases) {
        SCOPED_TRACE(unit);
        EXPECT_EQ(streams.open_unit(unit, path), opened);
        EXPECT_EQ(streams.file(unit) != nullptr, opened);
        EXPECT_EQ(streams.unit(unit) != nullptr, opened);
    }
    EXPECT_LE(files.GetSize(), 200'000);
}

}  // namespace
}  // namespace plx
