#include "plxutils/core/VXNativePath.h"

#include "platform/host_path.h"

String VXNativePath(const char* name) {
    return name ? String(plx::platform::native_path(name).c_str()) : String();
}

bool VXCanStorePath(const char* native, String& why) {
    std::string reason;
    const bool storable = plx::platform::storable(native ? native : "", reason);
    if (!storable) why = reason.c_str();
    return storable;
}
