#include "plxutils/interpolate/VXInterpolateGrid.h"

#include <algorithm>
#include <climits>

#include "plxutils/core/ArrayPosition.h"

VXInterpolateGrid::VXInterpolateGrid(int ni_, int nj_, int nk_, bool useLowerLayer_)
    : ni(std::max(ni_, 0)), nj(std::max(nj_, 0)), nk(std::max(nk_, 0)), useLowerLayer(useLowerLayer_) {
    const std::int64_t layer = std::int64_t{ni} * nj;
    if (layer > INT_MAX || layer * nk > INT_MAX) ni = nj = nk = 0;
    nodes.resize(slot(0, 0, nk));
}

std::size_t VXInterpolateGrid::slot(std::int64_t i, std::int64_t j, std::int64_t k) const {
    return static_cast<std::size_t>(i + ni * (j + nj * k));
}

void VXInterpolateGrid::set_point(double value, int i, int j, int k, double x, double y, double z) {
    const int position = ArrayPosition(ni, nj, nk, 1)(i, j, k, 0);
    if (!nodes.empty()) nodes[static_cast<std::size_t>(position)] = {x, y, z, value};
}

const VXInterpolateGrid::Node* VXInterpolateGrid::find(std::int64_t i, std::int64_t j, std::int64_t k) const {
    if (i < 0 || i >= ni || j < 0 || j >= nj || k < 0 || k >= nk) return nullptr;
    const Node& node = nodes[slot(i, j, k)];
    return node.value == -1.0 ? nullptr : &node;
}

cgPoint VXInterpolateGrid::createPoint(double x, double y, double z, const Node& node) {
    cgPoint point(node.x, node.y, node.z, 3);
    point.data()[0] = point.GetDistance(cgPoint(x, y, z, 0));
    point.data()[1] = node.value;
    return point;
}

bool VXInterpolateGrid::project_point(int i, int j, int k, double x, double y, double z, cgPointList& out) {
    out.clear();
    const std::int64_t top = k;
    double sum = 0.0;
    for (std::int64_t layer = top; layer >= (useLowerLayer ? top - 1 : top); --layer) {
        for (int corner = 0; corner < 4; ++corner) {
            const Node* node = find(std::int64_t{i} - corner % 2, std::int64_t{j} - corner / 2, layer);
            if (!node) continue;
            cgPoint point = createPoint(x, y, z, *node);
            sum += point[0] * point[0];
            out[out.count()].swap(point);
        }
    }
    for (int n = 0; n < out.count(); ++n) {
        double* values = out[n].data();
        // The weights grow with the distance on purpose; the porosity and head columns are built on them.
        values[2] = values[0] * values[0] / sum;
    }
    return true;
}
