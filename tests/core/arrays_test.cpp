#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <new>
#include <string>

#include "plxutils/core/MemoryAllocator.h"
#include "plxutils/core/VX1DArray.h"
#include "plxutils/core/VXArray.h"
#include "plxutils/core/VXString.h"
#include "support/capture_stdout.h"

namespace {

using plx::test::capture_stdout;

TEST(VX1DArray, GrowsToTheIndexNamed) {
    VX1DArray<double> a;
    a[4] = 1;
    ASSERT_EQ(a.size, 5);
    EXPECT_EQ(a[0] + a[3], 0);
    a.Resize(2, 7);
    a[3] = 2;
    EXPECT_EQ(a[2], 7) << "new elements take the fill value of the moment, not what stood there before";
    EXPECT_TRUE(a.Resize(-1, 7));
    EXPECT_TRUE(a.size == 0 && a.data == nullptr);
    EXPECT_EQ(&a[INT_MAX], &a.fill);
}

TEST(VX1DArray, NegativeIndexPrintsAndYieldsTheFillValue) {
    VX1DArray<int> a;
    EXPECT_EQ(capture_stdout([&] { a[-1] = 9; }), "[-1] index out of bounds.\n");
    a[1] = 0;
    EXPECT_EQ(a[0], 9);
    const VX1DArray<int>& constant = a;
    EXPECT_EQ(capture_stdout([&] { EXPECT_EQ(constant[-2] + constant[5], 18); }),
              "[-2] index out of bounds.\n");
}

TEST(VX1DArray, FillValueMayBeAnElement) {
    VX1DArray<String> a, c;
    a[1] = "a text that is too long to be kept in place";
    EXPECT_TRUE(a.SetSize(3, a[1]) && a[0] == a[2] && a[0].length() == 43);
    EXPECT_TRUE(a.Resize(2000, a[2]) && a[1999].length() == 43);
    EXPECT_TRUE(a.SetSize(1500, "b") && a[0] == "b" && a[1499] == "b");
    c[7] = "old";
    c = a;
    a[0] = "changed";
    EXPECT_TRUE(c[0] == "b" && c.size == 1500 && c[1501] == "b") << "copies are deep";
}

// An element type that can be copied only so often, as if memory ran out.
struct Scarce {
    static inline int copies_left = 5;
    int value = 0;
    Scarce() = default;
    Scarce(const Scarce& other) : value(other.value) {
        if (copies_left-- <= 0) throw std::bad_alloc();
    }
    Scarce& operator=(const Scarce&) = default;
};

TEST(VX1DArray, MissingStorageIsReported) {
    VX1DArray<Scarce> a;
    ASSERT_TRUE(a.SetSize(2, a.fill));
    a[1].value = 8;
    EXPECT_FALSE(a.Resize(100, a.fill));
    EXPECT_EQ(a.size, 100);
    EXPECT_EQ(a[1].value, 8) << "old elements stay";
    EXPECT_EQ(&a[50], &a.fill);
    EXPECT_FALSE(a.SetSize(3, a.fill));
    EXPECT_EQ(&a[0], &a.fill);
    Scarce::copies_left = 1000;
    EXPECT_TRUE(a.Resize(3, a.fill) && &a[2] == a.data + 2) << "storage is back";
}

TEST(ArrayPosition, ChecksIndicesInOrder) {
    const ArrayPosition p(2, 3, 4, 1);
    const std::string printed = capture_stdout([&] {
        EXPECT_EQ(p(1, 2, 3, 0), 23);
        EXPECT_EQ(p(2, 0, 0, 0) + p(-1, 9, 0, 0) + p(1, 3, 9, 0) + p(1, 0, 4, 9) + p(1, 0, 0, 1), 0);
    });
    std::string expected;
    for (const char* text : {"(i: 2>=2)", "(i: -1>=2)", "(j: 3>=3)", "(k: 4>=4)", "(v: 1>=1)"}) {
        expected += std::string("Index out of bounds! ") + text + "\n";
    }
    EXPECT_EQ(printed, expected);
    EXPECT_EQ(ArrayPosition(INT_MAX, INT_MAX, INT_MAX, INT_MAX).size(), INT_MAX);
}

TEST(VXArray, BadIndicesUseElementZero) {
    VXArray<double> a(2, 2, 1, 3), empty(0, 5, 5, 1);
    a(1, 1, 0, 2) = 5;
    capture_stdout([&] { a(0, 0, 1, 0) = empty(0, 0, 0, 0) + 4; });
    EXPECT_EQ(a(0, 0, 0, 0), 4);
    VXArray<double> copy(a);
    EXPECT_TRUE(a.SetDimensions(2, 2, 1, 3));
    EXPECT_EQ(a.data[11], 0);
    EXPECT_EQ(copy.data[11], 5);
    a.dims.SetDimensions(100, 100, 100, 1);
    a(99, 99, 99, 0) = 6;
    EXPECT_EQ(a(0, 0, 0, 0), 6) << "extents without storage";
}

TEST(VXArray, RefusesSizesBeyondInt) {
    VXArray<char> a;
    // A bad index still has a place to write to.
    for (const auto& [i, j] :
         {std::pair(-1, 2), std::pair(-2, -2), std::pair(65536, 65536), std::pair(INT_MAX, INT_MAX)}) {
        EXPECT_FALSE(a.SetDimensions(i, j, 1, 1)) << i;
        EXPECT_EQ(a.dims.size(), 0);
        capture_stdout([&] { a(0, 0, 0, 0) = 1; });
    }
}

TEST(MemoryAllocator, TakesTheFirstBlockWithRoom) {
    MemoryAllocator pool(100);
    auto* a = static_cast<char*>(pool.Allocate(60));
    auto* b = static_cast<char*>(pool.Allocate(60));
    EXPECT_EQ(pool.Allocate(30), a + 60);
    EXPECT_EQ(static_cast<char*>(pool.Allocate(200))[199], 0);
    EXPECT_EQ(pool.Allocate(10), a + 90);
    EXPECT_EQ(pool.Allocate(10), b + 60) << "the large block must not be handed out twice";
    EXPECT_EQ(pool.Allocate(-1), nullptr);
    for (int i = 0; i < 300; ++i) ASSERT_NE(pool.Allocate(90), nullptr);
    EXPECT_EQ(pool.Allocate(20), b + 70) << "a small request goes back to earlier blocks";
    MemoryAllocator usual(0);
    auto* first = static_cast<char*>(usual.Allocate(1));
    EXPECT_EQ(usual.Allocate(MemoryAllocator::__DEFAULT_BLOCK_SIZE__ - 1), first + 1);
}

TEST(MemoryBlock, CopiesShareTheBytes) {
    auto original = std::make_unique<MemoryBlock>(8);
    MemoryBlock copy(*original);
    *static_cast<char*>(original->Allocate(8)) = 'x';
    original.reset();
    EXPECT_EQ(*static_cast<char*>(copy.Allocate(8)), 'x');
}

}  // namespace
