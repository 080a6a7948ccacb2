#include "platform/device_names.h"

#include <algorithm>
#include <array>
#include <string>

namespace plx::platform {
namespace {

bool is_port_digit(std::string_view text) {
    // Raised 1, 2 and 3 count as digits there; Latin-1 and UTF-8.
    constexpr std::array<std::string_view, 6> kRaised = {"\xb9",     "\xb2",     "\xb3",
                                                         "\xc2\xb9", "\xc2\xb2", "\xc2\xb3"};
    if (text.size() == 1 && text[0] >= '1' && text[0] <= '9') return true;
    return std::find(kRaised.begin(), kRaised.end(), text) != kRaised.end();
}

}  // namespace

bool is_device_name(std::string_view name) {
    std::string base(name.substr(0, name.find_first_of(".:")));
    base.erase(base.find_last_not_of(' ') + 1);
    for (char& c : base) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    constexpr std::array<std::string_view, 6> kDevices = {"con", "nul", "aux", "prn", "conin$", "conout$"};
    if (std::find(kDevices.begin(), kDevices.end(), base) != kDevices.end()) return true;
    return (base.starts_with("com") || base.starts_with("lpt")) &&
           is_port_digit(std::string_view(base).substr(3));
}

}  // namespace plx::platform
