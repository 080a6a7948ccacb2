#include "plxutils/core/VXNativePath.h"

#include "platform/host_path.h"

String VXNativePath(const char* name) {
    return name ? String(plx::platform::native_path(name).c_str()) : String();
}
