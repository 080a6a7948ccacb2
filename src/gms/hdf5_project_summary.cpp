#include <algorithm>

#include "formats/hdf5_reader.h"
#include "gms/callbacks.h"
#include "gms/dataset_summary.h"
#include "gms/hdf5_objects.h"
#include "gms/project_summary.h"

namespace plx {

namespace {

void describe_column(Hdf5Id group, const std::string& name, GmsObjectSummary& object) {
    Hdf5Array<double> values;
    const std::string path = "Datasets/" + name;
    if (!read_hdf5(group, path + "/Values", values)) return;
    GmsDatasetSummary dataset;
    dataset.name = dataset.file = name;
    dataset.object_type = object.type == "TIN" ? "tin" : "scat2d";
    // Values are a row for each time, the later axes being points and components; or the points alone.
    const std::size_t rank = values.shape.size();
    if (rank > 0) dataset.values = static_cast<std::int64_t>(values.shape[rank > 1 ? 1 : 0]);
    if (rank > 2) dataset.components = static_cast<int>(std::min<std::size_t>(values.shape[2], 1000));
    const auto stride = static_cast<std::size_t>(std::max(dataset.components, 1));
    ValueRange range;
    for (std::size_t i = 0; i < values.values.size(); i += stride) range.add(values.values[i]);
    range.store(dataset);
    Hdf5Array<double> times;
    if (read_hdf5(group, path + "/Times", times)) dataset.times = std::move(times.values);
    object.datasets.push_back(std::move(dataset));
}

void describe_columns(Hdf5Id group, GmsObjectSummary& object) {
    const Hdf5Handle datasets = open_hdf5_group(group, "Datasets");
    if (!datasets) return;
    for (const std::string& name : hdf5_members(datasets.id())) {
        if (name != "Guid" && is_hdf5_group(datasets.id(), name)) describe_column(group, name, object);
    }
}

bool read_tin_object(Hdf5Id group, GmsObjectSummary& object, std::string& problem) {
    GmsTin tin;
    if (!read_hdf5_tin(group, tin, problem)) return false;
    object.name = tin.name;
    object.points = static_cast<std::int64_t>(tin.nodes.x.size());
    object.triangles = static_cast<std::int64_t>(tin.triangles.size());
    return true;
}

bool read_scatter_object(Hdf5Id group, GmsObjectSummary& object, std::string& problem) {
    GmsScatter set;
    if (!read_hdf5_scatter(group, set, problem)) return false;
    object.name = set.name;
    object.points = static_cast<std::int64_t>(set.points.x.size());
    return true;
}

/// A module whose members are objects.
struct Module {
    const char* group;
    const char* type;
    bool (*read)(Hdf5Id, GmsObjectSummary&, std::string&);  ///< null when the type is not converted
};

constexpr Module kModules[] = {{"2DScatterModule", "2-D scatter set", &read_scatter_object},
                               {"3DScatterModule", "3-D scatter set", nullptr},
                               {"Images", "image", nullptr},
                               {"TINModule", "TIN", &read_tin_object}};

void describe_module(Hdf5Id file, const Module& module, GmsProjectSummary& summary) {
    const Hdf5Handle group = open_hdf5_group(file, module.group);
    if (!group) return;
    for (const std::string& member : hdf5_members(group.id())) {
        if (!is_hdf5_group(group.id(), member)) continue;
        const Hdf5Handle open = open_hdf5_group(group.id(), member);
        GmsObjectSummary object;
        object.type = module.type;
        object.name = member;
        object.file = std::string("/") + module.group + "/" + member;
        object.converted = module.read != nullptr;
        std::string problem;
        if (module.read != nullptr && !module.read(open.id(), object, problem)) {
            GMS_ReportError("%s %s: %s\n", module.type, member.c_str(), problem.c_str());
            continue;
        }
        if (object.converted) describe_columns(open.id(), object);
        summary.objects.push_back(std::move(object));
    }
}

void describe_bore_module(Hdf5Id file, GmsProjectSummary& summary) {
    const Hdf5Handle group = open_hdf5_group(file, "BoreholeModule");
    if (!group) return;
    Hdf5Bores bores;
    std::string problem;
    if (!read_hdf5_bores(group.id(), bores, problem)) {
        GMS_ReportError("Boreholes: %s\n", problem.c_str());
        return;
    }
    for (std::size_t i = 0; i < bores.contacts_of_bore.size(); ++i) {
        GmsObjectSummary object;
        object.type = "borehole";
        object.name = i < bores.names.size() ? bores.names[i] : "";
        object.file = "/BoreholeModule";
        object.points = bores.contacts_of_bore[i];
        summary.objects.push_back(std::move(object));
    }
}

void describe_unconverted(Hdf5Id file, GmsProjectSummary& summary) {
    const auto add = [&summary](const std::string& type, const char* group) {
        GmsObjectSummary object;
        object.type = type;
        object.name = object.file = group;
        object.converted = false;
        summary.objects.push_back(std::move(object));
    };
    if (is_hdf5_group(file, "2DGridModule")) add("2-D grid", "/2DGridModule");
    Hdf5Array<std::string> types;
    if (!is_hdf5_group(file, "Solutions") || !read_hdf5(file, "Solutions/Solution Type", types)) return;
    for (const std::string& type : types.values) {
        if (type == "MODFSOL") add("MODFLOW solution", "/Solutions");
        if (type == "MT3DSOL") add("MT3D solution", "/Solutions");
        if (type == "FEMWSOL") add("FEMWATER solution", "/Solutions");
    }
}

void describe_material_group(Hdf5Id file, GmsProjectSummary& summary) {
    const Hdf5Handle group = open_hdf5_group(file, "Material");
    if (!group) return;
    VX1DArray<int> ids;
    VX1DArray<String> names;
    read_hdf5_materials(group.id(), ids, names);
    for (int i = 0; i < std::min(ids.size, names.size); ++i) {
        summary.materials.push_back({ids[i], names[i].c_str()});
    }
    summary.materials_used = !is_hdf5_group(file, "Ini");
}

}  // namespace

void describe_hdf5_project(const std::string& stored, GmsProjectSummary& summary) {
    const Hdf5Handle file = open_hdf5_file(stored.c_str());
    if (!file) {
        summary.problem = "the HDF5 file is damaged, or another program holds it open";
        return;
    }
    for (const Module& module : kModules) {
        if (is_hdf5_group(file.id(), module.group)) describe_module(file.id(), module, summary);
    }
    if (is_hdf5_group(file.id(), "BoreholeModule")) describe_bore_module(file.id(), summary);
    describe_unconverted(file.id(), summary);
    summary.has_model =
        static_cast<bool>(open_hdf5_group(file.id(), "3DGridModule/3DGrid 0/MODFLOW Model 0"));
    if (is_hdf5_group(file.id(), "Material")) describe_material_group(file.id(), summary);
}

}  // namespace plx
