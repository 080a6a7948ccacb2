#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// An HDF5 file of arrays as GMS writes it: one-dimensional, each one compressed chunk of the group Arrays. A
/// fault ends the program.
class ArrayFile {
public:
    explicit ArrayFile(const std::filesystem::path& path);
    ~ArrayFile();
    ArrayFile(const ArrayFile&) = delete;
    ArrayFile& operator=(const ArrayFile&) = delete;

    void doubles(const std::string& name, const std::vector<double>& values);
    void integers(const std::string& name, const std::vector<int>& values);

private:
    void write(const std::string& name, bool whole, std::size_t count, const void* values);

    std::int64_t file_;
    std::int64_t arrays_;  // the group
};

/// Writes a GMS project that holds nothing but the path of its model's name file.
void write_project(const std::filesystem::path& path, const std::string& name_file);

}  // namespace bench
