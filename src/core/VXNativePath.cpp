#include "plxutils/core/VXNativePath.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "platform/host_path.h"
#include "platform/platform.h"
#include "plxutils/core/VXFile.h"

String VXNativePath(const char* name) {
    return name ? String(plx::platform::native_path(name).c_str()) : String();
}

bool VXCanStorePath(const char* native, String& why) {
    std::string reason;
    const bool storable = plx::platform::storable(native ? native : "", reason);
    if (!storable) why = reason.c_str();
    return storable;
}

bool VXFindsPathAgain(const char* native, String& why) {
    const std::string path = native ? native : "";
    const std::string found = plx::platform::native_path(VXFile(path.c_str()).GetFilePath().c_str());
    // Where stored names are native, case does not tell files apart.
    if (plx::platform::names_are_native() && plx::platform::find_file(found.c_str()).exists) return true;
    std::error_code fault;
    if (!found.empty() && std::filesystem::equivalent(path, found, fault)) return true;
    if (!found.empty() && std::filesystem::exists(found, fault)) {
        why = ("it differs from '" + found + "' only in the case of its letters").c_str();
    } else {
        why = "the file is not found by its lower-case name";
    }
    return false;
}
