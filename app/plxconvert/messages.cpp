#include "plxconvert/messages.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>

#include "plxutils/gms/GMSCallbacks.h"

namespace plx::tool {

namespace {

// The hook is a C function without user data, so it needs a place to find its collector.
ErrorCollector* hooked = nullptr;

// A damaged file of some gigabytes can cause millions of messages.
constexpr std::size_t kMostTexts = 1000;

std::string without_line_end(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '\t'))
        text.pop_back();
    return text;
}

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
    if (hooked == nullptr || message == nullptr) return;
    if (hooked->texts_.size() == kMostTexts) {
        ++hooked->dropped_;
        return;
    }
    // A text that comes again later may belong to another file, which only its neighbours name.
    std::string text = without_line_end(message);
    if (hooked->texts_.empty() || hooked->texts_.back() != text) hooked->texts_.push_back(std::move(text));
}

std::vector<std::string> ErrorCollector::texts() const {
    std::vector<std::string> all = texts_;
    if (dropped_ > 0) all.push_back("and " + std::to_string(dropped_) + " further messages");
    return all;
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
    for (const std::string& text : texts()) add(text);
    return merged;
}

}  // namespace plx::tool
