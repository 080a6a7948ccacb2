#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace valley {

/// Collects one record of a binary file, so that the file sees a single write: little-endian, 32-bit reals.
class Record {
public:
    Record& integer(std::size_t value) { return integer32(static_cast<std::int32_t>(value)); }
    Record& integer32(std::int32_t value) { return raw(&value, sizeof value); }
    Record& real(double value) {
        const float single = static_cast<float>(value);
        return raw(&single, sizeof single);
    }
    Record& reals(const double* values, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) real(values[i]);
        return *this;
    }
    /// 16 characters, flush right as MODFLOW keeps them.
    Record& label(const std::string& text) { return characters(std::string(blanks_after(text), ' ') + text); }
    /// 16 characters, flush left as the transport files have them.
    Record& left_label(const std::string& text) {
        return characters(text + std::string(blanks_after(text), ' '));
    }
    Record& characters(const std::string& text) { return raw(text.data(), text.size()); }
    const std::vector<char>& bytes() const { return bytes_; }

private:
    static std::size_t blanks_after(const std::string& text) {
        return text.size() < 16 ? 16 - text.size() : 0;
    }
    Record& raw(const void* from, std::size_t count);
    std::vector<char> bytes_;
};

/// A result that grows under a temporary name and gets its own by publish(), so that a run that failed leaves
/// no results.
class ResultFile {
public:
    /// Throws std::runtime_error when the file cannot be made.
    explicit ResultFile(const std::filesystem::path& name);
    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;
    ~ResultFile();
    void write(const Record& record);
    /// Throws std::runtime_error when not everything could be written.
    void close();
    void publish();

private:
    std::filesystem::path name_, temporary_;
    std::ofstream file_;
};

}  // namespace valley
