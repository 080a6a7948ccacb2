#include "plxutils/gms/GMStoPLX.h"

#include <cstring>
#include <string>

#include "formats/hdf5_reader.h"
#include "gms/callbacks.h"
#include "platform/platform.h"

namespace {

constexpr std::size_t kUnitsBuffer = 20;

/// A name without a folder is given the present one, because the stored form would double it ("out\out").
void set_path(VXFile& file, const char* path) {
    const std::string text = path ? path : "";
    const std::string expanded = String(text.c_str()).GetFilename().c_str();
    const bool bare = !expanded.empty() && expanded.find_first_of("\\/:") == std::string::npos;
    file.SetFile(((bare ? ".\\" : "") + text).c_str());
}

bool is_set(const VXFile& file) { return file.GetFilePath().length() > 0; }

}  // namespace

GMStoPLX::GMStoPLX() = default;

GMStoPLX::~GMStoPLX() {
    // Each tells that it goes; hosts see them in the order in which they came.
    for (auto& dataset : dataSets) dataset.reset();
}

void GMStoPLX::SetProject(const char* path) { set_path(projectSource, path); }

void GMStoPLX::SetDestination(const char* path) {
    const char* given = path ? path : "";
    const plx::platform::FileFacts found = plx::platform::find_file(given);
    if (!found.exists) {
        GMS_ReportError("GMStoPLX : set_destination - [%s] Invalid Directory Name!\n", given);
    } else if (!found.directory) {
        GMS_ReportError("GMStoPLX : set_destination - [%s] Path leads to file, not directory!\n", given);
    } else {
        // What ends in "." or ".." would be another folder, or none, once a file's name follows.
        const std::string text = given;
        const std::string last = text.substr(text.find_last_of("\\/") + 1);
        const bool native = plx::platform::names_are_native() || text.find('\\') == std::string::npos;
        const bool dots = native && (last == "." || last == "..");
        set_path(destination, dots ? plx::platform::full_path(text).c_str() : given);
    }
}

bool GMStoPLX::parse_header() {
    hdf5Project = false;
    currentGroup = iniGroup = -1;
    // A conversion without a project or a folder runs all the same; hosts count on the messages that follow.
    if (!is_set(projectSource)) {
        GMS_ReportError("GMStoPLX : parse_header - Project source must be set before parsing\n");
    }
    if (!is_set(destination)) {
        GMS_ReportError("GMStoPLX : parse_header - Destination folder must be set before parsing\n");
    }
    const String path = projectSource.GetFilePath();
    GMS_ReportStatus("Opening file");
    GMS_ReportStatus("%s", path.c_str());
    const plx::Hdf5Silence silence;
    // A file that cannot be read counts as HDF5 on purpose: hosts expect a missing project to end without an
    // error message.
    if (plx::hdf5_kind(path.c_str()) == 0) return ParseTextProject();
    ParseHdf5Project();
    return true;
}

bool GMStoPLX::InExtents(double x, double y) const {
    return !cropToExtents || !(x < xmin || x > xmax || y < ymin || y > ymax);
}

void GMStoPLX::ReadUnitsValue(const char* key, const char* def, char* buffer) {
    const std::string value = plx::platform::ini_value(settingsFile.GetFilePath().c_str(), "Units", key, def)
                                  .substr(0, kUnitsBuffer - 1);
    std::memset(buffer, 0, kUnitsBuffer);
    std::memcpy(buffer, value.data(), value.size());
}
