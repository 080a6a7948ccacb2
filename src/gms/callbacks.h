#pragma once

#include <functional>

#include "plxutils/export.h"
#include "plxutils/gms/GMSCallbacks.h"

/// Formats a message (at most 8191 bytes arrive) and hands it to the registered error function; without one
/// it is dropped. Allocates nothing, because it is called for every line of a damaged project.
void GMS_ReportError(const char* fmt, ...) PLX_PRINTF(1, 2);
/// The same for the status function.
void GMS_ReportStatus(const char* fmt, ...) PLX_PRINTF(1, 2);

namespace plx {

/// The host's hooks. They are called through the functions of GMSCallbacks.h and those above only, which read
/// the slot anew each time and let nothing out that a hook throws.
struct GmsHooks {
    GMS_PromptFunc prompt = nullptr;
    GMS_MessageFunc error = nullptr;
    GMS_MessageFunc status = nullptr;
    GMS_StartProgressFunc start_progress = nullptr;
    GMS_ProgressFunc progress = nullptr;

    /// Hears every error text before the host's function does; for code that collects them for a report.
    std::function<void(const char*)> error_listener;
    /// While above 0, status texts are dropped.
    int silent_statuses = 0;
};
GmsHooks& gms_hooks();

}  // namespace plx
