#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace plx::test {

/// A path from text, which is UTF-8 on every system.
std::filesystem::path path_of(std::string_view name);

/// A folder of its own for one test, removed with everything in it at the end. On Windows its path is spelt
/// as VXFile would.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Native path of a name in the folder.
    std::string file(std::string_view name) const;
    /// Writes bytes as they are and returns the native path.
    std::string write(std::string_view name, std::string_view bytes) const;
    /// All bytes of a file in the folder; empty when it is not there.
    std::string read(std::string_view name) const;
    /// The same without carriage returns, for files that end lines as the system does.
    std::string text(std::string_view name) const;

private:
    std::filesystem::path path_;
};

/// All bytes of a native path; empty when it is not there.
std::string read_bytes(const std::filesystem::path& path);

}  // namespace plx::test
