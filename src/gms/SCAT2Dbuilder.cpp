#include "plxutils/gms/SCAT2Dbuilder.h"

#include "gms/callbacks.h"
#include "gms/hdf5_objects.h"
#include "gms/surface_files.h"

namespace {

using namespace plx;

constexpr const char* kSubfolder = "SCATTER2D";
constexpr double kScatterKey = 0.05;

void write_column(GMStoPLX& owner, const std::string& folder, const GmsScatter& set,
                  const DataColumn& column) {
    write_surface(owner, folder, "2DS_" + set.name + "_" + column.name + ".gmf", set.points, column.values,
                  "2D Scatter Point : Write_File - Unable to open output file [%s]\n");
}

void convert_group(GMStoPLX& owner) {
    GmsScatter set;
    std::string problem;
    if (!read_hdf5_scatter(owner.currentGroup, set, problem)) {
        report_group_problem("2D Scatter Point", owner.currentGroup, problem);
        return;
    }
    const std::string folder = output_folder(owner, kSubfolder);
    for (const DataColumn& column : columns_of_group(owner, set.points.x.size(), "2D Scatter Point")) {
        write_column(owner, folder, set, column);
    }
}

void convert_set(GMStoPLX& owner, const GmsScatter& set) {
    const double key = set.id + kScatterKey;
    const int count = owner.CountDataSets(key);
    if (count == 0) {
        GMS_ReportError("2D Scatter Point : Write_File - No Data associated with data set ID[%lf].\n", key);
        return;
    }
    const std::string folder = output_folder(owner, kSubfolder);
    for (int i = 0; i < count; ++i) {
        write_column(owner, folder, set, column_of(owner, *owner.FindDataSet(i, key), set.points.x.size()));
    }
}

void convert_file(GMStoPLX& owner, const std::string& path) {
    if (path.empty()) {
        GMS_ReportError("2D Scatter point file (.xy) does not exist\n");
        return;
    }
    WordLines lines;
    if (!lines.open(path.c_str())) {
        GMS_ReportError("2D Scatter Point : Write_File - Error opening project file [%s]!\n", path.c_str());
        return;
    }
    GMS_ReportStatus("Writing 2D Scatterpoint Output files : \n");
    GmsScatter set;
    GmsRead result;
    while ((result = read_scatter(lines, set)) == GmsRead::kObject) convert_set(owner, set);
    if (result == GmsRead::kCut) {
        GMS_ReportError(
            "2D Scatter Point : Write_File - File [%s] ends inside a set, which is not converted\n",
            path.c_str());
    } else if (result != GmsRead::kEnd) {
        GMS_ReportError("2D Scatter Point : Write_File - Error reading grid xy defintions.");
    }
}

}  // namespace

void SCAT2Dbuilder::build() {
    announce_build("Converting 2D Scatter Point data to GMF files.\n\n");
    if (owner->hdf5Project) {
        if (owner->currentGroup == -1) {
            GMS_ReportStatus("Invalid 2D Scatter Point Data in Group.\n");
        } else {
            convert_group(*owner);
        }
    } else if (sourceFiles.empty()) {
        GMS_ReportStatus("Project contains no 2D Scatter Point data, conversion complete.\n");
    } else {
        convert_file(*owner, last_with_extension(sourceFiles, "xy"));
    }
}
