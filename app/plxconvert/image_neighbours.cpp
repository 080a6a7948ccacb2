#include "plxconvert/image_neighbours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>

#include "plxconvert/console.h"
#include "plxconvert/control_points.h"
#include "plxconvert/georef_report.h"
#include "plxconvert/messages.h"
#include "plxconvert/paths.h"
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

constexpr std::size_t kRoomForExtension = 8;

constexpr const char* kWorldExtensions[] = {"tfw", "tiw", "tifw", "tiffw", "jpw", "jpgw", "jpegw",
                                            "jgw", "bpw", "bmw",  "bmpw",  "pgw", "pngw", "pnw"};

/// The extension in lower case, without its dot.
std::string extension_of(const std::filesystem::path& file) {
    const std::string extension = lower(file.extension().string());
    return extension.empty() ? extension : extension.substr(1);
}

/// The path of a neighbour, whose name the library makes in lower case; empty when the image has no
/// extension.
std::filesystem::path neighbour(const std::filesystem::path& image, const std::string& extension) {
    const std::string text = lower(image.string()), own = extension_of(image);
    if (own.empty()) return {};
    return path_of(VXNativePath((text.substr(0, text.size() - own.size()) + extension).c_str()).c_str());
}

/// Lets a function of the library write beside the image and gives the path that it made of the name.
template <class Write>
std::filesystem::path write_beside(const std::filesystem::path& image, const std::string& extension,
                                   Write write) {
    const std::filesystem::path target = neighbour(image, extension);
    // The library would put whatever has the name out of the way.
    if (std::filesystem::exists(target) && !std::filesystem::is_regular_file(target))
        throw InputFault("'" + target.string() + "' is there and not a regular file");
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

/// Tells when hosts use something else than a world file that was just written.
void warn_if_not_used(const std::filesystem::path& image, const std::filesystem::path& file,
                      const std::filesystem::path& points) {
    const Neighbours found = neighbours_of(image);
    const std::string name = file.filename().string();
    std::error_code fault;
    if (found.world.empty()) {
        print_warning(name +
                      " is not found by hosts: world files are looked for beside images whose extension "
                      "begins with t, j, b or p");
    } else if (!std::filesystem::equivalent(found.world, file, fault)) {
        print_warning(name + " is not used by hosts: " + found.world.filename().string() + " comes first");
    }
    if (!found.gcp.empty() && !std::filesystem::equivalent(found.gcp, points, fault)) {
        print_warning(name + " is not used by hosts: " + found.gcp.filename().string() + " comes first");
    }
}

/// Reads a file and tells about it, or what is wrong in it.
template <class Show>
bool show_file(const std::filesystem::path& file, Show show) {
    std::printf("\n%s: ", file.filename().string().c_str());
    try {
        show(file);
    } catch (const InputFault& fault) {
        std::printf("broken\n  %s\n", fault.what());
        return false;
    }
    return true;
}

void show_gcp_file(const std::filesystem::path& file) {
    bool more = false;
    const std::vector<ControlPoint> points = read_control_points(file, PointOrder::gcp_file, more);
    std::printf("%s, used\n", counted(static_cast<long long>(points.size()), "control point").c_str());
    warn_if_rows_negative(file, points);
    if (more) std::printf("  (the first %zu of more)\n", points.size());
    std::printf("  %5s %12s %12s %18s %18s\n", "point", "column", "row", "X", "Y");
    int number = 0;
    for (const ControlPoint& p : points) {
        std::printf("  %5d %12.10g %12.10g %18.15g %18.15g\n", ++number, p.x, p.y, p.X, p.Y);
    }
}

/// Tells of world files that another one comes before.
void show_further_world_files(const std::filesystem::path& image, const std::filesystem::path& used) {
    for (const char* extension : kWorldExtensions) {
        const std::filesystem::path file = neighbour(image, extension);
        if (*extension != extension_of(image)[0] || file == used || !std::filesystem::exists(file)) continue;
        std::printf("\n%s: world file, not used, as %s comes first\n", file.filename().string().c_str(),
                    used.filename().string().c_str());
    }
}

void show_world_file(const std::filesystem::path& file, bool is_used, std::optional<ImageSize> size) {
    const std::array<double, 6> w = read_world_file(file);
    std::printf("world file, %s\n", is_used ? "used" : "not used, as there is a GCP file");
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

bool is_placing_file(const std::filesystem::path& file) {
    const std::string extension = extension_of(file);
    return extension == "gcp" || std::find(std::begin(kWorldExtensions), std::end(kWorldExtensions),
                                           extension) != std::end(kWorldExtensions);
}

void write_world_file(const std::filesystem::path& image, const std::filesystem::path& points,
                      ImageMap& map) {
    if (!map.is_number()) throw InputFault("the fit is not a number; a world file cannot hold it");
    const std::string own = extension_of(image);
    const std::string extension = own.empty() ? own : std::string{own.front(), own.back(), 'w'};
    // The prescribed arithmetic of types 1 and 2 wants negated rows.
    const bool negated = map.prescribed() && (map.type() <= 2 || map.points().size() < 3);
    const Handle handle = map.prescribed()
                              ? make_handle(map.points(), negated ? -1.0 : 1.0,
                                            negated ? std::max(map.fit().type, map.type()) : map.type())
                              : make_handle(corners_of(map), 1.0, 4);
    const std::filesystem::path file =
        write_beside(image, extension, [&](char* name) { return GeoRef_write_world(handle.get(), name); });
    const std::array<double, 6> w = read_world_file(file);
    std::printf("%s, by type %d (%s)\n", file.string().c_str(), map.type(), type_title(map.type()));
    print_world_values(w);
    warn_if_not_used(image, file, points);
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
    // Refuses coordinates that are too large, and knows the width of a pixel.
    const ImageMap map(points, 4, false);
    const Handle handle = make_handle(points, -1.0, 1);
    const std::filesystem::path file =
        write_beside(image, "gcp", [&](char* name) { return GeoRef_write_gcp(handle.get(), name); });
    std::printf("%s, %s\n", file.string().c_str(),
                counted(static_cast<long long>(points.size()), "control point").c_str());
    bool more = false;
    const std::vector<ControlPoint> written = read_control_points(file, PointOrder::gcp_file, more);
    double farthest = 0.0;
    for (std::size_t i = 0; i < std::min(points.size(), written.size()); ++i) {
        const ControlPoint &a = points[i], &b = written[i];
        farthest = std::max(
            {farthest, std::hypot(a.X - b.X, a.Y - b.Y) / map.pixel(), std::hypot(a.x - b.x, a.y - b.y)});
    }
    if (farthest <= kNotablePixels) return;
    std::array<char, 120> text{};
    std::snprintf(text.data(), text.size(), "six decimals move control points by up to %.4g pixels",
                  farthest);
    print_warning(text.data());
}

Neighbours neighbours_of(const std::filesystem::path& image) {
    const std::string text = image.string(), extension = extension_of(image);
    if (extension.empty()) return {};
    const std::string base = lower(text.substr(0, text.size() - extension.size()));
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
                return parseWorldFile(base.c_str(), name, extension.c_str(), maps, 1, 1);
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
    const std::filesystem::path gcp = neighbour(image, "gcp");
    bool sound = true;
    if (!found.gcp.empty()) {
        sound = show_file(found.gcp, show_gcp_file);
    } else if (std::filesystem::exists(gcp)) {
        std::printf("\n%s: no control point, not used\n", gcp.filename().string().c_str());
    } else if (found.world.empty()) {
        std::printf("\nneither a GCP file nor a world file is beside it\n");
    }
    if (!found.world.empty()) {
        const auto show = [&](const auto& file) { show_world_file(file, found.gcp.empty(), size); };
        sound = show_file(found.world, show) && sound;
        show_further_world_files(image, found.world);
    }
    if (!sound) throw InputFault("a file beside '" + image.string() + "' is broken");
}

}  // namespace plx::tool
