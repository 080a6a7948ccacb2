#include "plxutils/c/GeoRef.h"
#include "support/fuzz_files.h"

using namespace plx;

namespace {

/// Fits the mappings in every way and gives the list back.
void fit(double** maps, int count) {
    GeoRef* const fit = GeoRef_new(count);
    for (int i = 0; i < count; ++i) {
        double sx = 0.0, sy = 0.0, dx = 0.0, dy = 0.0;
        GeoRef_get_gcp_mapping(&maps, i, &sx, &sy, &dx, &dy);
        GeoRef_set_gcp_values(fit, i, sx, sy, dx, dy);
    }
    for (int type = 1; type <= 7; ++type) {
        double x = 0.0, y = 0.0;
        GeoRef_process_type(fit, type);
        GeoRef_project_point(fit, 10.0, 20.0, &x, &y);
        GeoRef_reverse_project_point(fit, x, y, &x, &y);
        GeoRef_rms_total_error(fit);
    }
    GeoRef_delete(fit);
    GeoRef_free_gcp_mappings(&maps, count);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // Bit 0: a world file, otherwise control points.
    const bool world = input.flag(0);
    const std::string path = fuzz::write_file(world ? "map.tfw" : "map.gcp", input.bytes());
    const std::string base = path.substr(0, path.size() - 3);
    std::string name(base.size() + 6, ' ');
    double** maps = nullptr;
    const int count = world ? parseWorldFile(base.c_str(), name.data(), "tif", &maps, 100, 50)
                            : parseGCPFile(base.c_str(), name.data(), &maps);
    if (count > 100) __builtin_trap();
    fit(maps, count);
    return 0;
}
