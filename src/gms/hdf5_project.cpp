#include <cstddef>
#include <string>

#include "formats/hdf5_reader.h"
#include "gms/builder_run.h"
#include "gms/callbacks.h"
#include "gms/hdf5_objects.h"
#include "plxutils/gms/GMStoPLX.h"

namespace {

using plx::Hdf5Handle;
using plx::Hdf5Id;

/// Makes an HDF5 identifier known to the builders while it is open.
class ShownGroup {
public:
    ShownGroup(long long& place, Hdf5Id id) : place_(place) { place_ = id; }
    ~ShownGroup() { place_ = -1; }
    ShownGroup(const ShownGroup&) = delete;
    ShownGroup& operator=(const ShownGroup&) = delete;

private:
    long long& place_;
};

void run_builder_on(GMStoPLX& owner, FileBuilder& builder, Hdf5Id group) {
    const ShownGroup shown(owner.currentGroup, group);
    plx::run_builder(builder);
}

/// The settings of a project; its materials are read on the way.
Hdf5Handle find_settings(GMStoPLX& owner, Hdf5Id root) {
    for (const std::string& name : plx::hdf5_members(root)) {
        if (!plx::is_hdf5_group(root, name)) continue;
        // Groups behind the settings are not looked at on purpose, so that a project that has both keeps
        // its materials to itself: hosts show such boreholes by number.
        if (name == "Ini") return plx::open_hdf5_group(root, name);
        if (name != "Material") continue;
        const Hdf5Handle materials = plx::open_hdf5_group(root, name);
        if (materials) plx::read_hdf5_materials(materials.id(), owner.materialIds, owner.materialNames);
    }
    return Hdf5Handle();
}

/// A root group whose objects one builder converts: each member group, or the group as a whole.
struct Module {
    const char* group;
    bool wanted;
    FileBuilder& builder;
    bool by_member;
};

void convert_module(GMStoPLX& owner, const Module& module, Hdf5Id root) {
    const Hdf5Handle group = plx::open_hdf5_group(root, module.group);
    if (!module.by_member) {
        run_builder_on(owner, module.builder, group.id());
        return;
    }
    if (!group) return;
    for (const std::string& name : plx::hdf5_members(group.id())) {
        if (!plx::is_hdf5_group(group.id(), name)) continue;
        const Hdf5Handle object = plx::open_hdf5_group(group.id(), name);
        run_builder_on(owner, module.builder, object.id());
    }
}

void convert_solutions(GMStoPLX& owner, Hdf5Id root) {
    plx::Hdf5Array<std::string> types;
    if (!plx::read_hdf5(root, "Solutions/Solution Type", types)) {
        GMS_ReportError(
            "GMStoPLX : parse_header - Dataset \"Solutions/Solution Type\" of %s cannot be read\n",
            owner.projectSource.GetFilePath().c_str());
        return;
    }
    const Hdf5Handle files = plx::open_hdf5_group(root, "Model Files");
    if (!files) return;
    const struct {
        const char* type;
        bool wanted;
        FileBuilder& builder;
    } kinds[] = {{"MODFSOL", owner.convertMODFLOW, owner.modflow},
                 {"MT3DSOL", owner.convertMT3D, owner.mt3d},
                 {"FEMWSOL", owner.convertFEMWATER, owner.femwater}};
    for (const std::string& type : types.values) {
        for (const auto& kind : kinds) {
            if (kind.wanted && type == kind.type) run_builder_on(owner, kind.builder, files.id());
        }
    }
}

/// Runs the builders in the order of the root's groups.
void convert_modules(GMStoPLX& owner, Hdf5Id root) {
    const Module modules[] = {{"2DScatterModule", owner.convertSCAT2D, owner.scat2d, true},
                              {"3DScatterModule", owner.convertSCAT3D, owner.scat3d, true},
                              {"TINModule", owner.convertTIN, owner.tin, true},
                              {"Images", owner.convertIMAGE, owner.image, true},
                              {"2DGridModule", owner.convertGRID2D, owner.grid2d, false},
                              {"BoreholeModule", owner.convertBOREHOLE, owner.borehole, false}};
    for (const std::string& name : plx::hdf5_members(root)) {
        if (!plx::is_hdf5_group(root, name)) continue;
        if (name == "Solutions") convert_solutions(owner, root);
        for (const Module& module : modules) {
            if (module.wanted && name == module.group) convert_module(owner, module, root);
        }
    }
}

/// Place of a key in the names that flatten an ini file (a section's name, then those of its keys), or -1.
int find_key(const plx::Hdf5Array<std::string>& names, const std::string& section, const std::string& key) {
    bool inside = false;
    for (std::size_t i = 0; i < names.values.size(); ++i) {
        inside = inside || names.values[i] == section;
        // From the section on to the end on purpose, its own name included: a key may be found in a later
        // section, as hosts are used to.
        if (inside && names.values[i] == key) return static_cast<int>(i);
    }
    return -1;
}

}  // namespace

void GMStoPLX::ParseHdf5Project() {
    const Hdf5Handle file = plx::open_hdf5_file(projectSource.GetFilePath().c_str());
    GMS_ReportStatus("New file type");
    hdf5Project = true;
    if (!file) return;
    const Hdf5Handle settings = find_settings(*this, file.id());
    const ShownGroup shown(iniGroup, settings.id());
    convert_modules(*this, file.id());
}

String GMStoPLX::ReadIniValue(const char* section, const char* key) {
    const std::string wanted_section = section ? section : "", wanted_key = key ? key : "";
    plx::Hdf5Array<std::string> names, values;
    if (iniGroup >= 0) plx::read_hdf5(iniGroup, "Names", names);
    const int at = find_key(names, wanted_section, wanted_key);
    if (at < 0) {
        GMS_ReportStatus("Section %s, Key %s, not found.", wanted_section.c_str(), wanted_key.c_str());
        return String();
    }
    plx::read_hdf5(iniGroup, "Values", values);
    if (static_cast<std::size_t>(at) < values.values.size()) {
        return String(values.values[static_cast<std::size_t>(at)].c_str());
    }
    GMS_ReportStatus("Unmatch ini file found for Section %s, Key %s", wanted_section.c_str(),
                     wanted_key.c_str());
    return String();
}
