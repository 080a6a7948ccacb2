#include "plxutils/gms/TINbuilder.h"

#include <algorithm>
#include <array>
#include <string>

#include "gms/callbacks.h"
#include "gms/hdf5_objects.h"
#include "gms/surface_files.h"

namespace {

using namespace plx;

constexpr const char* kSubfolder = "TINS";
constexpr double kTinKey = 0.01;

/// Hosts go by node numbers without looking: a triangle of a damaged file that names a node which is not
/// there must not reach a field file. The others and the heights are kept.
void leave_out_loose_triangles(GmsTin& tin) {
    const auto nodes = tin.nodes.x.size();
    const auto loose = std::erase_if(tin.triangles, [nodes](const std::array<int, 3>& corners) {
        return std::any_of(corners.begin(), corners.end(),
                           [nodes](int node) { return node < 0 || static_cast<std::size_t>(node) >= nodes; });
    });
    if (loose == 0) return;
    GMS_ReportError(
        "TINS : Write_File - TIN [%s]: %s of its triangles left out, they name nodes that it lacks\n",
        tin.name.c_str(), std::to_string(loose).c_str());
}

void convert_group(GMStoPLX& owner) {
    constexpr const char* kSurfaceComplaint = "TIN : Write_File - Unable to open output file [%s]\n";
    GmsTin tin;
    std::string problem;
    if (!read_hdf5_tin(owner.currentGroup, tin, problem)) {
        report_group_problem("TIN", owner.currentGroup, problem);
        return;
    }
    leave_out_loose_triangles(tin);
    const auto columns = columns_of_group(owner, tin.nodes.x.size(), "TIN");
    const std::string folder = output_folder(owner, kSubfolder);
    const std::string title = "TIN_" + tin.name + "_";
    for (const DataColumn& column : columns) {
        write_surface(owner, folder, title + column.name + ".gmf", tin.nodes, column.values,
                      kSurfaceComplaint);
    }
    write_surface(owner, folder, title + "elevation.gmf", tin.nodes, tin.nodes.z, kSurfaceComplaint);
    write_tin_field(owner,
                    {folder, title + (owner.compress ? "elevation.pfz" : "elevation.pff"), owner.compress,
                     "TIN : Write_File - Cannot open %s for writing.\n",
                     [&owner](std::string& elevation, std::string& datasets) {
                         // Deliberate, whatever the project's units are: applications built on these files
                         // expect the elevation of an HDF5 TIN in feet.
                         elevation = "Linear_ft";
                         datasets = owner.ReadIniValue("Units", "Length Units").c_str();
                     }},
                    tin, columns);
}

std::vector<const GMSDataSet*> datasets_of(GMStoPLX& owner, const GmsTin& tin) {
    const double key = tin.id + kTinKey;
    const int count = owner.CountDataSets(key);
    if (count == 0) {
        GMS_ReportStatus("No Data for this TIN [%s], using triangle coordinates only.\n", tin.name.c_str());
    }
    std::vector<const GMSDataSet*> datasets;
    datasets.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) datasets.push_back(owner.FindDataSet(i, key));
    return datasets;
}

void convert_tin(GMStoPLX& owner, GmsTin& tin, const std::vector<const GMSDataSet*>& datasets) {
    constexpr const char* kComplaint = "TINS : Write_File - Unable to open output file [%s]\n";
    GMS_ReportStatus("Writing TIN Output files : \n");
    leave_out_loose_triangles(tin);
    std::vector<DataColumn> columns;
    columns.reserve(datasets.size());
    for (const GMSDataSet* dataset : datasets) {
        columns.push_back(column_of(owner, *dataset, tin.nodes.x.size()));
    }
    const std::string folder = output_folder(owner, kSubfolder);
    const std::string title = "tin_" + tin.name + "_elevation";
    write_surface(owner, folder, title + ".gmf", tin.nodes, tin.nodes.z, kComplaint);
    write_tin_field(owner,
                    // Deliberate: hosts look for the plain file of a text project whether or not they asked
                    // for compressed ones.
                    {folder, title + ".pff", false, kComplaint,
                     [&owner](std::string& elevation, std::string& units) {
                         char buffer[20] = "";
                         owner.ReadUnitsValue("Length Units", "", buffer);
                         elevation = units = std::string("Linear_") + buffer;
                     }},
                    tin, columns);
    for (const DataColumn& column : columns) {
        write_surface(owner, folder, tin.name + "_" + column.name + ".gmf", tin.nodes, column.values,
                      kComplaint);
    }
}

void convert_file(GMStoPLX& owner, const char* path) {
    WordLines lines;
    if (!lines.open(path)) {
        GMS_ReportError("Error opening project file [%s]!\n", path);
        return;
    }
    GmsTin tin;
    std::vector<const GMSDataSet*> datasets;
    const auto at_vertices = [&](const GmsTin& known) { datasets = datasets_of(owner, known); };
    for (;;) {
        datasets.clear();
        switch (read_tin(lines, tin, at_vertices)) {
            case GmsRead::kEnd:
                return;
            case GmsRead::kCut:
                GMS_ReportError("TINS : Write_File - File [%s] ends inside a TIN, which is not converted\n",
                                path);
                return;
            case GmsRead::kObject:
                convert_tin(owner, tin, datasets);
                break;
            case GmsRead::kBadPoints:
                GMS_ReportError("TINS : Write_File - Error reading xyz coordinates from file.");
                break;
            case GmsRead::kBadTriangles:
                GMS_ReportError("TINS : Write_File - Error reading xyz triangle coordinates from file.");
                break;
        }
    }
}

}  // namespace

void TINbuilder::build() {
    announce_build("Converting TIN data into GMF and PLX Field files.\n");
    if (owner->hdf5Project) {
        if (owner->currentGroup == -1) {
            GMS_ReportStatus("Invalid TIN in Group.\n");
        } else {
            convert_group(*owner);
        }
    } else if (sourceFiles.empty()) {
        GMS_ReportStatus("Project contains no TIN data, conversion complete.\n");
    } else {
        convert_file(*owner, sourceFiles.front().c_str());
    }
}
