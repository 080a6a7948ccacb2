#include "formats/hdf5_reader.h"
#include "gms/builder_output.h"
#include "gms/callbacks.h"
#include "gms/names.h"
#include "plxutils/gms/GMStoPLX.h"

namespace {

/// Names without folders.
std::string names_of(const std::vector<String>& paths) {
    std::string names;
    for (const String& path : paths) {
        if (!names.empty()) names += ", ";
        names += plx::last_component(path.c_str());
    }
    return names;
}

/// Tells what is left out, so that nobody looks for its files in vain.
void tell_unconverted(const FileBuilder& builder, const char* what) {
    const GMStoPLX& owner = *builder.owner;
    const bool some = owner.hdf5Project ? owner.currentGroup != -1 : !builder.sourceFiles.empty();
    if (!some) return;
    const std::string where =
        owner.hdf5Project ? plx::hdf5_path(owner.currentGroup) : names_of(builder.sourceFiles);
    plx::report_separator();
    GMS_ReportStatus("%s are not converted yet: %s\n", what, where.c_str());
}

}  // namespace

void MODFLOWbuilder::build() { tell_unconverted(*this, "MODFLOW models"); }
void MT3Dbuilder::build() { tell_unconverted(*this, "MT3D models"); }
void FEMWbuilder::build() { tell_unconverted(*this, "FEMWATER models"); }
void IMAGEbuilder::build() { tell_unconverted(*this, "Images"); }
void SCAT3Dbuilder::build() { tell_unconverted(*this, "3-D scatter points"); }
void GRID2Dbuilder::build() { tell_unconverted(*this, "2-D grids"); }
