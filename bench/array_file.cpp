#include "array_file.h"

#include <hdf5.h>

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

hid_t sure(hid_t id) {
    if (id >= 0) return id;
    std::fputs("an HDF5 file cannot be written\n", stderr);
    std::exit(1);
}

hid_t create_file(const std::filesystem::path& path) {
    return sure(H5Fcreate(path.string().c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT));
}

}  // namespace

ArrayFile::ArrayFile(const std::filesystem::path& path)
    : file_(create_file(path)),
      arrays_(sure(H5Gcreate2(file_, "Arrays", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT))) {}

ArrayFile::~ArrayFile() {
    sure(H5Gclose(arrays_));
    sure(H5Fclose(file_));
}

void ArrayFile::doubles(const std::string& name, const std::vector<double>& values) {
    write(name, false, values.size(), values.data());
}

void ArrayFile::integers(const std::string& name, const std::vector<int>& values) {
    write(name, true, values.size(), values.data());
}

void ArrayFile::write(const std::string& name, bool whole, std::size_t count, const void* values) {
    const hsize_t length = count;
    const hid_t space = sure(H5Screate_simple(1, &length, nullptr));
    const hid_t chunks = sure(H5Pcreate(H5P_DATASET_CREATE));
    sure(H5Pset_chunk(chunks, 1, &length));
    sure(H5Pset_deflate(chunks, 1));
    const hid_t type = whole ? H5T_NATIVE_INT : H5T_NATIVE_DOUBLE;
    const hid_t made = sure(H5Dcreate2(arrays_, name.c_str(), type, space, H5P_DEFAULT, chunks, H5P_DEFAULT));
    sure(H5Dwrite(made, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values));
    sure(H5Dclose(made));
    sure(H5Pclose(chunks));
    sure(H5Sclose(space));
}

void write_project(const std::filesystem::path& path, const std::string& name_file) {
    const hid_t file = create_file(path);
    const hid_t links = sure(H5Pcreate(H5P_LINK_CREATE));
    sure(H5Pset_create_intermediate_group(links, 1));
    const hid_t type = sure(H5Tcopy(H5T_C_S1));
    sure(H5Tset_size(type, name_file.size() + 1));
    const hsize_t one = 1;
    const hid_t space = sure(H5Screate_simple(1, &one, nullptr));
    const hid_t made = sure(H5Dcreate2(file, "3DGridModule/3DGrid 0/MODFLOW Model 0/Name File", type, space,
                                       links, H5P_DEFAULT, H5P_DEFAULT));
    sure(H5Dwrite(made, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, name_file.c_str()));
    sure(H5Dclose(made));
    sure(H5Sclose(space));
    sure(H5Tclose(type));
    sure(H5Pclose(links));
    sure(H5Fclose(file));
}

}  // namespace bench
