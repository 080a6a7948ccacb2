#pragma once

#include <filesystem>
#include <optional>

namespace plx::tool {

struct ImageSize {
    int width, height;
};

/// Size in pixels out of the header of a PNG, JPEG, TIFF (also with 64-bit offsets) or BMP file; nothing when
/// it has none of these, or one that is cut or tells no size.
std::optional<ImageSize> image_size(const std::filesystem::path& file);

}  // namespace plx::tool
