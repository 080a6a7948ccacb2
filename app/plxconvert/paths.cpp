#include "plxconvert/paths.h"

#include <system_error>

#include "plxconvert/messages.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXNativePath.h"

namespace plx::tool {

namespace {

namespace fs = std::filesystem;

std::string quoted(const std::string& text) { return "'" + text + "'"; }

fs::path absolute_path(const std::string& given) {
    if (given.empty()) throw InputFault("an empty path names no file");
    fs::path path = fs::absolute(path_of(given)).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    return path;
}

/// Refuses a path that does not pass one of the library's checks, with what that says.
void check(bool (*passes)(const char*, String&), const fs::path& path) {
    String why;
    if (passes(path.string().c_str(), why)) return;
    throw InputFault("path " + quoted(path.string()) + " cannot be used: " + why.c_str());
}

void check_storable(const fs::path& path) { check(&VXCanStorePath, path); }

/// The library stores names in lower case, so that it may find a neighbour instead.
void check_found_again(const fs::path& path) { check(&VXFindsPathAgain, path); }

}  // namespace

fs::path path_of(std::string_view text) { return std::u8string(text.begin(), text.end()); }

fs::path input_file(const std::string& given, const std::string& wanted) {
    fs::path path = absolute_path(given);
    std::error_code fault;
    const fs::file_status status = fs::status(path, fault);
    if (!fs::exists(status)) throw InputFault(quoted(given) + " does not exist");
    if (fs::is_directory(status)) throw InputFault(quoted(given) + " is a folder; give " + wanted + " in it");
    if (!fs::is_regular_file(status)) throw InputFault(quoted(given) + " is not a regular file");
    check_storable(path);
    check_found_again(path);
    return path;
}

fs::path result_folder(const std::string& given) {
    fs::path path = absolute_path(given);
    check_storable(path);
    std::error_code fault;
    if (fs::exists(path, fault) && !fs::is_directory(path, fault))
        throw InputFault(quoted(given) + " is not a folder");
    fs::create_directories(path, fault);
    if (fault) throw InputFault("folder " + quoted(given) + " cannot be made: " + fault.message());
    check_found_again(path);
    return path;
}

fs::path output_file(const std::string& given) {
    const fs::path path = absolute_path(given);
    std::error_code fault;
    if (!fs::is_directory(path.parent_path(), fault)) {
        throw InputFault("folder " + quoted(path.parent_path().string()) + " does not exist");
    }
    if (fs::is_directory(path, fault)) throw InputFault(quoted(given) + " is a folder; give a file in it");
    check_storable(path);
    check_found_again(path.parent_path());
    const VXFile stored(path.string().c_str());
    fs::path made = path_of(VXNativePath(stored.GetFilePath().c_str()).c_str());
    if (made.empty()) throw InputFault("path " + quoted(given) + " cannot be used");
    if (fs::exists(made, fault) && !fs::is_regular_file(made, fault)) {
        throw InputFault(quoted(made.string()) + " is there and not a regular file");
    }
    return made;
}

}  // namespace plx::tool
