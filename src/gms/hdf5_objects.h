#pragma once

#include <string>
#include <vector>

#include "formats/gms_objects.h"
#include "formats/hdf5_reader.h"
#include "gms/data_column.h"
#include "plxutils/core/VX1DArray.h"
#include "plxutils/core/VXString.h"

/// Objects of a GMS project as its HDF5 file holds them, each in a group. When a function returns false,
/// `problem` names the dataset and what was wrong; the object cannot be used then.
namespace plx {

/// "PROPERTIES/Name", "Nodes/NodeLocs" (n x 3), "Elements/Nodeids" (m x 3, from 1).
bool read_hdf5_tin(Hdf5Id group, GmsTin& tin, std::string& problem);
/// "PROPERTIES/Name", "Nodes/NodeLocs" (n x 2 or more).
bool read_hdf5_scatter(Hdf5Id group, GmsScatter& set, std::string& problem);
/// Every member of "Datasets" that has "Values", except "Guid", in name order, with `count` values each: the
/// first ones of the dataset.
/// @param time      when given, those of the row whose entry in the member's "Times" is nearest.
/// @param problems  gets a text for each group that is left out because its values cannot be read.
std::vector<DataColumn> read_hdf5_columns(Hdf5Id group, std::size_t count, const double* time = nullptr,
                                          std::vector<std::string>* problems = nullptr);

/// All boreholes of a "BoreholeModule" group.
struct Hdf5Bores {
    GmsPoints contacts;                 ///< of all bores, one after the other
    std::vector<int> materials;         ///< one for each contact
    std::vector<int> contacts_of_bore;  ///< add up to the contacts
    std::vector<std::string> names;     ///< one for each bore
};
bool read_hdf5_bores(Hdf5Id group, Hdf5Bores& bores, std::string& problem);

/// The table in a root group "Material", without its first element.
void read_hdf5_materials(Hdf5Id group, VX1DArray<int>& ids, VX1DArray<String>& names);

}  // namespace plx
