#pragma once

#include <cstring>

#include "plxutils/core/VXString.h"

/// What every flat function shares: nothing thrown passes it, and texts go into buffers of the caller.
namespace plx {

/// What `work` returns, or `failed` when it throws.
template <class Result, class Work>
Result guarded(Result failed, Work work) noexcept {
    try {
        return work();
    } catch (...) {
        return failed;
    }
}

/// Does `work`, which returns nothing.
template <class Work>
void guarded(Work work) noexcept {
    try {
        work();
    } catch (...) {
        // The caller gets no value, so there is none to tell it by.
    }
}

/// Calls a function of the host, if there is one.
/// @return what it returns; the zero of its type without one and when it throws.
template <class Result, class... Arguments>
Result call_host(Result (*function)(Arguments...), Arguments... arguments) noexcept {
    try {
        if (function != nullptr) return function(arguments...);
    } catch (...) {
        // A host's fault must not unwind the frames of zlib and HDF5 that may lie below.
    }
    return Result();
}

/// True and false of the flat reader and writer.
inline int minus_one_if(bool value) { return value ? -1 : 0; }

inline const char* text_or_empty(const char* text) { return text != nullptr ? text : ""; }

/// Copies a text into a buffer of `len` bytes as strncpy does: zeros fill the rest, and a text that is as
/// long as the buffer has no NUL there, which callers with larger buffers never see.
/// @return -1, or 0 for an empty text and for a buffer that is none.
inline int copy_text(const String& text, char* dst, int len) {
    if (dst == nullptr || len < 1) return 0;
    dst[0] = '\0';
    if (text.GetLength() == 0) return 0;
    const auto room = static_cast<std::size_t>(len);
    const std::size_t length = strnlen(text.c_str(), room);
    std::memcpy(dst, text.c_str(), length);
    std::memset(dst + length, 0, room - length);
    return -1;
}

}  // namespace plx
