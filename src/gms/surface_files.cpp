#include "gms/surface_files.h"

#include <algorithm>

#include "converters/field_file_writer.h"
#include "core/output_names.h"
#include "gms/hdf5_objects.h"

namespace plx {
namespace {

FieldHeader tin_header(const GmsTin& tin) {
    FieldHeader header;
    header.comment = "GMStoPLX generated .pff file";
    header.nodes = static_cast<int>(tin.nodes.x.size());
    header.cell_sets = {{"TIN", static_cast<int>(tin.triangles.size()), "Tri"}};
    return header;
}

void write_points(BlockWriter& out, const GmsPoints& points, const std::vector<double>& heights) {
    for (std::size_t i = 0; i < points.x.size(); ++i) {
        out.fixed(points.x[i]).put(' ').fixed(points.y[i]).put(' ').fixed(heights[i]).put('\n');
    }
}

void write_node_data(BlockWriter& out, const GmsTin& tin, const std::vector<DataColumn>& columns) {
    for (std::size_t i = 0; i < tin.nodes.z.size(); ++i) {
        out.fixed(tin.nodes.z[i]).put(' ');
        for (const DataColumn& column : columns) out.fixed(column.values[i]).put(' ');
        out.put('\n');
    }
}

void write_triangles(BlockWriter& out, const GmsTin& tin) {
    for (const auto& t : tin.triangles) {
        out.integer(t[0]).put(' ').integer(t[1]).put(' ').integer(t[2]).put('\n');
    }
}

}  // namespace

bool write_surface(GMStoPLX& owner, const std::string& folder, const std::string& name,
                   const GmsPoints& points, const std::vector<double>& heights, const char* complaint) {
    BuilderOutput file(owner);
    // Surface files are read as they are: no option compresses them.
    if (!file.open(folder, clean_name(name), false, complaint)) return false;
    file.out().text("# GMStoPLX generated .gmf file\nSurface 1\n");
    write_points(file.out(), points, heights);
    return file.close();
}

bool write_tin_field(GMStoPLX& owner, const TinFieldFile& file, const GmsTin& tin,
                     const std::vector<DataColumn>& columns) {
    BuilderOutput output(owner);
    if (!output.open(file.folder, clean_name(file.name), file.compressed, file.complaint)) return false;
    BlockWriter& out = output.out();
    FieldFileWriter writer(out);
    FieldHeader header = tin_header(tin);
    header.node_data.assign(columns.size() + 1, {"Elevation", "", kInFileBare});
    for (std::size_t i = 0; i < columns.size(); ++i) header.node_data[i + 1].name = columns[i].name;
    writer.begin_own_nodes(header);
    write_points(out, tin.nodes, tin.nodes.z);

    std::string elevation, datasets;
    file.units(elevation, datasets);
    header.node_data[0].units = elevation;
    for (std::size_t i = 1; i < header.node_data.size(); ++i) header.node_data[i].units = datasets;
    writer.node_data_definitions(header);
    writer.begin_node_data(header);
    write_node_data(out, tin, columns);
    writer.begin_own_cells(header);
    write_triangles(out, tin);
    return output.close();
}

std::vector<DataColumn> columns_of_group(const GMStoPLX& owner, std::size_t count, const char* kind) {
    std::vector<std::string> problems;
    auto columns = read_hdf5_columns(owner.currentGroup, count,
                                     owner.useChosenTime ? &owner.chosenTime : nullptr, &problems);
    for (const std::string& problem : problems) report_group_problem(kind, owner.currentGroup, problem);
    return columns;
}

DataColumn column_of(const GMStoPLX& owner, const GMSDataSet& dataset, std::size_t count) {
    DataColumn column{dataset.name, std::vector<double>(count, kMissingValue)};
    const TimeStep* step = owner.StepOf(dataset);
    if (step == nullptr || step->components < 1) return column;
    const std::size_t known = std::min(count, static_cast<std::size_t>(std::max(step->numValues, 0)));
    for (std::size_t i = 0; i < known; ++i) column.values[i] = step->values[i][0];
    return column;
}

}  // namespace plx
