#include "plxconvert/messages.h"

#include <algorithm>
#include <cstdio>

#include "plxutils/gms/GMSCallbacks.h"

namespace plx::tool {

namespace {

// The hook is a C function without user data, so it needs a place to find its collector.
std::vector<std::string>* hooked_texts = nullptr;

std::string without_line_end(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '\t'))
        text.pop_back();
    return text;
}

void keep_error(const char* message) {
    if (hooked_texts == nullptr || message == nullptr) return;
    hooked_texts->push_back(without_line_end(message));
}

}  // namespace

void print_error(const std::string& text) { std::fprintf(stderr, "plxconvert: %s\n", text.c_str()); }

void print_warning(const std::string& text) { print_error("warning: " + text); }

ErrorCollector::ErrorCollector() {
    hooked_texts = &texts_;
    GMS_SetErrorFunc(&keep_error);
}

ErrorCollector::~ErrorCollector() {
    GMS_SetErrorFunc(nullptr);
    hooked_texts = nullptr;
}

std::vector<std::string> ErrorCollector::merged_with(const ConversionReport& report) const {
    std::vector<std::string> merged;
    const auto add = [&merged](const std::string& text) {
        const auto says_it = [&text](const std::string& known) {
            return known.find(text) != std::string::npos;
        };
        if (!text.empty() && std::none_of(merged.begin(), merged.end(), says_it)) merged.push_back(text);
    };
    for (const std::string& text : report.errors) add(without_line_end(text));
    for (const std::string& text : texts_) add(text);
    return merged;
}

}  // namespace plx::tool
