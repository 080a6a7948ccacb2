#pragma once

#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/core/VXFile.h"

namespace plx {

/// The files of GENERAL, which all field files share.
inline constexpr const char* kCoordinates = "node_coordinates.xyz";
inline constexpr const char* kGeoLayers = "geo_layers.nd";
inline constexpr const char* kElevations = "elevations.nd";
inline constexpr const char* kConnectivity = "connectivity.conn";

/// Folders and files that a conversion writes, as stored paths.
struct OutputPaths {
    /// Below factory.output_folder, or beside the project when that is empty.
    explicit OutputPaths(const ConverterFactory& factory);

    /// A folder of the root, as it is stored.
    String folder(const char* name) const { return root + "\\" + name; }
    /// A file or folder below the root, as it is stored: "GENERAL", "geo_layers.nd".
    VXFile below(const char* folder, const String& name) const;
    /// Makes a folder below the root; one that exists is kept.
    void make_folder(const char* name) const;

    String root;
    String title;  ///< the project's title; one word without quotes
};

/// Reference from a field file to a file of the GENERAL folder.
std::string general_reference(const VXFile& file);

}  // namespace plx
