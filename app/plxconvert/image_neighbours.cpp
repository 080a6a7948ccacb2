#include "plxconvert/image_neighbours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "plxconvert/console.h"
#include "plxconvert/control_points.h"
#include "plxconvert/georef_report.h"
#include "plxconvert/messages.h"
#include "plxconvert/words.h"
#include "plxutils/c/GeoRef.h"
#include "plxutils/core/VXNativePath.h"

namespace plx::tool {

namespace {

struct Deleter {
    void operator()(GeoRef* object) const { GeoRef_delete(object); }
};
using Handle = std::unique_ptr<GeoRef, Deleter>;

/// A fit by the library of points whose rows are multiplied by `row_sign`.
Handle make_handle(const std::vector<ControlPoint>& points, double row_sign, int type) {
    Handle handle(GeoRef_new(static_cast<int>(points.size())));
    if (!handle) throw InputFault("not enough memory");
    const OutputDiversion silence(true, "");
    int i = 0;
    for (const ControlPoint& p : points) {
        GeoRef_set_gcp_values(handle.get(), i++, p.x, row_sign * p.y, p.X, p.Y);
    }
    GeoRef_process_type(handle.get(), type);
    return handle;
}

/// Lets a function of the library write beside the image and gives the path that it made of the name.
template <class Write>
std::filesystem::path write_beside(const std::filesystem::path& image, Write write) {
    constexpr std::size_t kRoomForExtension = 8;
    std::string name = image.string();
    name.resize(name.size() + kRoomForExtension, '\0');
    OutputDiversion silence(true, "");
    const int written = write(name.data());
    silence.end();
    name.resize(name.find('\0'));
    if (written == 0) throw InputFault("no file can be written beside '" + image.string() + "'");
    return VXNativePath(name.c_str()).c_str();
}

WorldPoint by_world_file(const std::array<double, 6>& w, double column, double row) {
    return {w[0] * column + w[2] * row + w[4], w[1] * column + w[3] * row + w[5]};
}

/// Three places that give the map's world file: those of its own rule for polynomials, and for flat maps some
/// that lose no digits.
std::vector<ControlPoint> corners_of(ImageMap& map) {
    constexpr double kFar = 1024.0;
    const ImageMap::Extent e = map.type() > 4 ? map.extent() : ImageMap::Extent{0.0, 0.0, kFar, kFar};
    std::vector<ControlPoint> corners = {
        {e.left, e.top, 0, 0}, {e.right, e.top, 0, 0}, {e.left, e.bottom, 0, 0}};
    for (ControlPoint& corner : corners) {
        const WorldPoint world = map.to_world(corner.x, corner.y);
        corner.X = world.X;
        corner.Y = world.Y;
    }
    return corners;
}

void print_world_values(std::array<double, 6> w) {
    // The sum with 0 makes minus zero plain.
    for (double& value : w) value += 0.0;
    std::printf("  X = %.15g column %+.15g row %+.15g\n  Y = %.15g column %+.15g row %+.15g\n", w[0], w[2],
                w[4], w[1], w[3], w[5]);
}

void show_gcp_file(const std::filesystem::path& file) {
    bool more = false;
    const std::vector<ControlPoint> points = read_control_points(file, PointOrder::gcp_file, more);
    std::printf("\n%s: %s, used\n", file.filename().string().c_str(),
                counted(static_cast<long long>(points.size()), "control point").c_str());
    if (more) std::printf("  (the first %zu of more)\n", points.size());
    std::printf("  %5s %12s %12s %18s %18s\n", "point", "column", "row", "X", "Y");
    int number = 0;
    for (const ControlPoint& p : points) {
        std::printf("  %5d %12.10g %12.10g %18.15g %18.15g\n", ++number, p.x, p.y, p.X, p.Y);
    }
}

void show_world_file(const std::filesystem::path& file, bool is_used, std::optional<ImageSize> size) {
    const std::array<double, 6> w = read_world_file(file);
    std::printf("\n%s: world file, %s\n", file.filename().string().c_str(),
                is_used ? "used" : "not used, as there is a GCP file");
    print_world_values(w);
    std::printf("  pixels of %.10g by %.10g\n", std::hypot(w[0], w[1]), std::hypot(w[2], w[3]));
    if (!size) return;
    for (const double row : {0.0, size->height - 1.0}) {
        for (const double column : {0.0, size->width - 1.0}) {
            const WorldPoint world = by_world_file(w, column, row);
            std::printf("  pixel %10.0f %10.0f is at %18.15g %18.15g\n", column, row, world.X, world.Y);
        }
    }
}

}  // namespace

void write_world_file(const std::filesystem::path& image, ImageMap& map) {
    // The prescribed arithmetic of types 1 and 2 wants negated rows.
    const bool negated = map.prescribed() && (map.type() <= 2 || map.points().size() < 3);
    const Handle handle = map.prescribed()
                              ? make_handle(map.points(), negated ? -1.0 : 1.0,
                                            negated ? std::max(map.fit().type, map.type()) : map.type())
                              : make_handle(corners_of(map), 1.0, 4);
    const std::filesystem::path file =
        write_beside(image, [&](char* name) { return GeoRef_write_world(handle.get(), name); });
    const std::array<double, 6> w = read_world_file(file);
    std::printf("%s, by type %d (%s)\n", file.string().c_str(), map.type(), type_title(map.type()));
    print_world_values(w);
    double farthest = 0.0;
    for (const ControlPoint& p : map.points()) {
        const WorldPoint a = by_world_file(w, p.x, p.y), b = map.to_world(p.x, p.y);
        farthest = std::max(farthest, std::hypot(a.X - b.X, a.Y - b.Y));
    }
    const double pixels = farthest / map.pixel();
    if (pixels <= kNotablePixels) return;
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(),
                  "the world file differs from the fit by up to %.4g pixels: it has %s", pixels,
                  map.type() > 4 ? "no curvature and six decimals" : "six decimals");
    print_warning(text.data());
}

