#include "plxconvert/messages.h"

#include <cstdio>

#include "plxutils/gms/GMSCallbacks.h"

namespace plx::tool {

namespace {

// The hook is a C function without user data, so it needs a place to find its collector.
ErrorCollector* hooked = nullptr;

}  // namespace

void print_error(const std::string& text) { std::fprintf(stderr, "plxconvert: %s\n", text.c_str()); }

void print_warning(const std::string& text) { print_error("warning: " + text); }

ErrorCollector::ErrorCollector() {
    hooked = this;
    GMS_SetErrorFunc(&ErrorCollector::keep);
}

ErrorCollector::~ErrorCollector() {
    GMS_SetErrorFunc(nullptr);
    hooked = nullptr;
}

void ErrorCollector::keep(const char* message) {
    if (hooked != nullptr) hooked->heard_.add(message);
}

}  // namespace plx::tool
