#include "plxutils/converters/ErrorTexts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace plx {

namespace {

// A damaged file of some gigabytes can cause millions of messages.
constexpr std::size_t kMostTexts = 1000;

std::string without_line_end(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '\t'))
        text.pop_back();
    return text;
}

}  // namespace

void ErrorTexts::add(const char* message) {
    if (message == nullptr) return;
    if (texts_.size() == kMostTexts) {
        ++dropped_;
        return;
    }
    // A text that comes again later may belong to another file, which only its neighbours name.
    std::string text = without_line_end(message);
    if (texts_.empty() || texts_.back() != text) texts_.push_back(std::move(text));
}

std::vector<std::string> ErrorTexts::texts() const {
    std::vector<std::string> all = texts_;
    if (dropped_ > 0) all.push_back("and " + std::to_string(dropped_) + " further messages");
    return all;
}

std::vector<std::string> ErrorTexts::merged_with(const ConversionReport& report) const {
    std::vector<std::string> merged;
    const auto add_new = [&merged](const std::string& text) {
        const auto says_it = [&text](const std::string& known) {
            return known.find(text) != std::string::npos;
        };
        if (!text.empty() && std::none_of(merged.begin(), merged.end(), says_it)) merged.push_back(text);
    };
    for (const std::string& text : report.errors) add_new(without_line_end(text));
    for (const std::string& text : texts()) add_new(text);
    return merged;
}

}  // namespace plx
