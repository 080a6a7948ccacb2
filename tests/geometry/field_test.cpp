#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <random>
#include <string>
#include <vector>

#include "plxutils/geometry/cgField.h"
#include "support/capture_stdout.h"

namespace {

using plx::test::capture_stdout;

/// All positions of all faces, "." for a position that is not used.
std::string faces_text(const cgCell& cell) {
    std::string text;
    for (int k = 0; k < 4 * cell.facesPerCell(); ++k) {
        const int node = cell.getFaceConnectOrder(k / 4)[k % 4];
        EXPECT_EQ(node >= 0, k % 4 < cell.getNumNodesInFace(k / 4));
        text += (k % 4 || k == 0 ? "" : " ") + (node < 0 ? "." : std::to_string(node));
    }
    return text;
}

TEST(cgCell, ShapesHaveTheirCodesAndFaces) {
    using Counts = std::array<int, 4>;
    const std::tuple<int, Counts, const char*> table[] = {
        // code, nodes, faces, dimensions
        {Point, {1, 1, 1, 0}, "0..."},
        {Line, {2, 2, 1, 1}, "01.."},
        {Tri, {4, 3, 1, 2}, "012."},
        {Quad, {5, 4, 1, 2}, "0123"},
        {Tet, {6, 4, 4, 3}, "120. 230. 310. 132."},
        {Hex, {7, 8, 6, 3}, "0123 1562 3267 0374 0451 4765"},
        {Prism, {8, 6, 5, 3}, "543. 012. 1452 1034 0253"},
        {Pyr, {9, 5, 5, 3}, "012. 023. 034. 410. 1432"},
        {9, {0, 0, 0, 0}, ""}};
    cgField field;
    for (const auto& [type, counts, faces] : table) {
        SCOPED_TRACE(type);
        const cgCell* cell = field.createCell(static_cast<CellType>(type), 0, nullptr);
        EXPECT_EQ((Counts{cell->cellType(), cell->nodesPerCell(), cell->facesPerCell(), cell->ndim()}),
                  counts);
        EXPECT_EQ(faces_text(*cell), faces);
        for (const int face : {-1, counts[2], INT_MAX}) {
            EXPECT_TRUE(!cell->getFaceConnectOrder(face) && cell->getNumNodesInFace(face) == 0) << face;
        }
        const cgCell* same = CreateCellFromType(field, counts[0], 0, nullptr);
        EXPECT_EQ(same ? same->cellType() : 0, counts[0]);
    }
    EXPECT_EQ(CreateCellFromType(field, 3, 0, nullptr)->cellType(), 2);
}

TEST(cgCell, ValuesComeFromThePoolAndAreShared) {
    const float values[] = {1.5f, 2.5f};
    cgField field;
    for (MemoryAllocator* pool : {field.allocator, static_cast<MemoryAllocator*>(nullptr)}) {
        cgCell cell(pool, Tri, 2, values);
        EXPECT_EQ(cell.connect() != nullptr, pool != nullptr);
        EXPECT_EQ(cell.getNData() == 2 ? cell.data()[1] : 0.0f, pool ? 2.5f : 0.0f);
        cell.setNData(3);
        const cgCell copy(cell);
        cell.setNData(INT_MAX);
        EXPECT_TRUE(cell.getNData() == 0 && !cell.data());
        EXPECT_EQ(std::vector<float>(copy.data(), copy.data() + copy.getNData()), std::vector<float>(3));
    }
}

TEST(cgCellVec, CellsMoveAndSetsAreNotCopiedByAssignment) {
    cgField field;
    cgCell* const a = field.createCell(Tri, 0, nullptr);
    cgCellVec set;
    set.SetGrowSize(0);
    set.append(a);
    set.prepend(new cgCell(*a));
    EXPECT_EQ(capture_stdout([&set] { EXPECT_EQ(set[-3], nullptr); }), "[-3] index out of bounds.\n");
    set.SetGrowSize(100);
    EXPECT_EQ(set[102], nullptr);
    EXPECT_EQ(std::make_pair(set.size(), set.capacity()), std::make_pair(2, 202));
    EXPECT_EQ(set[INT_MAX], nullptr);
    set.RemoveCell(0);  // deletes: the cell belongs to no field
    cgCellVec copy(set), other;
    EXPECT_EQ((other = set).size() + other.size(), 0);
    set.RemoveCell(0);
    EXPECT_EQ(a->connect(), nullptr);
    EXPECT_EQ(copy[0], a);
    EXPECT_EQ(copy.size(), set.size() + 1);
}

TEST(cgField, SetsAndDefinitionsAppearOnDemand) {
    cgField field;
    cgCell* const cell = field.createCell(Point, -1, nullptr);
    const auto refused = [&] { field.AddCell(-1, cell), field.AddCell(INT_MAX, cell); };
    EXPECT_EQ(capture_stdout(refused), "[-1] index out of bounds.\n[2147483647] index out of bounds.\n");
    field.AddCell(3, cell);
    field.AddCell(900, nullptr);
    EXPECT_EQ(field.numCellSets, 901);
    EXPECT_EQ(field.cellSets.at(3)[0], cell);
    field.numCellSets = 2'000'000;  // public: a host may have written anything
    field.AddCell(1000, cell);
    EXPECT_EQ(field.cellSets.at(1000)[0], cell);
    field.SetNumNodeData(3);
    field.SetNumNodeData(-1);
    EXPECT_EQ(std::make_pair(field.numNodeData, field.nodeDataDefs.at(2).type), std::make_pair(0, 4));
}

/// Merges with one cell per node and returns what the cells name then.
std::vector<int> merge(cgField& field, double tolerance, double* data_tolerance) {
    const int n = field.nnodes();
    std::vector<int> map;
    for (int i = 0; i < n; ++i) {
        field.AddCell(0, field.createCell(Line, 0, nullptr));
        field.cellSets[0][i]->connect()[0] = i;
        field.cellSets[0][i]->connect()[1] = n + i;
    }
    field.RemoveDuplicateNodes(tolerance, tolerance, tolerance, data_tolerance);
    for (int i = 0; i < n; ++i) {
        map.push_back(field.cellSets[0][i]->connect()[0]);
        EXPECT_EQ(field.cellSets[0][i]->connect()[1], n + i) << "names no node and must stay";
    }
    return map;
}

/// Both merges spelt out for nodes whose third value is their index; without data tolerances the first one.
std::vector<int> merge_plainly(cgPointList& nodes, double t, double* data_tolerance) {
    cgPointList list(nodes), kept;
    if (data_tolerance) list.do_sort_with_data(0, 2, t, t, t, data_tolerance);
    if (!data_tolerance) list.do_sort(&cgPointList::Compare);
    std::vector<int> run(static_cast<std::size_t>(nodes.count())), leaders;
    for (int j = 0, first = 0; j < nodes.count(); ++j) {
        const int last = data_tolerance ? 1 : -1;
        if (list[first].ptCompareWithData(list[j], 0, last, t, t, t, data_tolerance) != 0) first = j;
        if (first == j) leaders.push_back(static_cast<int>(list[j][2]));
        run[static_cast<std::size_t>(list[j][2])] = static_cast<int>(leaders.size()) - 1;
    }
    std::vector<int> order(leaders);
    std::sort(order.begin(), order.end());
    for (int i = 0; i < nodes.count(); ++i) {
        int& group = run[static_cast<std::size_t>(i)];
        if (data_tolerance) {
            const int leader = leaders[static_cast<std::size_t>(group)];
            group = static_cast<int>(std::find(order.begin(), order.end(), leader) - order.begin());
            if (leader == i || group == 0) kept.append(nodes[i]);
        } else {
            kept[group].SetPoint(nodes[i].x(), nodes[i].y(), nodes[i].z(), 0, nullptr);
        }
    }
    nodes = kept;
    return run;
}

TEST(cgField, MergesLikeThePlainProcedure) {
    std::mt19937 random(20);
    const auto draw = [&random](unsigned below) { return static_cast<double>(random() % below); };
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        cgField field;
        for (int i = 0; i < 6 * (round / 2); ++i) {
            const double values[] = {draw(3), draw(3), static_cast<double>(i)};
            field.AddPoint({draw(4) + draw(5) / 256, draw(3) + draw(3) / 256, -draw(2), 3, values});
        }
        double plain_tolerances[] = {0.5, 1.0, 0.0}, tolerances[] = {0.5, 1.0, 1e9};
        const bool data = round % 2 == 1;
        cgPointList expected(field.nodes);
        const std::vector<int> map = merge_plainly(expected, 1.5 / 256, data ? plain_tolerances : nullptr);
        capture_stdout([&] { EXPECT_EQ(merge(field, 1.5 / 256, data ? tolerances : nullptr), map); });
        ASSERT_EQ(field.nnodes(), expected.count());
        EXPECT_EQ(field.nodes.capacity(), data || round == 0 ? expected.capacity() : expected.count() + 100);
        for (int i = 0; i < expected.count(); ++i) {
            EXPECT_EQ(field.nodes[i].ptCompareWithData(expected[i], 0, 2, 0, 0, 0, nullptr), 0) << i;
        }
    }
}

