#include "formats/hdf5_reader.h"

#include <hdf5.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "formats/hdf5_storage.h"
#include "platform/host_path.h"
#include "platform/platform.h"

namespace plx {
namespace {

static_assert(sizeof(hid_t) <= sizeof(Hdf5Id));

constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();

/// Runs `work`, silently and without letting a lack of memory out.
template <class Result, class Work>
Result guarded(Result failure, Work work) {
    const Hdf5Silence silence;
    try {
        return work();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    return failure;
}

/// Path, as HDF5 takes it, of a regular file that can be read. HDF5 would wait for ever on a pipe.
std::string readable_path(const char* stored) {
    if (stored == nullptr) return {};
    std::FILE* file = platform::open_file(stored, "rb");
    if (file == nullptr) return {};
    std::fclose(file);
    return platform::utf8_path(platform::native_path(stored));
}

// H5check_version is of no use here: it aborts the process for every other release.
bool library_is_usable() {
    unsigned major = 0, minor = 0, release = 0;
    return H5get_libversion(&major, &minor, &release) >= 0 &&
           std::tie(major, minor, release) >= std::make_tuple(1u, 8u, 2u);
}

struct OpenDataset {
    Hdf5Handle dataset, type;
    std::vector<std::size_t> shape;
    std::size_t points = 1;

    bool open(Hdf5Id parent, const std::string& path) {
        dataset = Hdf5Handle(H5Dopen2(parent, path.c_str(), H5P_DEFAULT));
        if (!dataset) return false;
        type = Hdf5Handle(H5Dget_type(dataset.id()));
        return type && read_shape() && hdf5_storage_fits(dataset.id(), type.id(), shape);
    }

private:
    bool read_shape() {
        const Hdf5Handle space(H5Dget_space(dataset.id()));
        if (!space) return false;
        const H5S_class_t kind = H5Sget_simple_extent_type(space.id());
        if (kind == H5S_NULL) {
            shape = {0};
            points = 0;
            return true;
        }
        const int rank = H5Sget_simple_extent_ndims(space.id());
        if (kind == H5S_NO_CLASS || rank < 0) return false;
        std::vector<hsize_t> lengths(static_cast<std::size_t>(rank));
        if (rank > 0 && H5Sget_simple_extent_dims(space.id(), lengths.data(), nullptr) < 0) return false;
        for (const hsize_t length : lengths) {
            shape.push_back(static_cast<std::size_t>(length));
            if (!multiply(points, shape.back(), points)) return false;
        }
        return true;
    }
};

template <class T, class Fill>
bool read_array(Hdf5Id parent, const std::string& path, Hdf5Array<T>& out, Fill fill) {
    out = {};
    const bool read = guarded(false, [&] {
        OpenDataset source;
        if (!source.open(parent, path) || !fill(source, out.values)) return false;
        out.shape = std::move(source.shape);
        return true;
    });
    if (!read) out = {};
    return read;
}

bool holds_numbers(const OpenDataset& source) {
    const H5T_class_t kind = H5Tget_class(source.type.id());
    return kind == H5T_INTEGER || kind == H5T_FLOAT || kind == H5T_ENUM;
}

/// Opens a dataset and checks that the slab is inside and of `count` values; what is wrong, or nothing.
std::string open_slab(Hdf5Id parent, const std::string& path, const Hdf5Slab& slab, std::size_t count,
                      OpenDataset& source) {
    const auto number = [](std::size_t value) { return std::to_string(value); };
    const auto& shape = source.shape;
    if (!source.open(parent, path)) {
        return source.dataset ? path + " announces more than the file can hold"
                              : "there is no dataset " + path;
    }
    if (!holds_numbers(source)) return path + " holds no numbers";
    std::size_t points = 1;
    if (slab.count.empty()) {
        points = source.points;
    } else if (slab.count.size() != shape.size() || slab.start.size() != shape.size()) {
        return path + " has " + number(shape.size()) + (shape.size() == 1 ? " axis, " : " axes, ") +
               number(slab.count.size()) + " expected";
    }
    for (std::size_t i = 0; i < slab.count.size(); ++i) {
        if (slab.start[i] > shape[i] || slab.count[i] > shape[i] - slab.start[i]) {
            return "the part of " + path + " that is wanted begins at " + number(slab.start[i]) +
                   " and takes " + number(slab.count[i]) + " of " + number(shape[i]);
        }
        points *= slab.count[i];
    }
    if (points == count) return {};
    return path + " holds " + number(points) + " values, " + number(count) + " expected";
}

bool read_part(const OpenDataset& source, const Hdf5Slab& slab, std::span<double> values) {
    const auto read = [&](hid_t memory, hid_t file) {
        return H5Dread(source.dataset.id(), H5T_NATIVE_DOUBLE, memory, file, H5P_DEFAULT, values.data()) >= 0;
    };
    if (values.empty()) return true;
    if (values.size() == source.points) return read(H5S_ALL, H5S_ALL);
    const std::vector<hsize_t> start(slab.start.begin(), slab.start.end()),
        count(slab.count.begin(), slab.count.end());
    const hsize_t length = values.size();
    const Hdf5Handle file(H5Dget_space(source.dataset.id())), memory(H5Screate_simple(1, &length, nullptr));
    return file && memory &&
           H5Sselect_hyperslab(file.id(), H5S_SELECT_SET, start.data(), nullptr, count.data(), nullptr) >=
               0 &&
           read(memory.id(), file.id());
}

template <class T>
bool read_numbers(const OpenDataset& source, hid_t memory_type, std::vector<T>& values) {
    if (!holds_numbers(source)) return false;
    values.resize(source.points);
    return values.empty() ||
           H5Dread(source.dataset.id(), memory_type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()) >= 0;
}

/// Type of texts in memory, NUL-terminated in `size` bytes.
Hdf5Handle text_type(const OpenDataset& source, std::size_t size) {
    Hdf5Handle type(H5Tcopy(H5T_C_S1));
    if (!type || H5Tset_size(type.id(), size) < 0 || H5Tset_strpad(type.id(), H5T_STR_NULLTERM) < 0 ||
        H5Tset_cset(type.id(), H5Tget_cset(source.type.id())) < 0) {
        type.close();
    }
    return type;
}

/// Memory that the texts of a dataset may take. Packed short texts take far more than their place in the
/// file.
constexpr std::size_t kTextCost = 1 + sizeof(std::string);
constexpr std::size_t kPackedTexts = std::size_t{64} << 20;
constexpr std::size_t kFewTexts = std::size_t{1} << 20;
std::size_t text_budget(const OpenDataset& source, std::size_t always) {
    const std::size_t size = hdf5_file_size(source.dataset.id());
    return size > (kMost - always) / 4 ? kMost : size * 4 + always;
}

bool read_fixed_texts(const OpenDataset& source, std::vector<std::string>& values) {
    const std::size_t width = H5Tget_size(source.type.id());
    std::size_t bytes = 0;
    if (width == 0 || width >= kMost - kTextCost || !multiply(source.points, width + kTextCost, bytes) ||
        bytes > text_budget(source, kPackedTexts)) {
        return false;
    }
    bytes = source.points * (width + 1);
    const Hdf5Handle type = text_type(source, width + 1);
    std::vector<char> block(bytes);
    if (!type || H5Dread(source.dataset.id(), type.id(), H5S_ALL, H5S_ALL, H5P_DEFAULT, block.data()) < 0)
        return false;
    values.reserve(source.points);
    for (std::size_t at = 0; at < bytes; at += width + 1) {
        const char* text = block.data() + at;
        values.emplace_back(text, std::find(text, text + width, '\0'));
    }
    return true;
}

/// Gives HDF5 the memory for variable-length texts. Any number of elements may refer to one long text of the
/// file, so it gives no more than the file can need.
struct TextMemory {
    static constexpr std::size_t kOverhead = 32;
    std::size_t left;
    std::vector<std::unique_ptr<char[]>> blocks;

    static void* allocate(std::size_t size, void* memory) noexcept {
        auto& self = *static_cast<TextMemory*>(memory);
        if (self.left < kOverhead || size > self.left - kOverhead) return nullptr;
        try {
            self.blocks.push_back(std::make_unique<char[]>(std::max<std::size_t>(size, 1)));
        } catch (...) {
            return nullptr;
        }
        self.left -= kOverhead + size;
        return self.blocks.back().get();
    }
    // The blocks go together at the end, also after a read that failed half-way.
    static void release(void*, void*) noexcept {}
};

bool read_variable_texts(const OpenDataset& source, std::vector<std::string>& values) {
    TextMemory memory{text_budget(source, kFewTexts), {}};
    const Hdf5Handle type = text_type(source, H5T_VARIABLE);
    const Hdf5Handle transfer(H5Pcreate(H5P_DATASET_XFER));
    if (!type || !transfer ||
        H5Pset_vlen_mem_manager(transfer.id(), TextMemory::allocate, &memory, TextMemory::release, &memory) <
            0)
        return false;
    std::vector<const char*> texts(source.points, nullptr);
    if (H5Dread(source.dataset.id(), type.id(), H5S_ALL, H5S_ALL, transfer.id(), texts.data()) < 0)
        return false;
    values.reserve(texts.size());
    for (const char* text : texts) values.emplace_back(text == nullptr ? "" : text);
    return true;
}

bool read_texts(const OpenDataset& source, std::vector<std::string>& values) {
    if (H5Tget_class(source.type.id()) != H5T_STRING) return false;
    const htri_t variable = H5Tis_variable_str(source.type.id());
    if (variable < 0) return false;
    if (source.points == 0) return true;
    return variable > 0 ? read_variable_texts(source, values) : read_fixed_texts(source, values);
}

herr_t note_member(hid_t, const char* name, const H5L_info_t*, void* names) noexcept {
    try {
        static_cast<std::vector<std::string>*>(names)->emplace_back(name);
        return 0;
    } catch (...) {
        return -1;
    }
}

}  // namespace

Hdf5Silence::Hdf5Silence() {
    unsigned is_v2 = 1;
    if (H5Eauto_is_v2(H5E_DEFAULT, &is_v2) < 0) return;
#ifndef H5_NO_DEPRECATED_SYMBOLS
    old_style_ = is_v2 == 0;
    if (old_style_) {
        H5E_auto1_t function = nullptr;
        known_ = H5Eget_auto1(&function, &data_) >= 0;
        function_ = reinterpret_cast<void*>(function);
    }
#endif
    if (!old_style_) {
        H5E_auto2_t function = nullptr;
        known_ = H5Eget_auto2(H5E_DEFAULT, &function, &data_) >= 0;
        function_ = reinterpret_cast<void*>(function);
    }
    if (known_) H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
}

Hdf5Silence::~Hdf5Silence() {
    if (!known_) return;
#ifndef H5_NO_DEPRECATED_SYMBOLS
    if (old_style_) {
        H5Eset_auto1(reinterpret_cast<H5E_auto1_t>(function_), data_);
        return;
    }
#endif
    H5Eset_auto2(H5E_DEFAULT, reinterpret_cast<H5E_auto2_t>(function_), data_);
}

Hdf5Handle& Hdf5Handle::operator=(Hdf5Handle&& other) noexcept {
    if (this != &other) {
        close();
        id_ = other.release();
    }
    return *this;
}

void Hdf5Handle::close() {
    if (id_ < 0) return;
    const Hdf5Silence silence;
    H5Idec_ref(release());
}

int hdf5_kind(const char* stored) {
    return guarded(-1, [&]() -> int {
        const std::string path = readable_path(stored);
        return path.empty() ? -1 : H5Fis_hdf5(path.c_str());
    });
}

Hdf5Handle open_hdf5_file(const char* stored) {
    return Hdf5Handle(guarded(Hdf5Id{-1}, [&]() -> Hdf5Id {
        const std::string path = readable_path(stored);
        if (path.empty() || !library_is_usable()) return -1;
        return H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    }));
}

Hdf5Handle open_hdf5_group(Hdf5Id parent, const std::string& path) {
    const Hdf5Silence silence;
    return Hdf5Handle(H5Gopen2(parent, path.c_str(), H5P_DEFAULT));
}

std::vector<std::string> hdf5_members(Hdf5Id group) {
    const Hdf5Silence silence;
    std::vector<std::string> names;
    hsize_t at = 0;
    H5Literate(group, H5_INDEX_NAME, H5_ITER_INC, &at, note_member, &names);
    return names;
}

bool is_hdf5_group(Hdf5Id parent, const std::string& name) {
    const Hdf5Silence silence;
    const Hdf5Handle object(H5Oopen(parent, name.c_str(), H5P_DEFAULT));
    return object && H5Iget_type(object.id()) == H5I_GROUP;
}

std::string hdf5_path(Hdf5Id object) {
    return guarded(std::string(), [&] {
        const ssize_t length = H5Iget_name(object, nullptr, 0);
        if (length <= 0) return std::string();
        std::string path(static_cast<std::size_t>(length), '\0');
        return H5Iget_name(object, path.data(), path.size() + 1) == length ? path : std::string();
    });
}

bool read_hdf5(Hdf5Id parent, const std::string& path, Hdf5Array<double>& out) {
    return read_array(parent, path, out, [](const OpenDataset& source, std::vector<double>& values) {
        return read_numbers(source, H5T_NATIVE_DOUBLE, values);
    });
}

bool read_hdf5(Hdf5Id parent, const std::string& path, Hdf5Array<int>& out) {
    return read_array(parent, path, out, [](const OpenDataset& source, std::vector<int>& values) {
        return read_numbers(source, H5T_NATIVE_INT, values);
    });
}

bool read_hdf5(Hdf5Id parent, const std::string& path, Hdf5Array<std::string>& out) {
    return read_array(parent, path, out, read_texts);
}

std::string read_hdf5_slab(Hdf5Id parent, const std::string& path, const Hdf5Slab& slab,
                           std::span<double> values) {
    return guarded("there is no memory left for " + path, [&] {
        OpenDataset source;
        std::string fault = open_slab(parent, path, slab, values.size(), source);
        if (fault.empty() && !read_part(source, slab, values))
            fault = path + " cannot be read, it is damaged";
        return fault;
    });
}

std::string hdf5_slab_fault(Hdf5Id parent, const std::string& path, const Hdf5Slab& slab, std::size_t count) {
    return guarded("there is no memory left for " + path, [&] {
        OpenDataset source;
        return open_slab(parent, path, slab, count, source);
    });
}

}  // namespace plx
