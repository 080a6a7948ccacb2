#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

/// What GCP files and world files have in common: lines of words, and the lists of mappings that callers get.
namespace plx {

/// Four numbers of one control point, in the order of the file.
using Mapping = std::array<double, 4>;

/// Goes through the lines of a small text file. Lines without words and comments, which begin with "#", are
/// left out; of a line up to 4999 bytes belong together, and what follows is a line of its own.
class MappingLines {
public:
    /// Opens a stored name. When that fails, a message goes to standard output and there are no lines.
    explicit MappingLines(const std::string& name);

    bool is_open() const { return file_ != nullptr; }
    /// Goes to the next line that counts; false at the end.
    bool next();
    /// Word k (0 to 9) of the line as a number, which is 0 where there is none.
    double number(int k) const;

private:
    static constexpr int kMaxLine = 5000, kMaxWords = 10, kWordBytes = 50;

    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Closer> file_;
    std::array<char, kMaxWords * kWordBytes> words_{};
};

/// The list that a caller gets and GeoRef_free_gcp_mappings releases. Throws std::bad_alloc.
double** new_mapping_list(const std::vector<Mapping>& mappings);

}  // namespace plx