TEST(cgField, MergingByDataPrintsItsSteps) {
    cgField field;
    const double values[] = {-2.5e13, 1.0, 1.04};
    for (int i = 0; i < 3; ++i) field.AddPoint({i ? 5.0 : 0.0, 0, 0, 1, &values[i]});
    const std::string a = "Point: [0.000000,0.000000,0.000000-4] [-25000000000000.0] [0.0] [0.0] ";
    const std::string b = "Point: [5.000000,0.000000,0.000000-4] [1.0] [1.0] [1.0] ";
    const std::string c = "Point: [5.000000,0.000000,0.000000-4] [1.0] [2.0] ";
    const std::string leaders = a + "[1.0]\n" + b + "[1.0]\n" + c + "[1.0] [0.0]\n";
    double tolerance = 0.1;
    EXPECT_EQ(capture_stdout([&] { field.RemoveDuplicateNodes(0, 0, 0, &tolerance); }),
              "\n\nAfter do_sort_with_data\n\n" + a + "[1.0]\n" + b + "[1.0]\n" + c + "[2.0] [1.0]\n" +
                  "Found 1 matches! [3 nnodes]\n\n\nAfter round 1\n\n" + leaders +
                  "\n\nAfter do_sort_with_data 2\n\n" + leaders + "\n\nAfter change 2\n\n" + a + "[0.0]\n" +
                  b + "[1.0]\n" + c + "[1.0] [-1.0]\n\n\nAfter round2\n\n" + leaders +
                  "After do_sort_by_data\n\n" + leaders);
}

}  // namespace
