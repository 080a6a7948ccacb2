#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "georef/mapping_file.h"
#include "plxutils/c/GeoRef.h"
#include "plxutils/core/VXUtilities.h"

namespace {

/// Hosts reserve room for as many.
constexpr std::size_t kMaxMappings = 100;

std::vector<plx::Mapping> read_mappings(plx::MappingLines& lines) {
    std::vector<plx::Mapping> mappings;
    while (mappings.size() < kMaxMappings && lines.next())
        mappings.push_back({lines.number(0), lines.number(1), lines.number(2), lines.number(3)});
    return mappings;
}

int parse(const std::string& path, char* out_name, double**& maps) {
    if (!FileExists(path.c_str())) return 0;
    plx::MappingLines lines(path);
    if (!lines.is_open()) return 0;
    const std::vector<plx::Mapping> mappings = read_mappings(lines);
    if (mappings.empty()) {
        std::printf("parseGCPFile: GCP file needs at least one mapping.\n");
        return 0;
    }
    maps = plx::new_mapping_list(mappings);
    if (out_name) std::strcpy(out_name, path.c_str());
    return static_cast<int>(mappings.size());
}

}  // namespace

int parseGCPFile(const char* base, char* outName, double*** maps) {
    if (maps) *maps = nullptr;
    if (!base || !maps) return 0;
    try {
        return parse(std::string(base) + "gcp", outName, *maps);
    } catch (...) {
        return 0;
    }
}
