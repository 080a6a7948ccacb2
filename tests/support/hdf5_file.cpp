#include "support/hdf5_file.h"

#include <hdf5.h>

#include <cstdio>
#include <cstdlib>

namespace plx::test {
namespace {

/// The identifier, or the end of the process.
hid_t sure(hid_t id) {
    if (id >= 0) return id;
    std::fputs("Hdf5Writer: the file could not be written\n", stderr);
    std::exit(3);
}

hid_t make_space(const Hdf5Writer::Shape& shape) {
    if (shape.empty()) return sure(H5Screate(H5S_SCALAR));
    const std::vector<hsize_t> lengths(shape.begin(), shape.end());
    return sure(H5Screate_simple(static_cast<int>(lengths.size()), lengths.data(), nullptr));
}

hid_t make_links() {
    const hid_t links = sure(H5Pcreate(H5P_LINK_CREATE));
    sure(H5Pset_create_intermediate_group(links, 1));
    return links;
}

hid_t make_type(NumberType type) {
    if (type == NumberType::kOpaque) return H5Tcreate(H5T_OPAQUE, sizeof(double));
    if (type != NumberType::kEnum) {
        const hid_t plain[] = {H5T_STD_I8LE,  H5T_STD_U32LE,  H5T_STD_I32BE,
                               H5T_STD_I64LE, H5T_IEEE_F32LE, H5T_IEEE_F64LE};
        return H5Tcopy(plain[static_cast<int>(type)]);
    }
    const hid_t made = sure(H5Tenum_create(H5T_NATIVE_SCHAR));
    for (signed char value = 0; value < 10; ++value) {
        sure(H5Tenum_insert(made, std::to_string(value).c_str(), &value));
    }
    return made;
}

}  // namespace

Hdf5Writer::Hdf5Writer(const std::string& native_path)
    : file_(sure(H5Fcreate(native_path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT))) {}

Hdf5Writer::~Hdf5Writer() { sure(H5Fclose(file_)); }

void Hdf5Writer::group(const std::string& path) {
    const hid_t links = make_links();
    H5Gclose(sure(H5Gcreate2(file_, path.c_str(), links, H5P_DEFAULT, H5P_DEFAULT)));
    H5Pclose(links);
}

void Hdf5Writer::dataset(const std::string& path, std::int64_t type, std::int64_t space,
                         std::int64_t memory_type, const void* values) {
    const hid_t links = make_links();
    const hid_t made = sure(H5Dcreate2(file_, path.c_str(), type, space, links, H5P_DEFAULT, H5P_DEFAULT));
    if (values != nullptr) sure(H5Dwrite(made, memory_type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values));
    H5Dclose(made);
    H5Pclose(links);
    H5Sclose(space);
    H5Tclose(type);
}

void Hdf5Writer::ints(const std::string& path, const Shape& shape, const std::vector<int>& values) {
    dataset(path, sure(H5Tcopy(H5T_STD_I32LE)), make_space(shape), H5T_NATIVE_INT, values.data());
}

void Hdf5Writer::numbers(const std::string& path, NumberType type, const Shape& shape,
                         const std::vector<double>& values) {
    const hid_t stored = sure(make_type(type));
    // HDF5 converts neither of these from doubles.
    const std::vector<signed char> bytes(values.begin(), values.end());
    const bool raw = type == NumberType::kEnum || type == NumberType::kOpaque;
    const void* data = values.data();
    if (type == NumberType::kEnum) data = bytes.data();
    dataset(path, stored, make_space(shape), raw ? stored : H5T_NATIVE_DOUBLE, data);
}

void Hdf5Writer::strings(const std::string& path, const std::vector<std::string>& values, std::size_t width,
                         Padding padding) {
    const hid_t type = sure(H5Tcopy(H5T_C_S1));
    sure(H5Tset_size(type, width));
    sure(H5Tset_strpad(type, padding == Padding::kSpacePadded  ? H5T_STR_SPACEPAD
                             : padding == Padding::kNullPadded ? H5T_STR_NULLPAD
                                                               : H5T_STR_NULLTERM));
    std::string block;
    for (std::string value : values) {
        value.resize(width, padding == Padding::kSpacePadded ? ' ' : '\0');
        block += value;
    }
    dataset(path, type, make_space({values.size()}), type, block.data());
}

void Hdf5Writer::variable_strings(const std::string& path, const std::vector<std::string>& values) {
    const hid_t type = sure(H5Tcopy(H5T_C_S1));
    sure(H5Tset_size(type, H5T_VARIABLE));
    std::vector<const char*> texts;
    for (const std::string& value : values) texts.push_back(value.c_str());
    dataset(path, type, make_space({values.size()}), type, texts.data());
}

void Hdf5Writer::soft_link(const std::string& path, const std::string& target) {
    const hid_t links = make_links();
    sure(H5Lcreate_soft(target.c_str(), file_, path.c_str(), links, H5P_DEFAULT));
    H5Pclose(links);
}

void Hdf5Writer::nothing(const std::string& path) {
    dataset(path, sure(H5Tcopy(H5T_IEEE_F64LE)), sure(H5Screate(H5S_NULL)), H5T_NATIVE_DOUBLE, nullptr);
}

void Hdf5Writer::chunked_huge(const std::string& path, std::uint64_t rows) {
    const hsize_t lengths[2] = {rows, 3}, chunk[2] = {16, 3}, one_row[2] = {1, 3}, start[2] = {0, 0};
    const double values[3] = {1.0, 2.0, 3.0};
    const hid_t space = sure(H5Screate_simple(2, lengths, nullptr)),
                memory = sure(H5Screate_simple(2, one_row, nullptr));
    const hid_t properties = sure(H5Pcreate(H5P_DATASET_CREATE)), links = make_links();
    sure(H5Pset_chunk(properties, 2, chunk));
    const hid_t made =
        sure(H5Dcreate2(file_, path.c_str(), H5T_IEEE_F64LE, space, links, properties, H5P_DEFAULT));
    sure(H5Sselect_hyperslab(space, H5S_SELECT_SET, start, nullptr, one_row, nullptr));
    sure(H5Dwrite(made, H5T_NATIVE_DOUBLE, memory, space, H5P_DEFAULT, values));
    H5Dclose(made);
    for (const hid_t list : {properties, links}) H5Pclose(list);
    for (const hid_t used : {memory, space}) H5Sclose(used);
}

void Hdf5Writer::unwritten(const std::string& path, std::uint64_t count) {
    dataset(path, sure(H5Tcopy(H5T_IEEE_F64LE)), make_space({count}), H5T_NATIVE_DOUBLE, nullptr);
}

}  // namespace plx::test
