// Field files of the transport results, one per transport time.

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "converters/companion_files.h"
#include "converters/field_file_writer.h"
#include "converters/model_state.h"
#include "converters/node_mesh.h"
#include "converters/output_file.h"
#include "converters/output_paths.h"
#include "converters/time_axis.h"
#include "converters/transport.h"
#include "gms/callbacks.h"
#include "platform/platform.h"
#include "plxutils/converters/Results.h"

namespace plx {
namespace {

enum NodePart { kX = 0, kY = 1, kZ = 2, kState = 3 };

bool is_no_data(double concentration) {
    return !(std::fabs(concentration) < 1e29) || concentration == -999.0;
}

/// Writes the transport times of a model one by one.
class TransportWriter {
public:
    TransportWriter(ModelState& model, const String& root, const VXFile& coordinates, bool compress,
                    int nodes)
        : model_(model),
          factory_(model.factory),
          folder_(root + "\\MT3D"),
          title_(OutputPaths(model.factory).title),
          compress_(compress) {
        header_.comment = "GMStoPLX generated MT3D concentration field file";
        header_.nodes = nodes;
        header_.node_file = general_reference(coordinates);
        header_.connectivity_file = general_reference(VXFile(root + "\\GENERAL", kConnectivity));
        header_.cell_sets = layer_cell_sets(model.flags, factory_.nlay);
        int index = 0;
        for (const SpeciesFile& species : model.transport.species) {
            header_.node_data.push_back({species_name(species, index), "Linear_", kInFile});
            header_.cell_data.push_back({species_name(species, index++), "Linear_", kInFile});
        }
    }

    void write(Results& weights, const VXArray<double>& nodes) {
        platform::make_directory(folder_.c_str());
        OutputFile time_control(factory_);
        if (!time_control.open(folder_, "MT3D_" + title_ + ".tcf", false,
                               "MT3D : Write_File - Cannot open %s for writing.\n"))
            return;
        const double factor = day_factor(factory_.time_units.c_str(), factory_.reading_rules.full_time_words,
                                         factory_.report.rules_used.full_time_words);
        std::printf("Writing MT3D Output files :\n");
        const int total = count_transport_times(model_);
        VXArray<double> values;
        float time = 0.0F;
        for (int done = 1; factory_.parseConcentration(values, time) != 0; ++done) {
            const double t = static_cast<double>(time);
            if (!write_time(time_control, t, t * factor, weights, nodes, values)) {
                // An older list stays when there is nothing to put in its place.
                if (done == 1) return;
                break;
            }
            ++factory_.report.transport_times;
            if (factory_.on_step) factory_.on_step(done, std::max(total, done));
        }
        time_control.close();
    }

private:
    std::string species_name(const SpeciesFile& species, int index) const {
        const VX1DArray<String>& names = factory_.species_names;
        if (species.number <= names.GetSize() && names[species.number - 1].length() > 0) {
            return names[species.number - 1].c_str();
        }
        return "species_" + std::to_string(index);
    }

    String field_name(double time) {
        char number[kFixedMax];
        std::string name = "MT3D_" + std::string(title_.c_str()) + "_";
        name.append(number, format_fixed6(number, time));
        std::replace(name.begin(), name.end(), '.', '_');
        name = names_.unique(name) + (compress_ ? ".pfz" : ".pff");
        return name.c_str();
    }

    bool write_time(OutputFile& time_control, double time, double days, Results& weights,
                    const VXArray<double>& nodes, const VXArray<double>& values) {
        const String name = field_name(time);
        const VXFile path(folder_, name);
        std::printf("   %s\n", path.GetFilePath().c_str());
        OutputFile field(factory_);
        if (!field.open(folder_, name, compress_, "MT3D : Write File - Cannot open %s for writing.\n")) {
            return false;
        }
        FieldFileWriter writer(field.out());
        writer.header(header_);
        writer.begin_node_data(header_);
        write_nodes(field.out(), weights, nodes, values);
        writer.begin_cell_data(header_);
        write_cells(field.out(), values);
        if (!field.close()) return false;
        time_control.out().text(step_date(factory_.start_date, days)).text(", ");
        time_control.out().text(path.GetFileName().c_str()).text(", -1\n");
        return true;
    }

    void write_nodes(BlockWriter& out, Results& weights, const VXArray<double>& nodes,
                     const VXArray<double>& values) {
        const ArrayPosition& d = nodes.dims;
        int node = 0;
        for (int surface = 0; surface < d.kres(); ++surface) {
            for (int r = 0; r < d.ires(); ++r) {
                for (int c = 0; c < d.jres(); ++c) {
                    if (nodes.data[d.index(r, c, surface, kState)] != 1.0) continue;
                    for (int s = 0; s < values.dims.jres(); ++s) {
                        out.fixed(node_value(weights, node, values, s)).put(' ');
                    }
                    out.put('\n');
                    ++node;
                }
            }
        }
    }

