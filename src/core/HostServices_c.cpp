#include "plxutils/c/HostServices.h"

#include <algorithm>
#include <cstring>

#include "core/c_boundary.h"
#include "platform/host_runtime.h"

namespace {

PLX_HostServices& services() {
    static PLX_HostServices given{};
    return given;
}

/// An entry of the library's table that calls the host's entry and lets nothing out.
template <auto Entry>
struct Guarded;

template <class Result, class... Arguments, Result (*PLX_HostServices::*Entry)(Arguments...)>
struct Guarded<Entry> {
    static Result call(Arguments... arguments) noexcept {
        return plx::call_host(services().*Entry, arguments...);
    }
};

/// Null when the host has no such service.
template <auto Entry>
auto entry() -> decltype(&Guarded<Entry>::call) {
    return services().*Entry != nullptr ? &Guarded<Entry>::call : nullptr;
}

}  // namespace

int PLX_set_host_services(const PLX_HostServices* given) {
    if (given != nullptr && given->size < sizeof given->size) return 0;
    PLX_HostServices known{};
    if (given != nullptr) {
        // A size that ends inside an entry has only a part of its address.
        const std::size_t whole = given->size - given->size % sizeof given->OMget_num_paths;
        std::memcpy(&known, given, std::min(whole, sizeof known));
    }
    services() = known;

    plx::platform::HostRuntime& table = plx::platform::host_runtime();
    table.OMget_num_paths = entry<&PLX_HostServices::OMget_num_paths>();
    table.OMget_path_index = entry<&PLX_HostServices::OMget_path_index>();
    table.MATmat4_identity = entry<&PLX_HostServices::MATmat4_identity>();
    table.MATmat4_translate = entry<&PLX_HostServices::MATmat4_translate>();
    table.MATmat4_multiply = entry<&PLX_HostServices::MATmat4_multiply>();
    table.MATmat4_inverse = entry<&PLX_HostServices::MATmat4_inverse>();
    table.MATvec3_mat4_multiply = entry<&PLX_HostServices::MATvec3_mat4_multiply>();
    return 1;
}
