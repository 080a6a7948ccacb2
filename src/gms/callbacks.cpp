#include "gms/callbacks.h"

#include <cstdarg>
#include <cstdio>

#include "core/c_boundary.h"

namespace {

using plx::call_host;

constexpr int kMessageSize = 8192;

void deliver(void (*receiver)(const char*), const char* fmt, va_list args) {
    char message[kMessageSize];
    if (std::vsnprintf(message, kMessageSize, fmt, args) < 0) message[0] = '\0';
    receiver(message);
}

}  // namespace

namespace plx {

GmsHooks& gms_hooks() {
    static GmsHooks hooks;
    return hooks;
}

}  // namespace plx

void GMS_ReportError(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    deliver(GMS_DoError, fmt, args);
    va_end(args);
}

void GMS_ReportStatus(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    deliver(GMS_DoStatus, fmt, args);
    va_end(args);
}

extern "C" {

void GMS_SetPromptFunc(GMS_PromptFunc function) { plx::gms_hooks().prompt = function; }
void GMS_SetErrorFunc(GMS_MessageFunc function) { plx::gms_hooks().error = function; }
void GMS_SetStatusFunc(GMS_MessageFunc function) { plx::gms_hooks().status = function; }
void GMS_SetStartProgressFunc(GMS_StartProgressFunc function) { plx::gms_hooks().start_progress = function; }
void GMS_SetProgressFunc(GMS_ProgressFunc function) { plx::gms_hooks().progress = function; }

double GMS_PromptValue(const char* question) { return call_host(plx::gms_hooks().prompt, question); }

void GMS_DoError(const char* message) {
    plx::guarded([message] {
        if (plx::gms_hooks().error_listener) plx::gms_hooks().error_listener(message);
    });
    call_host(plx::gms_hooks().error, message);
}

void GMS_DoStatus(const char* message) {
    if (plx::gms_hooks().silent_statuses == 0) call_host(plx::gms_hooks().status, message);
}

void GMS_StartProgress(int first, int last) { call_host(plx::gms_hooks().start_progress, first, last); }

void GMS_SetProgress(int value) { call_host(plx::gms_hooks().progress, value); }

}  // extern "C"