    /// The weighted mean of the cells around a node. A node among cells without data alone gets their marker.
    double node_value(Results& weights, int node, const VXArray<double>& values, int species) {
        const bool leave_out = factory_.reading_rules.model_no_flow_heads;
        double all = 0.0, sum = 0.0, taken = 0.0;
        bool left_out = false;
        const int pairs = weights.result_size(node);
        for (int i = 0; i < pairs; ++i) {
            int cell = 0;
            double weight = 0.0;
            weights.result(node, i, cell, weight);
            const double value = values(cell, species, 0, 0);
            all += weight * value;
            if (leave_out && is_no_data(value)) {
                left_out = true;
                continue;
            }
            sum += weight * value;
            taken += weight;
        }
        if (!left_out) return all;
        factory_.report.rules_used.model_no_flow_heads = true;
        return taken > 0.0 ? sum / taken : all;
    }

    void write_cells(BlockWriter& out, const VXArray<double>& values) const {
        const std::size_t cells = model_.size().cells();
        const auto species = static_cast<std::size_t>(values.dims.jres());
        for (std::size_t cell = 0; cell < cells; ++cell) {
            if (!model_.flags.active(cell)) continue;
            for (std::size_t s = 0; s < species; ++s) out.fixed(values.data[s * cells + cell]).put(' ');
            out.put('\n');
        }
    }

    ModelState& model_;
    ConverterFactory& factory_;
    String folder_, title_;
    bool compress_;
    FieldHeader header_;
    UniqueTimeTexts names_;
};

/// Fills coordinates and state of the nodes of one layer's plane, and the weights of each.
void add_plane(const ModelState& model, const NodeMesh& mesh, int layer, int plane, VXArray<double>& nodes,
               Results& weights) {
    const int surface = 2 * layer + plane;
    const auto first = static_cast<int>(static_cast<std::size_t>(layer) * model.size().per_layer());
    std::vector<double> z;
    mesh.elevations(layer, plane, z);
    std::size_t in_plane = 0;
    mesh.each_node(layer, [&](int r, int c) {
        nodes(r, c, surface, kZ) = z[in_plane++];
        nodes(r, c, surface, kState) = 1.0;
        const int node = mesh.number(layer, plane, r, c);
        const NodeMesh::Weights& w = mesh.weights(node);
        weights.set_size(
            node, static_cast<int>(std::count_if(w.begin(), w.end(), [](double v) { return v != 0.0; })));
        int index = 0;
        for (int m = 0; m < 4; ++m) {
            const double weight = w[static_cast<std::size_t>(m)];
            if (weight != 0.0) weights.set_results(node, index++, first + mesh.cell_around(r, c, m), weight);
        }
    });
}

}  // namespace

void write_transport_results(ModelState& model, const NodeMesh& mesh, const OutputPaths& paths) {
    Results weights;
    VXArray<double> nodes;
    if (has_concentrations(model)) {
        const GridSize size = model.size();
        if (!nodes.SetDimensions(size.rows + 1, size.columns + 1, 2 * size.layers, 4)) {
            model.fail("no memory for the nodes of the transport results");
            return;
        }
        for (int surface = 0; surface < 2 * size.layers; ++surface) {
            for (int r = 0; r <= size.rows; ++r) {
                for (int c = 0; c <= size.columns; ++c) {
                    nodes(r, c, surface, kX) = model.geometry.column_edges[static_cast<std::size_t>(c)];
                    nodes(r, c, surface, kY) = model.geometry.row_edges[static_cast<std::size_t>(r)];
                    nodes(r, c, surface, kState) = -1.0;
                }
            }
        }
        weights.set_nnodes(mesh.nodes());
        for (int k = 0; k < size.layers; ++k) {
            for (int plane = 0; plane < 2; ++plane) add_plane(model, mesh, k, plane, nodes, weights);
        }
    }
    VXFile folder(paths.root, "MT3D"), coordinates = paths.below("GENERAL", kCoordinates);
    model.factory.write_MT3D(folder, coordinates, model.factory.compress, mesh.nodes(), weights, nodes);
}

}  // namespace plx

void ConverterFactory::write_MT3D(VXFile& folder, VXFile& field_file, bool compressed, int count,
                                  Results& results, VXArray<double>& values) {
    if (!plx::has_concentrations(model())) {
        std::printf("MT3D : Write_File - Concentration data not found.\n");
        return;
    }
    plx::TransportWriter(model(), folder.GetDirectoryName(), field_file, compressed, count)
        .write(results, values);
}
