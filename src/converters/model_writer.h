#pragma once

#include <vector>

#include "converters/field_file_writer.h"
#include "converters/model_state.h"
#include "converters/node_mesh.h"
#include "converters/output_file.h"
#include "converters/output_paths.h"
#include "plxutils/math/VX4X4Matrix.h"

namespace plx {

/// Writes everything of a parsed model. Built once per conversion; each step only forms weighted sums.
class ModelWriter {
public:
    explicit ModelWriter(ModelState& model);
    void write();

private:
    void build_mesh();
    void name_files();
    void write_transport();
    bool write_steps(OutputFile& time_control, OutputFile& flow_data);
    bool write_step(OutputFile& time_control, OutputFile& flow_data, const String& field_name,
                    const std::string& date);
    FieldHeader field_header() const;
    void write_field(BlockWriter& out);
    void write_node_heads(BlockWriter& out) const;
    void write_cells(BlockWriter& out);
    bool write_companions();

    ModelState& model_;
    ConverterFactory& factory_;
    GridSize size_;
    OutputPaths paths_;
    VX4X4Matrix transform_;
    NodeMesh mesh_;
    VXFile coordinates_, geo_layers_, elevations_, connectivity_, porosity_;
    FieldHeader header_;
};

/// Rotation about z, then the grid's origin.
VX4X4Matrix grid_transform(const ConverterFactory& factory);

/// Fits the default porosity to one value per layer, with a message where it does not fit.
void fit_default_porosity(ConverterFactory& factory);

}  // namespace plx
