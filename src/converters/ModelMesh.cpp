#include "plxutils/converters/ModelMesh.h"

#include <exception>
#include <string>

#include "converters/mesh_walk.h"
#include "converters/model_writer.h"

namespace plx {

namespace {

ModelMesh mesh_of(const ConverterFactory& factory, const ModelState& model) {
    ModelMesh out;
    const GridSize size = model.size();
    if (model.flags.empty() || !is_whole(model.geometry, size)) return out;
    const NodeMesh mesh(size, model.geometry, model.flags, factory.reading_rules.average_active_only);
    const auto nodes = static_cast<std::size_t>(mesh.nodes());
    for (std::vector<double>* axis : {&out.x, &out.y, &out.z}) axis->reserve(nodes);
    each_world_node(mesh, model, grid_transform(factory), [&out](double x, double y, double z) {
        out.x.push_back(x);
        out.y.push_back(y);
        out.z.push_back(z);
    });
    out.cells.reserve(static_cast<std::size_t>(model.flags.total_active()));
    each_active_cell(
        model, [&](int k, int r, int c, std::size_t) { out.cells.push_back(cell_corners(mesh, k, r, c)); });
    for (int k = 0; k < size.layers; ++k) out.cells_in_layer.push_back(model.flags.active_in_layer(k));
    return out;
}

}  // namespace

ModelMesh make_model_mesh(ConverterFactory& factory) {
    try {
        return mesh_of(factory, plx_model_state(factory));
    } catch (const std::exception& fault) {
        factory.report.errors.push_back(std::string("the mesh cannot be made: ") + fault.what());
        return {};
    }
}

}  // namespace plx
