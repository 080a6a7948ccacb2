#include "plxutils/georef/WorldFile.h"

#include <array>
#include <cstring>
#include <string>

#include "georef/mapping_file.h"
#include "plxutils/c/GeoRef.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXUtilities.h"

namespace {

constexpr const char* kExtensions[] = {"tfw", "tiw", "tifw", "tiffw", "jpw", "jpgw", "jpegw",
                                       "jgw", "bpw", "bmw",  "bmpw",  "pgw", "pngw", "pnw"};

/// The first existing file that is the stem, dot included, and an extension with this first letter; empty for
/// none.
std::string find_world_file(const std::string& stem, char first_letter) {
    for (const char* extension : kExtensions) {
        if (*extension != first_letter) continue;
        std::string name = stem + extension;
        if (FileExists(name.c_str())) return name;
    }
    return {};
}

/// The corners that a world file stands for, as control points.
std::vector<plx::Mapping> corner_mappings(plx::MappingLines& lines, int width, int height) {
    std::array<double, 6> numbers{};
    for (std::size_t k = 0; k < numbers.size() && lines.next(); ++k) numbers[k] = lines.number(0);
    const auto [a, d, b, e, c, f] = numbers;
    const double last_column = static_cast<double>(width) - 1, last_row = static_cast<double>(height) - 1;
    return {
        {0, 0, c, f},
        {last_column, 0 - last_row, a * last_column + b * last_row + c, d * last_column + e * last_row + f},
        {0, 0 - last_row, b * last_row + c, e * last_row + f}};
}

int parse(const std::string& path, char* out_name, double**& maps, int width, int height) {
    if (path.empty()) return 0;
    plx::MappingLines lines(path);
    if (!lines.is_open()) return 0;
    const std::vector<plx::Mapping> mappings = corner_mappings(lines, width, height);
    maps = plx::new_mapping_list(mappings);
    if (out_name) std::strcpy(out_name, path.c_str());
    return static_cast<int>(mappings.size());
}

}  // namespace

String getWorldFile(const char* imageName) {
    try {
        const VXFile image(imageName);
        // Deliberately without a directory: hosts count on a search of the folder they stand in.
        return find_world_file(std::string(image.GetFileTitle().c_str()) + ".", image.GetFileExtension()[0])
            .c_str();
    } catch (...) {
        return {};
    }
}

int parseWorldFile(const char* base, char* outName, const char* ext, double*** maps, int width, int height) {
    if (maps) *maps = nullptr;
    if (!base || !ext || !maps) return 0;
    try {
        return parse(find_world_file(base, *ext), outName, *maps, width, height);
    } catch (...) {
        return 0;
    }
}
