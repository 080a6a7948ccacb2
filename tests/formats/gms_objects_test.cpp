#include "formats/gms_objects.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/temp_folder.h"

using namespace plx;

TEST(GmsObjects, NodeNumbersStayInRange) {
    const plx::test::TempFolder folder;
    plx::WordLines lines;
    const std::string text =
        "BEGT\nID 2.9\nVERT 1\n1 x 2d1 9\nTRI 2\n-1e20 1e20 x\n3.9 2 1\nENDT\nBEGT\nVERT 1\n1 2 3\nENDT\n";
    ASSERT_TRUE(lines.open(folder.write("a.tin", text).c_str()));
    plx::GmsTin tin;
    int ids = 0;
    const auto note = [&ids](const plx::GmsTin& known) { ids = 10 * ids + known.id; };
    ASSERT_EQ(plx::read_tin(lines, tin, note), GmsRead::kObject);
    EXPECT_EQ(tin.nodes.y, std::vector<double>{0.0});
    EXPECT_EQ(tin.nodes.z, std::vector<double>{20.0});
    const std::array<int, 3> extreme = {INT_MIN, INT_MAX - 1, -1}, plain = {2, 1, 0};
    EXPECT_EQ(tin.triangles, (std::vector<std::array<int, 3>>{extreme, plain}));
    // Without a triangle block, and with nothing left of the first one.
    ASSERT_EQ(plx::read_tin(lines, tin, note), GmsRead::kObject);
    EXPECT_TRUE(tin.triangles.empty());
    EXPECT_EQ(ids, 20);
    EXPECT_EQ(plx::read_tin(lines, tin, note), GmsRead::kEnd);
}

TEST(GmsObjects, EveryCutOfAFileEnds) {
    const std::string text =
        "BEGT\nTNAM a\nID 2\nVERT 2\n1 2 3\n4 5 6\nTRI 1\n1 2 1\nENDT\n"
        "BEGSET\nNAME b\nID 3\nIXY 2\n1 2 3\n2 4 5\nENDSET\n";
    const std::size_t tin_end = text.find("ENDT") + 4, set_end = text.find("ENDSET") + 6;
    const plx::test::TempFolder folder;
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::string path = folder.write("cut", text.substr(0, size));
        SCOPED_TRACE(text.substr(0, size));
        plx::WordLines lines;
        ASSERT_TRUE(lines.open(path.c_str()));
        plx::GmsTin tin;
        EXPECT_EQ(plx::read_tin(lines, tin, [](const plx::GmsTin&) {}) == GmsRead::kObject, size >= tin_end);
        plx::GmsScatter set;
        EXPECT_EQ(plx::read_scatter(lines, set) == GmsRead::kObject, size >= set_end);
    }
}
