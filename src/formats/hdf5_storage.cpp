#include "formats/hdf5_storage.h"

#include <hdf5.h>

#include <algorithm>
#include <array>
#include <limits>

#include "core/deflate_stream.h"

namespace plx {
namespace {

constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
/// Deflate packs about 1032 bytes into one; the rest is room for a fill value that was never stored.
constexpr std::size_t kBestRatio = 1100;
constexpr std::size_t kUnstored = std::size_t{1} << 20;
constexpr std::size_t kChecksumBytes = 4;

/// How a dataset is stored.
struct Storage {
    Hdf5Handle properties;
    H5D_layout_t layout = H5D_LAYOUT_ERROR;
    std::vector<std::size_t> chunk;  ///< lengths of its axes
    std::size_t chunk_bytes = 0;
    int filters = 0;

    bool open(hid_t dataset, std::size_t element_size) {
        properties = Hdf5Handle(H5Dget_create_plist(dataset));
        if (!properties) return false;
        layout = H5Pget_layout(properties.id());
        filters = H5Pget_nfilters(properties.id());
        if (layout != H5D_CHUNKED) return filters >= 0;
        hsize_t lengths[H5S_MAX_RANK];
        const int rank = H5Pget_chunk(properties.id(), H5S_MAX_RANK, lengths);
        chunk_bytes = element_size;
        for (int i = 0; i < rank; ++i) {
            chunk.push_back(static_cast<std::size_t>(lengths[i]));
            if (!multiply(chunk_bytes, chunk.back(), chunk_bytes)) return false;
        }
        return rank >= 0 && filters >= 0;
    }
};

bool is_plausible(std::size_t bytes, std::size_t stored) {
    std::size_t limit = 0;
    if (!multiply(stored, kBestRatio, limit) || limit > kMost - kUnstored) return true;
    return bytes <= limit + kUnstored;
}

/// Enumerations and numbers that fill their bytes: another size would not be theirs.
bool fills_its_bytes(hid_t type) {
    const H5T_class_t kind = H5Tget_class(type);
    return (kind == H5T_INTEGER || kind == H5T_FLOAT || kind == H5T_ENUM) &&
           H5Tget_precision(type) == 8 * H5Tget_size(type);
}

/// Length of a chunk when its filters are undone; `enough` when that cannot be told or HDF5 will tell why
/// not.
std::size_t unpacked_size(const Storage& storage, const std::vector<unsigned char>& bytes, unsigned skipped,
                          std::size_t enough) {
    std::size_t size = bytes.size();
    bool packed = true;
    for (int i = storage.filters - 1; i >= 0; --i) {
        if ((skipped >> i & 1U) != 0) continue;
        unsigned flags = 0;
        std::size_t values = 0;
        const H5Z_filter_t filter = H5Pget_filter2(storage.properties.id(), static_cast<unsigned>(i), &flags,
                                                   &values, nullptr, 0, nullptr, nullptr);
        if (filter == H5Z_FILTER_FLETCHER32) {
            size -= std::min(size, kChecksumBytes);
        } else if (filter == H5Z_FILTER_DEFLATE && packed) {
            size = inflated_size({bytes.data(), size}, enough + kChecksumBytes).value_or(enough);
            packed = false;
        } else if (filter != H5Z_FILTER_SHUFFLE) {
            return enough;
        }
    }
    return size;
}

/// Whether the first chunk in the file is as long as all of them have to be.
bool first_chunk_fits(hid_t dataset, const Storage& storage) {
    const Hdf5Handle space(H5Dget_space(dataset));
    std::array<hsize_t, H5S_MAX_RANK> place{};
    unsigned skipped = 0;
    haddr_t address = 0;
    hsize_t size = 0, chunks = 0;
    if (!space || H5Dget_num_chunks(dataset, space.id(), &chunks) < 0) return false;
    if (chunks == 0) return true;
    if (H5Dget_chunk_info(dataset, space.id(), 0, place.data(), &skipped, &address, &size) < 0 ||
        size > hdf5_file_size(dataset)) {
        return false;
    }
    if (storage.filters == 0) return size >= storage.chunk_bytes;
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    return H5Dread_chunk(dataset, H5P_DEFAULT, place.data(), &skipped, bytes.data()) >= 0 &&
           unpacked_size(storage, bytes, skipped, storage.chunk_bytes) >= storage.chunk_bytes;
}

bool chunks_fit(hid_t dataset, hid_t type, const Storage& storage, const std::vector<std::size_t>& shape) {
    if (storage.filters > 0 && storage.chunk == shape && fills_its_bytes(type)) return true;
    return first_chunk_fits(dataset, storage);
}

}  // namespace

bool multiply(std::size_t a, std::size_t b, std::size_t& product) {
    if (b != 0 && a > kMost / b) return false;
    product = a * b;
    return true;
}

std::size_t hdf5_file_size(Hdf5Id object) {
    const Hdf5Handle file(H5Iget_file_id(object));
    hsize_t size = 0;
    if (!file || H5Fget_filesize(file.id(), &size) < 0) return 0;
    return static_cast<std::size_t>(size);
}

bool hdf5_storage_fits(Hdf5Id dataset, Hdf5Id type, const std::vector<std::size_t>& shape) {
    Storage storage;
    std::size_t bytes = H5Tget_size(type);
    if (!storage.open(dataset, bytes)) return false;
    for (const std::size_t length : shape) {
        if (!multiply(bytes, length, bytes)) return false;
    }
    if (bytes == 0) return true;
    const auto stored = static_cast<std::size_t>(H5Dget_storage_size(dataset));
    if (!is_plausible(std::max(bytes, storage.chunk_bytes), std::min(stored, hdf5_file_size(dataset))))
        return false;
    // Nothing is stored of a dataset that nobody wrote to.
    if (stored == 0) return true;
    if (storage.layout == H5D_CHUNKED) return chunks_fit(dataset, type, storage, shape);
    return storage.layout != H5D_COMPACT || stored >= bytes;
}

}  // namespace plx
