#include "plxutils/math/VXMatrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "support/capture_stdout.h"

namespace {

using plx::test::capture_stdout;

const char* const kProductText =
    "Multiplication error: dimension mismatch. Columns of Matrix A need to equal Rows of Matrix B.\n";
const char* const kSetText =
    "Set Element Bounds Error: either row index or column index exceeds matrix bounds.\n";
const char* const kIdentityTestText =
    "Is_Identity Error : The number of rows in the matrix must equal the number of columns.\n";
const char* const kNoInverseText = "Warning! Matrix has no real inverse solution!\n";

struct Dense {
    int rows, cols;
    std::vector<double> values;
};

VXMatrix make(const Dense& d) {
    VXMatrix m(0, 0);
    m.SetMat(d.rows, d.cols, d.values.data());
    return m;
}

void expect_values(const VXMatrix& m, const Dense& expected) {
    ASSERT_EQ(m.num_rows(), expected.rows);
    ASSERT_EQ(m.num_cols(), expected.cols);
    for (std::size_t i = 0; i < expected.values.size(); ++i) {
        EXPECT_NEAR(m.values()[i], expected.values[i], 1e-12) << "element " << i;
    }
}

VXMatrix random_matrix(int rows, int cols, std::mt19937& generator) {
    std::uniform_real_distribution<double> value(-1.0, 1.0);
    VXMatrix m(rows, cols);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) m.set_element(r, c, value(generator) + (r == c ? 4.0 : 0.0));
    return m;
}

TEST(VXMatrix, MisusePrintsAndChangesNothing) {
    const Dense before{2, 3, {1, 2, 3, 4, 5, 6}};
    const std::vector<std::pair<std::function<void(VXMatrix&)>, std::string>> table = {
        {[](VXMatrix& m) { EXPECT_EQ(m.return_elem(2, -1), 0.0); },
         "Return Element -  Element exceeds bounds. [2,-1] bounds - [2,3]\n"},
        {[](VXMatrix& m) { EXPECT_EQ(m.set_element(0, 3, 9.0), 0); }, kSetText},
        {[](VXMatrix& m) {
             expect_values(m * m, {2, 3, {1, 2, 3, 4, 5, 6}});
         },
         kProductText},
        {[](VXMatrix& m) { EXPECT_EQ(m.set_to_identity(), 0); }, "Must be a square matrix.\n"},
        {[](VXMatrix& m) { m.swap_rows(0, 2); },
         "Swap Rows Bounds error: row index exceeds matrix bounds.\n"},
        {[](VXMatrix& m) { m.swap_columns(-1, 0); },
         "Swap Columns Bounds error:  column index exceeds matrix bounds.\n"},
        {[](VXMatrix& m) { m.divide_row(2, 1.0); },
         "Divide Row Bounds error: row index exceeds matrix bounds.\n"},
        {[](VXMatrix& m) { m.divide_row(0, 0.0); }, "Divison error: cannot divide row by zero."},
        {[](VXMatrix& m) { EXPECT_FALSE(m.is_identity()); }, kIdentityTestText},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.second);
        VXMatrix m = make(before);
        EXPECT_EQ(capture_stdout([&] { row.first(m); }), row.second);
        expect_values(m, before);
    }
}

