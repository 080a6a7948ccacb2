#pragma once

#include <cstddef>
#include <vector>

#include "formats/hdf5_reader.h"

/// What HDF5 itself does not check of the datasets in a damaged file.
namespace plx {

/// False when the product has no room.
bool multiply(std::size_t a, std::size_t b, std::size_t& product);

/// Bytes of the file that an object is in; 0 when that cannot be told.
std::size_t hdf5_file_size(Hdf5Id object);

/// Whether the file can hold the elements of a dataset of this shape; a few bytes of a damaged file can
/// announce any number of them, and of any size.
///
/// HDF5 reads as many bytes as the type and the chunks' lengths announce, also behind the end of a chunk that
/// was unpacked to less. So what is stored has to be as long: the bytes of datasets that are not packed, and
/// the first chunk of others, unless it is the whole dataset and of numbers without unused bits, in which no
/// single changed byte can matter.
bool hdf5_storage_fits(Hdf5Id dataset, Hdf5Id type, const std::vector<std::size_t>& shape);

}  // namespace plx
