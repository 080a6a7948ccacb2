// Nitrate of scattered wells, spread over a grid of cells: VXInterpolate finds the wells that count at a
// place and their weights, FieldFile writes the mesh with the result.

#include <cmath>
#include <cstdio>

#include "plxutils/converters/FieldFile.h"
#include "plxutils/core/VXFileReader.h"
#include "plxutils/geometry/cgPointList.h"
#include "plxutils/interpolate/VXInterpolate.h"

namespace {

/// Ground water moves along its layers far more easily than across them: a metre of depth separates as much
/// as twenty metres of distance do.
constexpr double kStretch = 20.0;
constexpr double kReach = 450.0;  // m, in the stretched space

/// Nodes along x, y and z, and the first node and the spacing of each axis, in m.
constexpr int kNodes[3] = {41, 25, 6};
constexpr double kFirst[3] = {0.0, 0.0, -30.0};
constexpr double kStep[3] = {50.0, 50.0, 6.0};

double place(int axis, double index) { return kFirst[axis] + index * kStep[axis]; }

/// Adds the wells of a file "x,y,z,nitrate" with one line of titles; their number, or -1 after a message. The
/// line reader knows how laboratories write: half of "<5" is taken for it, nothing for "nd", and a "missing"
/// value is -1.0e9.
int add_wells(const char* name, VXInterpolate& wells) {
    VXFileReader reader;
    if (!reader.Open(name)) {
        std::fprintf(stderr, "%s: cannot be opened\n", name);
        return -1;
    }
    int count = 0;
    reader.ReadLine(",", true, true, false);
    while (reader.ReadLine(",", true, true, false) >= 0) {
        double x = 0.0, y = 0.0, z = 0.0, nitrate = 0.0;
        int flag = 0;
        const bool place =
            reader.WordToDouble(0, x) && reader.WordToDouble(1, y) && reader.WordToDouble(2, z);
        if (!place || !reader.WordToChemValue(3, 0.5, 0.0, nitrate, flag)) {
            std::fprintf(stderr, "%s: line %d is no well\n", name, reader.CurrentLineNumber());
            return -1;
        }
        if (nitrate == -1.0e9) continue;
        wells.add_point(nitrate, x, y, z);  // the value comes first
        ++count;
    }
    if (count == 0) std::fprintf(stderr, "%s: no wells\n", name);
    return count;
}

struct Estimate {
    double value;     ///< mg/l
    double distance;  ///< to the nearest well, in the stretched space
};

/// The library gives the wells in reach with their weights, or the nearest one with all the weight; the sum
/// is ours. It stretches the z of the wells and takes that of the question as it comes, so we stretch it.
Estimate estimate(VXInterpolate& wells, double x, double y, double z, cgPointList& found) {
    wells.project_point(x, y, z * kStretch, found);
    Estimate result = {0.0, HUGE_VAL};
    for (int i = 0; i < found.count(); ++i) {
        const double* well = found[i].data();       // distance, value, weight
        if (well[0] == 0.0) return {well[1], 0.0};  // just here: its weight would be infinite
        result.value += well[2] * well[1];
        result.distance = std::fmin(result.distance, well[0]);
    }
    return result;
}

/// A call for each place, i along x fastest, then j along y, then k along z from below.
template <class Visit>
void for_each(int ni, int nj, int nk, const Visit& visit) {
    for (int k = 0; k < nk; ++k) {
        for (int j = 0; j < nj; ++j) {
            for (int i = 0; i < ni; ++i) visit(i, j, k);
        }
    }
}

/// A hexahedron lists the corners of its top, then those of its bottom in the same order.
void write_corners(plx::FieldFile& file, int i, int j, int k) {
    constexpr int kAround[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (const int up : {1, 0}) {
        for (const auto& corner : kAround) {
            file.integer(i + corner[0] + kNodes[0] * (j + corner[1] + kNodes[1] * (k + up)));
        }
    }
    file.end_line();
}

bool write_field(const char* name, VXInterpolate& wells) {
    const int ni = kNodes[0] - 1, nj = kNodes[1] - 1, nk = kNodes[2] - 1;
    plx::FieldHeader header;
    header.comment = "Nitrate between wells";
    header.nodes = kNodes[0] * kNodes[1] * kNodes[2];
    header.node_data = {{"Nitrate", "Linear_", plx::kInFile}};
    header.cell_sets = {{"Aquifer", ni * nj * nk, "Hex"}};
    header.cell_data = {{"Nitrate", "Linear_", plx::kInFile}, {"Nearest_Well", "Linear_m", plx::kInFile}};

    plx::FieldFile file;
    if (!file.open(name, false)) return false;
    cgPointList found;  // kept between the questions, so that its memory is, too
    file.begin_nodes(header);
    for_each(kNodes[0], kNodes[1], kNodes[2], [&](int i, int j, int k) {
        file.value(place(0, i));
        file.value(place(1, j));
        file.value(place(2, k));
        file.end_line();
    });
    file.node_data_definitions();
    file.begin_node_data();
    for_each(kNodes[0], kNodes[1], kNodes[2], [&](int i, int j, int k) {
        file.value(estimate(wells, place(0, i), place(1, j), place(2, k), found).value);
        file.end_line();
    });
    file.begin_cells();
    for_each(ni, nj, nk, [&](int i, int j, int k) { write_corners(file, i, j, k); });
    file.begin_cell_data();
    for_each(ni, nj, nk, [&](int i, int j, int k) {
        const Estimate middle =
            estimate(wells, place(0, i + 0.5), place(1, j + 0.5), place(2, k + 0.5), found);
        file.value(middle.value);
        file.value(middle.distance);
        file.end_line();
    });
    return file.close();  // false as well when the disk was full
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: interpolate_wells WELLS.csv FIELD.pff\n", stderr);
        return 2;
    }
    constexpr int kInverseDistance = 1, kTreeDepth = 3;
    VXInterpolate wells(kInverseDistance, kTreeDepth, kReach, kStretch);
    wells.set_pow(2);
    const int count = add_wells(argv[1], wells);
    if (count < 1) return 1;
    if (!write_field(argv[2], wells)) {
        std::fprintf(stderr, "%s: cannot be written\n", argv[2]);
        return 1;
    }
    std::printf("%d wells on %d nodes\n", count, kNodes[0] * kNodes[1] * kNodes[2]);
    return 0;
}
