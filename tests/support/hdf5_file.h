#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace plx::test {

enum class Padding { kNullTerminated, kNullPadded, kSpacePadded };
enum class NumberType { kInt8, kUint32, kInt32Big, kInt64, kFloat, kDouble, kEnum, kOpaque };

/// Writes an HDF5 file piece by piece. Groups on the way to an object are made as needed. Anything that fails
/// ends the process, because the test that needs the file is of no use then.
class Hdf5Writer {
public:
    using Shape = std::vector<std::uint64_t>;  ///< empty for a single value

    explicit Hdf5Writer(const std::string& native_path);
    ~Hdf5Writer();
    Hdf5Writer(const Hdf5Writer&) = delete;
    Hdf5Writer& operator=(const Hdf5Writer&) = delete;

    void group(const std::string& path);
    void doubles(const std::string& path, const Shape& shape, const std::vector<double>& values) {
        numbers(path, NumberType::kDouble, shape, values);
    }
    void floats(const std::string& path, const Shape& shape, const std::vector<double>& values) {
        numbers(path, NumberType::kFloat, shape, values);
    }
    void ints(const std::string& path, const Shape& shape, const std::vector<int>& values);
    void numbers(const std::string& path, NumberType type, const Shape& shape,
                 const std::vector<double>& values);
    void strings(const std::string& path, const std::vector<std::string>& values, std::size_t width = 32,
                 Padding padding = Padding::kNullTerminated);
    void variable_strings(const std::string& path, const std::vector<std::string>& values);
    void soft_link(const std::string& path, const std::string& target);
    /// Doubles without an extent.
    void nothing(const std::string& path);
    /// Three columns of doubles that announce this many rows and hold the first only.
    void chunked_huge(const std::string& path, std::uint64_t rows);
    /// Doubles, all of them one value that is stored nowhere.
    void unwritten(const std::string& path, std::uint64_t count);

private:
    void dataset(const std::string& path, std::int64_t type, std::int64_t space, std::int64_t memory_type,
                 const void* values);

    std::int64_t file_;
};

}  // namespace plx::test
