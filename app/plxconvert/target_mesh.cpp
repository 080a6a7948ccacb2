#include "plxconvert/target_mesh.h"

#include <cstddef>
#include <string>
#include <utility>

#include "plxconvert/console.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxutils/converters/ModelMesh.h"

namespace plx::tool {

namespace {

/// Nodes count along x first, then from the largest y to the smallest, then from the top down: as rows and
/// layers of a model do.
class GridMesh : public TargetMesh {
public:
    GridMesh(const std::array<int, 3>& cells, const Box& box) : n_(cells), box_(box) {}

    int nodes() const override { return (n_[0] + 1) * (n_[1] + 1) * (n_[2] + 1); }
    int cells() const override { return n_[0] * n_[1] * n_[2]; }
    std::array<double, 3> node(int i) const override {
        const int line = i / (n_[0] + 1);
        return {along(0, i % (n_[0] + 1)), along(1, n_[1] - line % (n_[1] + 1)),
                along(2, n_[2] - line / (n_[1] + 1))};
    }
    std::array<int, 8> cell(int i) const override {
        const int row = i / n_[0], width = n_[0] + 1, plane = width * (n_[1] + 1);
        const int first = i % n_[0] + width * (row % n_[1]) + plane * (row / n_[1]);
        const int below = first + plane;
        return {first, first + width, first + width + 1, first + 1,
                below, below + width, below + width + 1, below + 1};
    }
    std::vector<CellSet> cell_sets() const override { return {{"Grid", cells(), "Hex"}}; }

private:
    /// The last node stands on the box's face exactly.
    double along(std::size_t axis, int i) const {
        const double low = box_[axis], high = box_[axis + 3];
        return i == n_[axis] ? high : low + (high - low) * i / n_[axis];
    }

    std::array<int, 3> n_;
    Box box_;
};

class LayeredMesh : public TargetMesh {
public:
    explicit LayeredMesh(ModelMesh mesh) : mesh_(std::move(mesh)) {}

    int nodes() const override { return static_cast<int>(mesh_.x.size()); }
    int cells() const override { return static_cast<int>(mesh_.cells.size()); }
    std::array<double, 3> node(int i) const override {
        const auto n = static_cast<std::size_t>(i);
        return {mesh_.x[n], mesh_.y[n], mesh_.z[n]};
    }
    std::array<int, 8> cell(int i) const override { return mesh_.cells[static_cast<std::size_t>(i)]; }
    std::vector<CellSet> cell_sets() const override {
        std::vector<CellSet> sets;
        for (const int cells : mesh_.cells_in_layer) {
            sets.push_back({"Layer_" + std::to_string(sets.size()), cells, "Hex"});
        }
        return sets;
    }

private:
    ModelMesh mesh_;
};

}  // namespace

std::unique_ptr<TargetMesh> make_grid_mesh(const std::array<int, 3>& cells, const Box& box) {
    return std::make_unique<GridMesh>(cells, box);
}

std::unique_ptr<TargetMesh> read_model_mesh(const std::filesystem::path& project) {
    const auto factory = make_converter(find_kind(project, "auto"));
    factory->reading_rules = ReadingRules::modflow();
    factory->keep_log = false;
    factory->project_file.SetFile(project.string().c_str());
    const ErrorCollector collector;
    OutputDiversion diversion(true, "");
    factory->parsePROJECT();
    ModelMesh mesh = make_model_mesh(*factory);
    diversion.end();
    std::string faults;
    for (const std::string& error : collector.merged_with(factory->report)) {
        faults += (faults.empty() ? "" : "\nplxconvert: ") + error;
    }
    if (!faults.empty()) throw InputFault(faults);
    if (mesh.cells.empty()) throw InputFault("'" + project.string() + "' gives no grid with active cells");
    if (static_cast<long long>(mesh.x.size()) > kMostNodes) {
        throw InputFault("'" + project.string() + "' has " + std::to_string(mesh.x.size()) +
                         " nodes; at most " + std::to_string(kMostNodes) + " can be written");
    }
    return std::make_unique<LayeredMesh>(std::move(mesh));
}

}  // namespace plx::tool
