#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace plx {

/// Most bytes that one formatted text keeps.
inline constexpr std::size_t kFormatMax = 8192;
using FormatBuffer = char[kFormatMax + 1];

/// Formats like vsnprintf into `out` and returns the length of the text there, which ends at the first byte
/// 0; empty for a null format or an error.
inline std::size_t format_text(FormatBuffer& out, const char* fmt, va_list args) {
    if (!fmt || std::vsnprintf(out, sizeof out, fmt, args) < 0) out[0] = 0;
    return std::strlen(out);
}

}  // namespace plx
