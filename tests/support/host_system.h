#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

namespace plx::test {

/// True on Windows, where stored names are the system's own and letters of both cases name one file.
inline constexpr bool kWindows = std::filesystem::path::preferred_separator != '/';

/// What VXFile stores of an absolute native path.
inline std::string stored_form(std::string native) {
    for (char& c : native) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c == '/') c = '\\';
    }
    return (kWindows ? "" : "c:") + native;
}

}  // namespace plx::test
