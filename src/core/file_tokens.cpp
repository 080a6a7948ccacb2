#include "core/file_tokens.h"

#include <algorithm>
#include <cstring>

#include "core/ascii_text.h"
#include "core/c_boundary.h"
#include "core/file_tags.h"
#include "core/installation.h"
#include "plxutils/core/VXUtilities.h"

namespace plx {
namespace {

constexpr std::string_view kPathToken = "$XP_PATH<";
constexpr int kMaxPasses = 1000;
constexpr std::size_t kMaxExpanded = 65536;
constexpr std::size_t kMaxMakeFilename = 8192;

/// Replaces every occurrence from left to right; ends early, with what it has, past kMaxExpanded bytes.
std::string replaced(const std::string& text, const std::string& token, const std::string& value) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t p; (p = text.find(token, done)) != std::string::npos && result.size() <= kMaxExpanded;) {
        result.append(text, done, p - done).append(value);
        done = p + token.size();
    }
    return result.append(text, done, std::string::npos);
}

std::optional<std::string> process_token(std::string_view token) {
    if (!equal_no_case(token.substr(0, kPathToken.size()), kPathToken)) {
        const String* value = file_tags().find(token);
        return value ? std::string(value->c_str()) : std::string();
    }
    const char digit = token.size() > kPathToken.size() ? token[kPathToken.size()] : '\0';
    if (digit < '0' || digit > '9') return std::nullopt;
    if (digit > '0') return host_path(static_cast<std::size_t>(digit - '0'));
    return installation_root();
}

}  // namespace

std::string expand_tokens(std::string text, const TokenValue& value_of) {
    for (int pass = 0; pass < kMaxPasses && text.size() <= kMaxExpanded; ++pass) {
        const std::size_t start = text.find('$'), end = text.find('>');
        if (start == std::string::npos || end == std::string::npos || end < start) break;
        const std::string token = text.substr(start, end - start + 1);
        const std::optional<std::string> value = value_of(token);
        if (!value) break;
        text = replaced(text, token, *value);
    }
    return text;
}

std::string fix_file_name(std::string name) {
    // Even without a token in the name: errors of the tag file are told at the first name of a process.
    file_tags();
    name = expand_tokens(std::move(name), process_token);
    if (name.size() > kMaxFileName) name.resize(kMaxFileName);
    std::replace(name.begin(), name.end(), '/', '\\');
    return name;
}

}  // namespace plx

void FixFilenameString(char* buf) {
    if (!buf) return;
    plx::guarded([buf] {
        const std::string name = plx::fix_file_name(buf);
        std::memcpy(buf, name.c_str(), name.size() + 1);
    });
}

String MakeFilename(const char* name) {
    if (!name) return String();
    return String(plx::fix_file_name(std::string(name, strnlen(name, plx::kMaxMakeFilename))).c_str());
}

int SetExtension(const char* name, char* ext) {
    if (!ext) return 0;
    return plx::guarded(0, [=] {
        // `ext` may be the buffer of the name.
        const std::string full =
            name ? plx::fix_file_name(std::string(name, strnlen(name, plx::kMaxFileName + 1)))
                 : std::string();
        *ext = '\0';
        const std::size_t end = full.find_last_of(".\\");
        if (end == std::string::npos || full[end] != '.') return 0;
        std::strcpy(ext, full.c_str() + end + 1);
        u2l(ext);
        return *ext != '\0' ? 1 : 0;
    });
}