TEST(VXMatrix, ReductionAndInverseOfKnownMatrices) {
    using Change = void (*)(VXMatrix&);
    const Change ref = [](VXMatrix& m) { EXPECT_EQ(m.set_to_ref(), 1); };
    const Change rref = [](VXMatrix& m) { EXPECT_EQ(m.set_to_rref(), 1); };
    const Change inverse = [](VXMatrix& m) { m = m.inverse(); };
    const std::string oblong = std::string(kSetText) + kProductText + kIdentityTestText + kNoInverseText;
    const struct {
        const char* name;
        Change change;
        Dense input;
        std::vector<double> expected;
        std::string text = {};
    } table[] = {
        {"swap", ref, {2, 2, {0, 1, 1, 1}}, {1, 1, 0, 1}},
        {"column without pivot", ref, {2, 3, {0, 2, 4, 0, 3, 7}}, {0, 1, 2, 0, 0, 1}},
        {"below 8 decimals is zero", ref, {2, 2, {4e-9, 1, 2, 2}}, {1, 1, 0, 1}},
        {"square loses its corner", rref, {2, 2, {2, 0, 0, 4}}, {1, 0, 0, 0}},
        {"square keeps the 2", rref, {2, 2, {1, 2, 3, 4}}, {1, 2, 0, 0}},
        {"rank 1", rref, {2, 3, {1, 2, 3, 2, 4, 6}}, {1, 2, 3, 0, 0, 0}},
        {"pivot off the diagonal", rref, {2, 3, {1, 2, 3, 2, 4, 7}}, {1, 2, 3, 0, 0, 1}},
        {"more rows than columns", rref, {3, 2, {1, 2, 3, 4, 5, 6}}, {1, 0, 0, 1, 0, 0}},
        {"empty", rref, {0, 0, {}}, {}},
        {"inverse", inverse, {2, 2, {2, 0, 0, 4}}, {0.5, 0, 0, 0.25}},
        {"inverse of a tiny pivot", inverse, {2, 2, {1e-9, 0, 0, 1}}, {0, 1, 1, 0}, kNoInverseText},
        {"no inverse", inverse, {2, 2, {1, 2, 2, 4}}, {1, 0, 1, -0.5}, kNoInverseText},
        {"oblong inverse", inverse, {3, 2, {1, 2, 3, 4, 5, 6}}, {0, -3, 0, 2.5, 1, -2}, oblong},
    };
    for (const auto& c : table) {
        SCOPED_TRACE(c.name);
        VXMatrix m = make(c.input);
        EXPECT_EQ(capture_stdout([&] { c.change(m); }), c.text);
        expect_values(m, {c.input.rows, c.input.cols, c.expected});
    }
}

TEST(VXMatrix, RandomMatricesAreInverted) {
    std::mt19937 generator(7);
    for (int n = 1; n <= 8; ++n) {
        const VXMatrix a = random_matrix(n, n, generator);
        EXPECT_EQ(capture_stdout([&] { EXPECT_TRUE((a.inverse() * a).is_identity()) << n; }), "");
    }
}

TEST(VXMatrix, SizesIdentityAndDisplay) {
    VXMatrix m = make({2, 3, {1, 2, 3, 4, 5, 6}});
    m.reset_dim(3, 2);
    expect_values(m, {3, 2, {1, 2, 4, 5, 0, 0}});
    m.SetMat(1, -4, nullptr);
    expect_values(m, {1, 0, {}});
    EXPECT_FALSE(make({2, 2, {1, NAN, 0, 1}}).is_identity() || make({1, 1, {1.0000000051}}).is_identity());
    EXPECT_EQ(capture_stdout([] { VXMatrix(1, 2).display(); }), "0.00000000 0.00000000 \n");
}

TEST(VXMatrix, JacobiFindsTheEigenvectorsOfSymmetricMatrices) {
    std::mt19937 generator(11);
    for (int trial = 0; trial < 200; ++trial) {
        VXMatrix a = random_matrix(3, 3, generator);
        // Equal diagonal elements with a tiny one beside them must not divide by zero.
        if (trial == 0) a = make({3, 3, {1, 1e-8, 0, 0, 1, 0, 0, 0, 2}});
        for (const auto& [r, c] : {std::pair(1, 0), {2, 0}, {2, 1}}) a.set_element(r, c, a.return_elem(c, r));
        VXMatrix work(a), v(3, 3);
        double d[3];
        EXPECT_EQ(capture_stdout([&] { work.jacobi(v, d); }), "");
        const VXMatrix av = a * v;
        for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(av.values()[i], d[i % 3] * v.values()[i], 1e-9);
        EXPECT_NEAR(v.values()[0] * v.values()[1] + v.values()[3] * v.values()[4],
                    -v.values()[6] * v.values()[7], 1e-9);
    }
}

}  // namespace