void write_gcp_file(const std::filesystem::path& image, const std::vector<ControlPoint>& points) {
    const Handle handle = make_handle(points, -1.0, 1);
    const std::filesystem::path file =
        write_beside(image, [&](char* name) { return GeoRef_write_gcp(handle.get(), name); });
    std::printf("%s, %s\n", file.string().c_str(),
                counted(static_cast<long long>(points.size()), "control point").c_str());
}

Neighbours neighbours_of(const std::filesystem::path& image) {
    constexpr std::size_t kRoomForExtension = 8;
    const std::string text = image.string(), extension = lower(image.extension().string());
    if (extension.size() < 2) return {};
    const std::string base = lower(text.substr(0, text.size() - extension.size() + 1));
    const auto find = [&](auto parse) -> std::filesystem::path {
        std::string name(base.size() + kRoomForExtension, '\0');
        double** maps = nullptr;
        const OutputDiversion silence(true, "");
        const int count = parse(name.data(), &maps);
        GeoRef_free_gcp_mappings(&maps, count);
        return count > 0 ? VXNativePath(name.c_str()).c_str() : "";
    };
    return {find([&](char* name, double*** maps) { return parseGCPFile(base.c_str(), name, maps); }),
            find([&](char* name, double*** maps) {
                return parseWorldFile(base.c_str(), name, extension.c_str() + 1, maps, 1, 1);
            })};
}

std::vector<ControlPoint> corners_by_world_file(const std::filesystem::path& world, ImageSize size) {
    const std::array<double, 6> w = read_world_file(world);
    std::vector<ControlPoint> points;
    const double right = size.width - 1.0, bottom = size.height - 1.0;
    for (const auto& [column, row] :
         {WorldPoint{0.0, 0.0}, WorldPoint{right, bottom}, WorldPoint{0.0, bottom}}) {
        const WorldPoint place = by_world_file(w, column, row);
        points.push_back({column, row, place.X, place.Y});
    }
    return points;
}

void show_neighbours(const std::filesystem::path& image) {
    const std::optional<ImageSize> size = image_size(image);
    std::printf("%s: ", image.string().c_str());
    if (size) {
        std::printf("%d columns, %d rows\n", size->width, size->height);
    } else {
        std::printf("size unknown (no PNG, JPEG, TIFF or BMP)\n");
    }
    const Neighbours found = neighbours_of(image);
    if (found.gcp.empty() && found.world.empty())
        std::printf("\nneither a GCP file nor a world file is beside it\n");
    if (!found.gcp.empty()) show_gcp_file(found.gcp);
    if (!found.world.empty()) show_world_file(found.world, found.gcp.empty(), size);
}

}  // namespace plx::tool
