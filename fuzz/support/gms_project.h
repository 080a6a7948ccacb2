#pragma once

#include <string>
#include <string_view>

#include "support/fuzz_files.h"

namespace plx::fuzz {

/// A GMS project that is described and converted with every kind of object. Bit 0 of the first byte: datasets
/// of newer programs, bit 1: compressed files, bit 2: subfolders, bit 3: cropping, bit 4: a chosen time.
class GmsProject {
public:
    explicit GmsProject(const Input& input) : input_(input) {}
    /// Replaces a file of the project.
    void put(const std::string& name, std::string_view bytes) { write_file("project/" + name, bytes); }
    void convert();

    /// A text project with a file of every kind that it may name.
    void use_example();

private:
    const Input& input_;
};

/// Converts the example's project of the lines `named`, in which `file` is the input.
void convert_example(const Input& input, const char* named, const char* file);

}  // namespace plx::fuzz
