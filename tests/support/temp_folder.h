#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace plx::test {

/// A folder of its own for one test, removed with everything in it at the end.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Native path of a name in the folder.
    std::string file(std::string_view name) const { return (path_ / name).string(); }
    /// Writes bytes as they are and returns the native path.
    std::string write(std::string_view name, std::string_view bytes) const;
    /// All bytes of a file in the folder; empty when it is not there.
    std::string read(std::string_view name) const;

private:
    std::filesystem::path path_;
};

/// All bytes of a native path; empty when it is not there.
std::string read_bytes(const std::filesystem::path& path);

}  // namespace plx::test
