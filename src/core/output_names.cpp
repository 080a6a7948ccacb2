#include "core/output_names.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/ascii_text.h"
#include "platform/device_names.h"
#include "platform/host_path.h"
#include "platform/platform.h"
#include "plxutils/core/VXFile.h"

namespace plx {
namespace {

bool is_unprintable(char c) { return is_control(c) || c == 0x7f; }

/// What Windows refuses, or takes for another name, beyond what is refused on every system.
bool is_refused_by_windows(std::string_view name) {
    return name.find_first_of("<>|\"") != std::string_view::npos || name.ends_with('.') ||
           name.ends_with(' ') || platform::is_device_name(name);
}

}  // namespace

std::string one_word(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || is_unprintable(c); }, '_');
    return name;
}

std::string clean_name(std::string name) {
    std::erase(name, '"');
    return one_word(std::move(name));
}

bool stays_in(const std::string& folder, const std::string& name) {
    // A look-up by a name with wildcards would find other files.
    if (folder.empty() || name.empty() || name.find_first_of("/\\:*?") != std::string::npos ||
        std::any_of(name.begin(), name.end(), is_unprintable))
        return false;
    if (platform::names_are_native() && is_refused_by_windows(name)) return false;
    const std::string path = folder + "\\" + name;
    if (!platform::fits_stored_form(path)) return false;
    return equal_no_case(VXFile(path.c_str()).GetDirectoryName().c_str(), folder);
}

}  // namespace plx
