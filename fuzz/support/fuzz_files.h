#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "formats/array_record.h"

/// What the fuzz targets share: the bytes of a run as choices and files.
namespace plx::fuzz {

/// The bytes of one run. The first one chooses among the ways of reading, the rest is the file.
class Input {
public:
    /// Nothing that a reader prints or reports is shown.
    Input(const std::uint8_t* data, std::size_t size);

    /// Bit 0 to 7 of the first byte.
    bool flag(int bit) const { return ((choices_ >> bit) & 1U) != 0; }
    unsigned choices() const { return choices_; }
    std::string_view bytes() const { return bytes_; }
    /// The file in parts, which lines "====" separate; missing ones are empty.
    std::vector<std::string_view> parts(std::size_t count) const;

private:
    unsigned choices_ = 0;
    std::string_view bytes_;
};

/// Rules of the text readers: one for each bit of the first byte, without HDF5 records.
TextRules text_rules(const Input& input);

/// Folder of this process, in memory where the system has such a place, or where PLX_FUZZ_FOLDER says; it is
/// removed at the end. Native path without a separator at its end.
const std::string& folder();
/// Writes bytes to a file of the folder, which may be in a subfolder, and returns its native path.
std::string write_file(const std::string& name, std::string_view bytes);
/// A folder in the folder, without anything in it.
std::string empty_folder(const std::string& name);
/// Stored form of a native path.
std::string stored(const std::string& path);

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, Closer>;
/// A file with these bytes, open for reading.
OpenFile open_bytes(std::string_view bytes);

}  // namespace plx::fuzz
