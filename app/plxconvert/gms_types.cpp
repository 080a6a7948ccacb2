#include "plxconvert/gms_types.h"

#include <stdexcept>

#include "plxconvert/words.h"

namespace plx::tool {

const std::array<GmsType, kGmsTypes>& gms_types() {
    static constexpr std::array<GmsType, kGmsTypes> kTypes = {
        {{"modflow", "MODFLOW models and solutions (not converted yet)"},
         {"mt3d", "MT3D models (not converted yet)"},
         {"femwater", "FEMWATER models (not converted yet)"},
         {"image", "images (not converted yet)"},
         {"scat3d", "3-D scatter points (not converted yet)"},
         {"scat2d", "2-D scatter points: a surface for each dataset"},
         {"grid2d", "2-D grids (not converted yet)"},
         {"tin", "TINs: surfaces, and a field file with the triangles"},
         {"borehole", "boreholes: a pre-geology file"}}};
    return kTypes;
}

std::array<bool, kGmsTypes> parse_gms_types(const std::string& list) {
    std::array<bool, kGmsTypes> wanted{};
    if (list.empty() || lower(list) == "all") {
        wanted.fill(true);
        return wanted;
    }
    for (const std::string& part : split(lower(list), ',')) {
        if (part == "all") throw std::invalid_argument("--types: 'all' stands alone");
        std::string names;
        bool known = false;
        for (std::size_t i = 0; i < kGmsTypes; ++i) {
            if (!names.empty()) names += ", ";
            names += gms_types()[i].name;
            if (part != gms_types()[i].name) continue;
            wanted[i] = known = true;
        }
        if (!known) {
            throw std::invalid_argument("--types: '" + part + "' is not known; the names are " + names +
                                        " and all");
        }
    }
    return wanted;
}

}  // namespace plx::tool
