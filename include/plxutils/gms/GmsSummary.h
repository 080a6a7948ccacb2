#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plxutils/export.h"

namespace plx {

/// A dataset of an object.
struct GmsDatasetSummary {
    std::string name, object_type;  ///< "tin", "scat2d", ...; empty when unknown
    int object_id = 0;
    int components = 1;
    std::int64_t values = 0;      ///< per time step
    std::vector<double> times;    ///< in the dataset's own unit; empty when it has none
    double min = 0.0, max = 0.0;  ///< of the first component of all steps; not-a-number without values
    std::string file;             ///< name of the file it stands in, without folder
};

/// An object of a project.
struct GmsObjectSummary {
    std::string type;  ///< "TIN", "2-D scatter set", "borehole", "3-D scatter set", ...
    std::string name;
    int id = 0;
    std::string file;                        ///< name of the file or group it stands in
    bool converted = true;                   ///< false for types that are not converted yet
    std::int64_t points = 0, triangles = 0;  ///< nodes, points or contacts; triangles of a TIN
    std::vector<GmsDatasetSummary> datasets;
};

struct GmsMaterialSummary {
    int number = 0;
    std::string name;
};

/// A file that a text project names.
struct GmsFileSummary {
    std::string keyword, name;
    bool exists = false;
};

struct GmsProjectSummary {
    std::string kind;     ///< "text", "hdf5" or "datasets"
    std::string problem;  ///< why nothing could be read; empty when something was
    std::vector<GmsFileSummary> files;
    std::vector<GmsObjectSummary> objects;
    std::vector<GmsDatasetSummary> datasets;  ///< those that belong to no listed object
    std::vector<GmsMaterialSummary> materials;
    bool has_model = false;  ///< an HDF5 project holds a MODFLOW model
    /// False when an HDF5 project has materials that its conversion does not see, because they stand behind
    /// its settings.
    bool materials_used = true;
};

/// Tells by its contents what a file is: a "text" or "hdf5" project, "datasets", or empty for anything else.
/// A text project is one that names a file with a GMS keyword; name files of models, whose second word is a
/// unit number, are none.
/// @param path     stored or native absolute path.
PLX_EXPORT std::string gms_file_kind(const char* path);
/// Describes a GMS project, text or HDF5. Messages of the readers go to the error hook.
/// @param path     stored or native absolute path.
/// @param lenient  read dataset files as newer programs write them.
PLX_EXPORT GmsProjectSummary summarize_gms_project(const char* path, bool lenient);
/// Describes one dataset file.
PLX_EXPORT GmsProjectSummary summarize_gms_datasets(const char* path, bool lenient);

}  // namespace plx
