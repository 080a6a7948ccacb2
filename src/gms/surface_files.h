#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "formats/gms_objects.h"
#include "gms/builder_output.h"
#include "gms/data_column.h"

namespace plx {

/// Writes a surface file (.gmf) of one point set with these heights.
/// @param points     only x and y are used.
/// @param name       as the object calls it; it is cleaned here.
/// @param complaint  see BuilderOutput::open.
bool write_surface(GMStoPLX& owner, const std::string& folder, const std::string& name,
                   const GmsPoints& points, const std::vector<double>& heights, const char* complaint);

/// What a TIN's field file needs beside the TIN.
struct TinFieldFile {
    std::string folder, name;  ///< the name is cleaned here
    bool compressed = false;
    const char* complaint = "";
    /// Gives the units of the elevation and of the datasets; asked while the file is being written.
    std::function<void(std::string& elevation, std::string& datasets)> units;
};

/// Writes a TIN with its elevations and datasets as a field file (.pff, .pfz) that holds everything itself.
bool write_tin_field(GMStoPLX& owner, const TinFieldFile& file, const GmsTin& tin,
                     const std::vector<DataColumn>& columns);

/// The datasets of the HDF5 object that the owner shows. What cannot be read is reported, as `kind`, and left
/// out.
std::vector<DataColumn> columns_of_group(const GMStoPLX& owner, std::size_t count, const char* kind);

/// The values that an object of `count` points gets from a dataset: the first component at one time.
DataColumn column_of(const GMStoPLX& owner, const GMSDataSet& dataset, std::size_t count);

}  // namespace plx
