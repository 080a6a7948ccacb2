#include "plxutils/c/GeoRef.h"

#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "core/c_boundary.h"
#include "platform/platform.h"
#include "plxutils/core/VXUtilities.h"
#include "plxutils/georef/GeoRef.h"

namespace {

using plx::guarded;

struct ImageName {
    std::string base;       // up to and including the last dot
    std::string extension;  // may be empty
};

/// The lower-cased parts of an image's name; nothing for a name without a dot. A dot in the name of a folder
/// is not the image's.
std::optional<ImageName> split_image_name(const char* name) {
    std::string text(name);
    u2l(text.data());
    const std::size_t dot = text.find_last_of("./\\");
    if (dot == std::string::npos || text[dot] != '.') return std::nullopt;
    return ImageName{text.substr(0, dot + 1), text.substr(dot + 1)};
}

/// Moves an older file out of the way, lets `write` make the new one and tells the caller its name. When that
/// fails the older file gets its name back.
template <class Write>
int write_beside(const std::string& name, char* image_name, Write write) {
    const bool older = FileExists(name.c_str()) && BackupFile(name.c_str()) != 0;
    const int result = write(name.c_str());
    if (result == 0 && older) plx::platform::replace_move((name + ".backup").c_str(), name.c_str());
    std::strcpy(image_name, name.c_str());
    return result;
}

// More than any image has, and far less than would make a system end the process for want of memory.
constexpr int kMostPoints = 10'000'000;

}  // namespace

GeoRef* GeoRef_new(int n) {
    if (n > kMostPoints) return nullptr;
    return guarded<GeoRef*>(nullptr, [&] { return new GeoRef(n, nullptr, nullptr, nullptr, nullptr); });
}

int GeoRef_delete(GeoRef* object) {
    if (!object) return 0;
    return guarded(0, [&] {
        delete object;
        return 1;
    });
}

int GeoRef_set_gcp_values(GeoRef* object, int i, double sx, double sy, double dx, double dy) {
    if (!object) return 0;
    return guarded(0, [&] { return object->set_gcp_values(i, sx, sy, dx, dy); });
}

int GeoRef_process_type(GeoRef* object, int type) {
    if (!object) return 0;
    return guarded(0, [&] {
        object->process_type(type);
        return 1;
    });
}

int GeoRef_project_point(GeoRef* object, double x, double y, double* X, double* Y) {
    if (!object || !X || !Y) return 0;
    return guarded(0, [&] {
        object->project_point(x, y, *X, *Y);
        return 1;
    });
}

int GeoRef_reverse_project_point(GeoRef* object, double X, double Y, double* x, double* y) {
    if (!object || !x || !y) return 0;
    return guarded(0, [&] {
        object->reverse_project_point(X, Y, *x, *y);
        return 1;
    });
}

double GeoRef_rms_error(GeoRef* object, int i) {
    if (!object) return 0.0;
    return guarded(0.0, [&] { return object->rms_error(i); });
}

double GeoRef_rms_total_error(GeoRef* object) {
    if (!object) return 0.0;
    return guarded(0.0, [&] { return object->rms_tot_error(); });
}

int GeoRef_write_world(GeoRef* object, char* imageName) {
    if (!object || !imageName) return 0;
    return guarded(0, [&] {
        const auto image = split_image_name(imageName);
        if (!image || image->extension.empty()) return 0;
        const std::string name = image->base + image->extension.front() + image->extension.back() + 'w';
        return write_beside(name, imageName, [&](const char* path) { return object->write_world(path); });
    });
}

int GeoRef_write_gcp(GeoRef* object, char* imageName) {
    if (!object || !imageName) return 0;
    return guarded(0, [&] {
        const auto image = split_image_name(imageName);
        if (!image) return 0;
        const std::string name = image->base + "gcp";
        return write_beside(name, imageName, [&](const char* path) { return object->write_GCP(path); });
    });
}

int GeoRef_load_gcp_mappings(double*** maps, const char* imageName, int width, int height) {
    if (maps) *maps = nullptr;
    if (!maps || !imageName) return 0;
    return guarded(0, [&] {
        const auto image = split_image_name(imageName);
        if (!image) return 0;
        const int count = parseGCPFile(image->base.c_str(), nullptr, maps);
        if (count > 0) return count;
        return parseWorldFile(image->base.c_str(), nullptr, image->extension.c_str(), maps, width, height);
    });
}

int GeoRef_get_gcp_mapping(double*** maps, int i, double* sx, double* sy, double* dx, double* dy) {
    if (!maps || !*maps || i < 0 || !sx || !sy || !dx || !dy) return 0;
    const double* const mapping = (*maps)[i];
    *sx = mapping[0];
    *sy = mapping[1];
    *dx = mapping[2];
    *dy = mapping[3];
    return 1;
}

int GeoRef_free_gcp_mappings(double*** maps, int n) {
    if (!maps || !*maps) return 1;
    double** const list = std::exchange(*maps, nullptr);
    for (int i = 0; i < n; ++i) delete[] list[i];
    delete[] list;
    return 1;
}
