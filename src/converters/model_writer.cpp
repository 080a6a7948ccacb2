#include "converters/model_writer.h"

#include <cmath>
#include <cstdio>

#include "converters/boundary_flows.h"
#include "converters/companion_files.h"
#include "converters/time_axis.h"
#include "converters/transport.h"
#include "plxutils/core/VXNumeric.h"

namespace plx {

VX4X4Matrix grid_transform(const ConverterFactory& factory) {
    VX4X4Matrix transform;
    transform.ZRot(PI() * factory.rotation / 180.0);
    transform.Translate(factory.x_origin, factory.y_origin, 0.0);
    return transform;
}

void fit_default_porosity(ConverterFactory& factory) {
    VX1DArray<double>& porosity = factory.default_porosity;
    const int given = porosity.GetSize();
    const int nlay = factory.nlay;
    double last = given > 0 ? porosity[given - 1] : 0.0;
    if (given == 0) {
        std::printf("Porosity has not been set, using 0.0 for all [%d] layers\n", nlay);
    } else if (given == 1) {
        std::printf("Porosity set to %f for all [%d] layers\n", last, nlay);
    } else if (given < nlay) {
        std::printf(
            "Default Porosity does not equal the number of layers repeating last value for remaining "
            "layers\n");
    } else if (given > nlay) {
        std::printf("Default Porosity contains more values than layers, using only first %d values.\n", nlay);
    }
    porosity.Resize(nlay, last);
}

ModelWriter::ModelWriter(ModelState& model)
    : model_(model),
      factory_(model.factory),
      size_(model.size()),
      paths_(model.factory),
      transform_(grid_transform(model.factory)),
      mesh_(size_, model.geometry, model.flags, model.factory.reading_rules.average_active_only) {}

void ModelWriter::write() {
    build_mesh();
    std::printf("Setting up output files\t\t\t\t\t\t\t\t\t\t\t\t\r");
    paths_.make_folder("GENERAL");
    if (factory_.out_mt3d) write_transport();
    paths_.make_folder("MODFLOW");
    name_files();
    OutputFile time_control(factory_), flow_data(factory_);
    const String folder = paths_.folder("MODFLOW");
    if (!time_control.open(folder, "MOD_" + paths_.title + ".tcf", false)) return;
    if (!flow_data.open(folder, factory_.compress ? "flow_data.dwz" : "flow_data.dwr", factory_.compress))
        return;
    write_flow_header(flow_data.out(), factory_);
    // Steps that are complete count also when a later one fails; without any, an older list stays.
    const bool all_steps = write_steps(time_control, flow_data);
    if (!all_steps && factory_.report.steps == 0) return;
    // One that filled the disk is removed first: the list needs room, too.
    const bool flows = flow_data.out().ok() || flow_data.close();
    const bool whole = time_control.close();
    if (!flows || !flow_data.close() || !whole || !all_steps) return;
    if (!write_companions()) return;
    std::printf("Project written to PLX file formats.\n");
}

void ModelWriter::build_mesh() {
    std::printf("Setting node values\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    std::printf("interp2D\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    std::printf("project 2d\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    std::printf("interp 3d\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    std::printf("project 3d\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    const bool node_heads = factory_.out_head_nodes && !model_.times.empty();
    if (node_heads) mesh_.build_weights();
    factory_.report.nodes = mesh_.nodes();
    factory_.report.cells = model_.flags.total_active();
    if (mesh_.left_out_inactive()) factory_.report.rules_used.average_active_only = true;
}

void ModelWriter::write_transport() {
    if (has_concentrations(model_)) {
        if (model_.flags.empty()) return;
        if (!mesh_.has_weights()) mesh_.build_weights();
    }
    write_transport_results(model_, mesh_, paths_);
}

void ModelWriter::name_files() {
    coordinates_ = paths_.below("GENERAL", kCoordinates);
    geo_layers_ = paths_.below("GENERAL", kGeoLayers);
    elevations_ = paths_.below("GENERAL", kElevations);
    connectivity_ = paths_.below("GENERAL", kConnectivity);
    porosity_ = paths_.below("MODFLOW", "MOD_" + paths_.title + ".por");
    header_ = field_header();
}

FieldHeader ModelWriter::field_header() const {
    const std::string length = "Linear_" + std::string(factory_.length_units.c_str());
    FieldHeader h;
    h.comment = "GMStoPLX generated field file";
    h.nodes = mesh_.nodes();
    h.node_file = general_reference(coordinates_);
    h.connectivity_file = general_reference(connectivity_);
    if (factory_.out_head_nodes) h.node_data.push_back({"Head", length, kInFile});
    if (factory_.out_geo_layer) {
        h.node_data.push_back({"Geo_Layer", "Linear_", companion_column(general_reference(geo_layers_))});
    }
    if (factory_.out_elevation) {
        h.node_data.push_back({"Elevation", length, companion_column(general_reference(elevations_))});
    }
    h.cell_sets = layer_cell_sets(model_.flags, size_.layers);
    if (factory_.out_head_cells) h.cell_data.push_back({"Head", length, kInFile});
    if (factory_.out_ccf) h.cell_data.push_back({"CCF", "Linear_", kVectorInFile});
    if (factory_.out_elev_top) h.cell_data.push_back({"ELEV_TOP", length, kInFile});
    if (factory_.out_elev_bottom) h.cell_data.push_back({"ELEV_BOTTOM", length, kInFile});
    if (factory_.out_material) h.cell_data.push_back({"MATERIAL", "Linear_", kInFileBare});
    if (factory_.out_porosity) {
        h.cell_data.push_back({"POROSITY", "Linear_", companion_column(porosity_.GetFileName().c_str())});
    }
    return h;
}

bool ModelWriter::write_steps(OutputFile& time_control, OutputFile& flow_data) {
    ReadingRules& used = factory_.report.rules_used;
    const double factor =
        day_factor(factory_.time_units.c_str(), factory_.reading_rules.full_time_words, used.full_time_words);
    UniqueTimeTexts texts;
    const char* extension = factory_.compress ? ".pfz" : ".pff";
    const int total = static_cast<int>(model_.times.size());
    int done = 0;
    for (const auto& [step, time] : model_.times) {
        if (time == -1.0) continue;
        model_.current = {step.first, step.second, time};
        const String name = "MOD_" + paths_.title + "_" + texts.next(time).c_str() + extension;
        const std::string date = step_date(factory_.start_date, time * factor);
        if (!write_step(time_control, flow_data, name, date)) return false;
        ++factory_.report.steps;
        if (factory_.on_step) factory_.on_step(++done, total);
    }
    return true;
}

bool ModelWriter::write_step(OutputFile& time_control, OutputFile& flow_data, const String& field_name,
                             const std::string& date) {
    const VXFile path = paths_.below("MODFLOW", field_name);
    std::printf("   %s\n", path.GetFilePath().c_str());
    OutputFile field(factory_);
    if (!field.open(paths_.folder("MODFLOW"), field_name, factory_.compress)) return false;
    write_field(field.out());
    if (!field.close()) return false;
    time_control.out().text(date).text(", ").text(path.GetFileName().c_str()).text(", -1\n");
    if (factory_.out_boundary_flows) write_boundary_flows(flow_data.out(), model_, transform_, date);
    return flow_data.out().ok();
}

void ModelWriter::write_field(BlockWriter& out) {
    FieldFileWriter writer(out);
    writer.header(header_);
    writer.begin_node_data(header_);
    // Heads are loaded with the node heads alone; the other rule loads them for cell heads too.
    const bool for_cells = factory_.out_head_cells && factory_.reading_rules.load_heads_for_cells;
    if (factory_.out_head_nodes || for_cells) {
        if (!factory_.out_head_nodes) factory_.report.rules_used.load_heads_for_cells = true;
        factory_.parseHED_data();
    }
    if (factory_.out_head_nodes) write_node_heads(out);
    writer.begin_cell_data(header_);
    if (factory_.mt3d_ccf_mode == 1) {
        factory_.parseMT3D_CCF_data();
    } else if (factory_.out_ccf) {
        factory_.parseCCF_data();
    }
    write_cells(out);
}

void ModelWriter::write_node_heads(BlockWriter& out) const {
    const std::vector<float>& heads = model_.heads.values;
    const bool plain = !factory_.reading_rules.model_no_flow_heads;
    int node = 0;
    for (int k = 0; k < size_.layers; ++k) {
        const float* layer = heads.data() + static_cast<std::size_t>(k) * size_.per_layer();
        for (int plane = 0; plane < 2; ++plane) {
            mesh_.each_node(k, [&](int r, int c) {
                const NodeMesh::Weights& w = mesh_.weights(node++);
                double sum = 0.0, taken = 0.0, bottom = 0.0;
                bool missing = false;
                for (int m = 0; m < 4; ++m) {
                    const double weight = w[static_cast<std::size_t>(m)];
                    if (weight == 0.0) continue;
                    const auto cell = static_cast<std::size_t>(mesh_.cell_around(r, c, m));
                    const float head = layer[cell];
                    if (std::isnan(head)) {
                        missing = true;
                        bottom += weight * (*model_.geometry.bottoms[static_cast<std::size_t>(k)])[cell];
                        continue;
                    }
                    if (plain && head == -999.0F) continue;
                    sum += weight * static_cast<double>(head);
                    taken += weight;
                }
                if (missing) sum = taken > 0.0 ? sum / taken : bottom;
                out.fixed(sum).put('\n');
            });
        }
    }
}

void ModelWriter::write_cells(BlockWriter& out) {
    if (model_.flags.empty() || header_.cell_data.empty()) return;
    const bool materials = factory_.layer_materials.GetSize() > 0;
    if (factory_.out_material && !materials && size_.layers > 1 && factory_.reading_rules.material_is_layer) {
        factory_.report.rules_used.material_is_layer = true;
    }
    if (factory_.out_head_cells) model_.heads.values.resize(size_.cells(), 0.0F);
    for (RealColumn& face : model_.flows.faces) {
        if (factory_.out_ccf && face.size() != size_.cells()) face.assign(size_.cells(), 0.0);
    }
    std::size_t cell = 0;
    for (int k = 0; k < size_.layers; ++k) {
        const auto& tops = *model_.geometry.tops[static_cast<std::size_t>(k)];
        const auto& bottoms = *model_.geometry.bottoms[static_cast<std::size_t>(k)];
        int material = factory_.reading_rules.material_is_layer && !materials ? k : 0;
        if (materials) material = factory_.layer_materials[factory_.layer_materials.GetSize() > 1 ? k : 0];
        for (std::size_t i = 0; i < size_.per_layer(); ++i, ++cell) {
            if (!model_.flags.active(cell)) continue;
            if (factory_.out_head_cells) {
                const float head = model_.heads.values[cell];
                out.fixed(std::isnan(head) || head == -888.0F ? bottoms[i] : static_cast<double>(head))
                    .put(' ');
            }
            if (factory_.out_ccf) {
                for (const RealColumn& face : model_.flows.faces) out.fixed(face[cell]).put(' ');
            }
            if (factory_.out_elev_top) out.fixed(tops[i]).put(' ');
            if (factory_.out_elev_bottom) out.fixed(bottoms[i]).put(' ');
            if (factory_.out_material) out.integer(material);
            out.put('\n');
        }
    }
}

bool ModelWriter::write_companions() {
    const auto write = [this](const char* folder, const String& name, const auto& content) {
        std::printf("   %s\n", paths_.below(folder, name).GetFilePath().c_str());
        OutputFile output(factory_);
        if (!output.open(paths_.folder(folder), name, factory_.compress)) return false;
        content(output.out());
        return output.close();
    };
    return write("GENERAL", kCoordinates,
                 [this](BlockWriter& out) { write_node_coordinates(out, mesh_, model_, transform_); }) &&
           write("GENERAL", kGeoLayers, [this](BlockWriter& out) { write_geo_layers(out, mesh_, model_); }) &&
           write("GENERAL", kElevations,
                 [this](BlockWriter& out) { write_elevations(out, mesh_, model_); }) &&
           write("GENERAL", kConnectivity,
                 [this](BlockWriter& out) { write_connectivity(out, mesh_, model_); }) &&
           (!factory_.out_porosity || write("MODFLOW", "MOD_" + paths_.title + ".por",
                                            [this](BlockWriter& out) { write_porosity(out, model_); }));
}

}  // namespace plx
