#include "gms/callbacks.h"

#include <cstdarg>
#include <cstdio>

namespace {

constexpr int kMessageSize = 8192;

void deliver(GMS_MessageFunc function, const char* fmt, va_list args) {
    char message[kMessageSize];
    if (std::vsnprintf(message, kMessageSize, fmt, args) < 0) message[0] = '\0';
    if (function != nullptr) function(message);
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
    deliver(plx::gms_hooks().error, fmt, args);
    va_end(args);
}

void GMS_ReportStatus(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    deliver(plx::gms_hooks().status, fmt, args);
    va_end(args);
}

extern "C" {

void GMS_SetPromptFunc(GMS_PromptFunc function) { plx::gms_hooks().prompt = function; }
void GMS_SetErrorFunc(GMS_MessageFunc function) { plx::gms_hooks().error = function; }
void GMS_SetStatusFunc(GMS_MessageFunc function) { plx::gms_hooks().status = function; }
void GMS_SetStartProgressFunc(GMS_StartProgressFunc function) { plx::gms_hooks().start_progress = function; }
void GMS_SetProgressFunc(GMS_ProgressFunc function) { plx::gms_hooks().progress = function; }

double GMS_PromptValue(const char* question) {
    const auto prompt = plx::gms_hooks().prompt;
    return prompt == nullptr ? 0.0 : prompt(question);
}

void GMS_DoError(const char* message) {
    if (const auto error = plx::gms_hooks().error) error(message);
}

void GMS_DoStatus(const char* message) {
    if (const auto status = plx::gms_hooks().status) status(message);
}

void GMS_StartProgress(int first, int last) {
    if (const auto start = plx::gms_hooks().start_progress) start(first, last);
}

void GMS_SetProgress(int value) {
    if (const auto progress = plx::gms_hooks().progress) progress(value);
}

}  // extern "C"
