#include "gms/hdf5_objects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/hdf5_file.h"
#include "support/temp_folder.h"

namespace plx {
namespace {

using test::Hdf5Writer;
using test::NumberType;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
constexpr double kMissing = -1.0e9;

class Hdf5Objects : public testing::Test {
protected:
    template <class Write>
    Hdf5Handle made(Write write) {
        const std::string path = folder_.file("made.h5");
        {
            Hdf5Writer writer(path);
            write(writer);
        }
        return open_hdf5_file(path.c_str());
    }

    test::TempFolder folder_;
    std::string problem_;
};

TEST_F(Hdf5Objects, TinWithFurtherColumnsAndNodeNumbersFromZero) {
    const Hdf5Handle file = made([](Hdf5Writer& out) {
        out.strings("PROPERTIES/Name", {"my tin"}, 6, test::Padding::kNullPadded);
        out.floats("Nodes/NodeLocs", {2, 4}, {1, 2, 3, 9, 4, 5, 6, 9});
        out.numbers("Elements/Nodeids", NumberType::kInt64, {2, 3}, {1, 2, 3, 0, -9e18, 9e18});
    });
    GmsTin tin;
    tin.nodes.x = {5};
    ASSERT_TRUE(read_hdf5_tin(file.id(), tin, problem_)) << problem_;
    EXPECT_EQ(tin.name, "my tin");
    EXPECT_THAT(tin.nodes.x, ElementsAre(1, 4));
    EXPECT_THAT(tin.nodes.z, ElementsAre(3, 6));
    constexpr int kMin = -2147483647 - 1;
    EXPECT_THAT(tin.triangles,
                ElementsAre(std::array<int, 3>{0, 1, 2}, std::array<int, 3>{-1, kMin, 2147483646}));
}

TEST_F(Hdf5Objects, UnusableObjectsSayWhy) {
    const std::string bad_nodes = "Nodes/NodeLocs: a table with 3 or more columns expected, found ";
    const struct {
        int parts;
        Hdf5Writer::Shape shape;
        std::string problem;
        bool scatter_reads;
    } cases[] = {
        {0, {}, "PROPERTIES/Name: no readable text", false},
        {1, {}, "PROPERTIES/Name: it holds no text", false},
        {2, {}, "Nodes/NodeLocs: no readable numbers", false},
        {3, {}, bad_nodes + "a single value", false},
        {3, {1, 2, 3}, bad_nodes + "1 x 2 x 3", false},
        {3, {3, 2}, bad_nodes + "3 x 2", true},
        {3, {2, 3}, "Elements/Nodeids: no readable numbers", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.problem);
        const Hdf5Handle file = made([&c](Hdf5Writer& out) {
            if (c.parts == 1) out.strings("PROPERTIES/Name", {});
            if (c.parts >= 2) out.strings("PROPERTIES/Name", {"t"});
            if (c.parts >= 3) out.doubles("Nodes/NodeLocs", c.shape, std::vector<double>(6, 1.0));
        });
        GmsTin tin;
        EXPECT_FALSE(read_hdf5_tin(file.id(), tin, problem_));
        EXPECT_EQ(problem_, c.problem);
        GmsScatter set;
        EXPECT_EQ(read_hdf5_scatter(file.id(), set, problem_), c.scatter_reads);
        EXPECT_EQ(set.points.y.empty(), !c.scatter_reads);
    }
}

TEST_F(Hdf5Objects, ColumnsAreFilledUpCutAndLeftOut) {
    const Hdf5Handle file = made([](Hdf5Writer& out) {
        out.doubles("Datasets/long/Values", {2, 2}, {1, 2, 3, 4});
        out.doubles("Datasets/long/Times", {2}, {0, 10});
        out.ints("Datasets/Short/Values", {1}, {7});
        out.doubles("Datasets/Guid/Values", {3}, {1, 2, 3});
        out.strings("Datasets/text/Values", {"1"});
        out.doubles("Datasets/plain", {3}, {1, 2, 3});
        out.group("Datasets/empty");
        out.soft_link("Datasets/gone", "/nowhere");
        out.strings("only_guid/Datasets/Guid", {"{1}"});
    });
    std::vector<std::string> problems;
    const auto columns = read_hdf5_columns(file.id(), 3, nullptr, &problems);
    EXPECT_THAT(problems, ElementsAre("Datasets/empty/Values: no readable numbers",
                                      "Datasets/text/Values: no readable numbers"));
    const double late = 8.0;
    EXPECT_THAT(read_hdf5_columns(file.id(), 2, &late)[1].values, ElementsAre(3, 4));
    EXPECT_THAT(columns, ElementsAre(FieldsAre("Short", ElementsAre(7, kMissing, kMissing)),
                                     FieldsAre("long", ElementsAre(1, 2, 3))));
    EXPECT_THAT(read_hdf5_columns(open_hdf5_group(file.id(), "only_guid").id(), 3), IsEmpty());
    EXPECT_THAT(read_hdf5_columns(open_hdf5_group(file.id(), "Datasets").id(), 3), IsEmpty());
}

}  // namespace
}  // namespace plx
