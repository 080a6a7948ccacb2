#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Reading of HDF5 files. Identifiers are HDF5's own `hid_t`, widened; negative means none. No function
/// throws over anything in a file, and counts are checked against the stored bytes before memory is taken.
namespace plx {

using Hdf5Id = std::int64_t;

/// Switches HDF5's own error printing off while it lives and gives the host's setting back.
class Hdf5Silence {
public:
    Hdf5Silence();
    ~Hdf5Silence();
    Hdf5Silence(const Hdf5Silence&) = delete;
    Hdf5Silence& operator=(const Hdf5Silence&) = delete;

private:
    void* function_ = nullptr;
    void* data_ = nullptr;
    bool known_ = false;      // whether there is a setting to give back
    bool old_style_ = false;  // the host set a handler of the interface before 1.8
};

/// Owns an open file, group or dataset and closes it.
class Hdf5Handle {
public:
    Hdf5Handle() = default;
    explicit Hdf5Handle(Hdf5Id id) : id_(id) {}
    Hdf5Handle(Hdf5Handle&& other) noexcept : id_(other.release()) {}
    Hdf5Handle& operator=(Hdf5Handle&& other) noexcept;
    ~Hdf5Handle() { close(); }

    Hdf5Id id() const { return id_; }
    explicit operator bool() const { return id_ >= 0; }
    void close();
    Hdf5Id release() {
        const Hdf5Id id = id_;
        id_ = -1;
        return id;
    }

private:
    Hdf5Id id_ = -1;
};

/// What HDF5 says of a stored file name: above 0 it is an HDF5 file, 0 it is not, negative it cannot be read.
int hdf5_kind(const char* stored);
/// Opens a stored file name for reading; no handle when it cannot be opened or the library is older than
/// 1.8.2.
Hdf5Handle open_hdf5_file(const char* stored);
/// Opens a group by its path below `parent`.
Hdf5Handle open_hdf5_group(Hdf5Id parent, const std::string& path);

/// Names of a group's members in HDF5's name order (bytes).
std::vector<std::string> hdf5_members(Hdf5Id group);
/// True for a member that is a group; false for dangling links, too.
bool is_hdf5_group(Hdf5Id parent, const std::string& name);
/// Path of an open object in its file; empty when unknown.
std::string hdf5_path(Hdf5Id object);

/// A whole dataset, in row-major order.
template <class T>
struct Hdf5Array {
    std::vector<std::size_t> shape;  ///< length of each axis, the slowest first; empty for a single value
    std::vector<T> values;
};

/// Read a dataset by its path below `parent`, converted from whatever number type it has (integers saturate,
/// fractions are cut). Texts may be fixed-length of any padding, or variable-length.
/// @return false, with `out` empty, when it is missing, has another class of type, or its size is more than
/// the file can hold.
bool read_hdf5(Hdf5Id parent, const std::string& path, Hdf5Array<double>& out);
bool read_hdf5(Hdf5Id parent, const std::string& path, Hdf5Array<int>& out);
bool read_hdf5(Hdf5Id parent, const std::string& path, Hdf5Array<std::string>& out);

/// Part of a dataset: first index and length on each axis, the slowest first. Without axes: the whole
/// dataset.
struct Hdf5Slab {
    std::vector<std::size_t> start, count;
};

/// Reads as many numbers as `values` holds from part of a dataset, in row-major order, converted to doubles.
/// @return why it cannot be read (no such dataset, not numbers, another number of axes, a slab beyond its
/// extents
///         or of another size than `values`), ready for a message; empty when it was read.
std::string read_hdf5_slab(Hdf5Id parent, const std::string& path, const Hdf5Slab& slab,
                           std::span<double> values);
/// What read_hdf5_slab would say of `count` values before it reads any: a look before memory is taken.
std::string hdf5_slab_fault(Hdf5Id parent, const std::string& path, const Hdf5Slab& slab, std::size_t count);

}  // namespace plx
