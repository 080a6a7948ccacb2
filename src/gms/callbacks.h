#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/GMSCallbacks.h"

/// Formats a message (at most 8191 bytes arrive) and hands it to the registered error function; without one
/// it is dropped. Allocates nothing, because it is called for every line of a damaged project.
void GMS_ReportError(const char* fmt, ...) PLX_PRINTF(1, 2);
/// The same for the status function.
void GMS_ReportStatus(const char* fmt, ...) PLX_PRINTF(1, 2);

namespace plx {

/// The host's hooks. Code that asks a question or moves the progress bar calls the slot itself, when it is
/// set.
struct GmsHooks {
    GMS_PromptFunc prompt = nullptr;
    GMS_MessageFunc error = nullptr;
    GMS_MessageFunc status = nullptr;
    GMS_StartProgressFunc start_progress = nullptr;
    GMS_ProgressFunc progress = nullptr;
};
GmsHooks& gms_hooks();

}  // namespace plx
