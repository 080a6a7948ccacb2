#pragma once

#include <cstddef>
#include <string>

#include "plxutils/export.h"

/// Text of 8-bit characters with value semantics.
///
/// Bytes belong to the current code page and are never interpreted; a byte 0 may be part of the text, but
/// users of c_str() see only what stands before it. Every `const char*` argument may be null, which means the
/// empty text. Nothing prints and an index or count out of range is clamped as each function says.
///
/// A number is silently taken as one character (`s += 65` appends "A"): use Format for numbers. `String s(0)`
/// and `s = 0` do not compile; write "" or nullptr.
class PLX_EXPORT String {
public:
    /// What Find and ReverseFind return when there is no match.
    static constexpr int npos = -1;

    String() noexcept;
    String(const char* text);
    /// One character; the character 0 gives the empty text.
    String(char c);
    String(const String& other);
    String(String&& other) noexcept;
    ~String();

    /// Assignments return a copy of the new text, not a reference: `(b = a) = "z"` leaves b equal to a.
    String operator=(const String& other);
    String operator=(const char* text);
    String operator=(char c);
    String& operator+=(const String& other);
    String& operator+=(const char* text);
    String& operator+=(char c);

    /// NUL-terminated text, valid until this string next changes.
    const char* c_str() const noexcept { return text_.c_str(); }
    /// The byte at `index`; 0 at the length and everywhere outside.
    char operator[](int index) const;
    /// Replaces the byte at `index`; ignored outside 0 .. length-1. A byte 0 keeps the length.
    void SetAt(int index, char c);

    /// At most `count` bytes from `start`; a negative start counts as 0, and what lies past the end is left
    /// out. Pass 2147483647 as count for everything up to the end.
    String Mid(int start, int count) const;
    /// First or last n bytes: empty for n <= 0, everything for n >= length.
    String Left(int n) const;
    String Right(int n) const;
    /// The leading run of bytes that are not in `set`.
    String SpanExcluding(const char* set) const;
    /// Index of the first occurrence of `sub` at or after `start`; npos when there is none or `start` is
    /// outside 0 .. length. The empty text is found at `start`.
    int Find(const char* sub, int start) const;
    int Find(const String& sub, int start) const;
    /// Index of the last occurrence or npos.
    int ReverseFind(char c) const;

    /// Replaces the text by printf-style output, cut to its first 8192 bytes; a format error gives the empty
    /// text. Arguments may point into this string. `format` and `Format` are the same.
    void format(const char* fmt, ...) PLX_PRINTF(2, 3);
    void Format(const char* fmt, ...) PLX_PRINTF(2, 3);

    /// Replaces every occurrence of `oldText` from left to right, never looking into what was inserted. An
    /// empty `oldText` changes nothing.
    String& Replace(const char* oldText, const char* newText);
    /// The text becomes Left(pos) followed by everything from pos + n on.
    String& erase(int pos, int n);
    /// Length in bytes, under three names.
    int size() const noexcept { return static_cast<int>(text_.size()); }
    int length() const noexcept { return size(); }
    int GetLength() const noexcept { return size(); }
    /// Remove the leading, trailing or both runs of bytes that are in `set`.
    void TrimLeft(const char* set);
    void TrimRight(const char* set);
    void Trim(const char* set);
    /// Change the case of the letters by the rules of the C library's current locale.
    void MakeLower();
    void MakeUpper();
    /// A copy of the first 2047 bytes with file-name tokens expanded (see FixFilenameString).
    String GetFilename() const;

    /// Set or extend the text by n bytes, which may hold bytes 0 and may lie inside this string. Null adds
    /// nothing.
    void Assign(const char* bytes, std::size_t n);
    void Append(const char* bytes, std::size_t n);
    void Swap(String& other) noexcept { text_.swap(other.text_); }

private:
    std::string text_;
};

PLX_EXPORT String operator+(const String& a, const String& b);
PLX_EXPORT String operator+(const String& a, const char* b);
PLX_EXPORT String operator+(const char* a, const String& b);
PLX_EXPORT String operator+(const String& a, char b);
PLX_EXPORT String operator+(char a, const String& b);
/// Byte for byte, case-sensitive.
PLX_EXPORT bool operator==(const String& a, const String& b);
PLX_EXPORT bool operator==(const String& a, const char* b);
PLX_EXPORT bool operator==(const char* a, const String& b);
PLX_EXPORT bool operator!=(const String& a, const String& b);
PLX_EXPORT bool operator!=(const String& a, const char* b);
PLX_EXPORT bool operator!=(const char* a, const String& b);
