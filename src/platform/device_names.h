#pragma once

#include <string_view>

namespace plx::platform {

/// True for a file name, without folder, that Windows takes for a device whatever stands behind its first
/// dot: con, conin$, conout$, nul, aux, prn, com1 to com9 and lpt1 to lpt9, in any case; raised digits too.
bool is_device_name(std::string_view name);

}  // namespace plx::platform
