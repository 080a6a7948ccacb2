#include "platform/host_runtime.h"

namespace plx::platform {

HostRuntime& host_runtime() {
    static HostRuntime table;
    return table;
}

}  // namespace plx::platform
