#include "plxutils/core/VXString.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "core/format_text.h"
#include "plxutils/core/VXUtilities.h"

namespace {

std::string_view view(const char* text) { return text ? std::string_view(text) : std::string_view(); }

std::string_view view(const String& text) { return {text.c_str(), static_cast<std::size_t>(text.length())}; }

String join(std::string_view a, std::string_view b) {
    String result;
    result.Append(a.data(), a.size());
    result.Append(b.data(), b.size());
    return result;
}

int index_or_npos(std::size_t position) {
    return position == std::string::npos ? String::npos : static_cast<int>(position);
}

// The part of a text from `start` on that is at most `count` bytes long; both are taken in 64 bits, because
// callers pass the largest int for "to the end".
std::string_view part(std::string_view text, std::int64_t start, std::int64_t count) {
    const auto length = static_cast<std::int64_t>(text.size());
    count = std::max<std::int64_t>(std::min(count, length - start), 0);
    start = std::max<std::int64_t>(start, 0);
    if (start >= length) return {};
    return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
}

String copy_of(std::string_view text) {
    String result;
    result.Assign(text.data(), text.size());
    return result;
}

}  // namespace

String::String() noexcept = default;

String::String(const char* text) : text_(view(text)) {}

String::String(char c) : text_(c ? 1 : 0, c) {}

String::String(const String& other) = default;

String::String(String&& other) noexcept : text_(std::move(other.text_)) { other.text_.clear(); }

String::~String() = default;

String String::operator=(const String& other) {
    text_ = other.text_;
    return *this;
}

String String::operator=(const char* text) {
    const std::string_view from = view(text);
    text_.assign(from.data(), from.size());
    return *this;
}

String String::operator=(char c) {
    text_.assign(c ? 1 : 0, c);
    return *this;
}

String& String::operator+=(const String& other) {
    text_ += other.text_;
    return *this;
}

String& String::operator+=(const char* text) {
    text_ += view(text);
    return *this;
}

String& String::operator+=(char c) {
    if (c) text_ += c;
    return *this;
}

char String::operator[](int index) const {
    return index < 0 || index >= size() ? '\0' : text_[static_cast<std::size_t>(index)];
}

void String::SetAt(int index, char c) {
    if (index >= 0 && index < size()) text_[static_cast<std::size_t>(index)] = c;
}

String String::Mid(int start, int count) const { return copy_of(part(text_, start, count)); }

String String::Left(int n) const { return copy_of(part(text_, 0, n)); }

String String::Right(int n) const {
    return copy_of(part(text_, n <= 0 ? size() : std::max(size() - n, 0), n));
}

String String::SpanExcluding(const char* set) const {
    return copy_of(std::string_view(text_).substr(0, text_.find_first_of(view(set))));
}

int String::Find(const char* sub, int start) const {
    return start < 0 ? npos : index_or_npos(text_.find(view(sub), static_cast<std::size_t>(start)));
}

int String::Find(const String& sub, int start) const {
    return start < 0 ? npos : index_or_npos(text_.find(sub.text_, static_cast<std::size_t>(start)));
}

int String::ReverseFind(char c) const { return index_or_npos(text_.rfind(c)); }

void String::format(const char* fmt, ...) {
    plx::FormatBuffer buffer;
    va_list args;
    va_start(args, fmt);
    const std::size_t n = plx::format_text(buffer, fmt, args);
    va_end(args);
    text_.assign(buffer, n);
}

void String::Format(const char* fmt, ...) {
    plx::FormatBuffer buffer;
    va_list args;
    va_start(args, fmt);
    const std::size_t n = plx::format_text(buffer, fmt, args);
    va_end(args);
    text_.assign(buffer, n);
}

String& String::Replace(const char* oldText, const char* newText) {
    // Copies, because either text may lie inside this string.
    const std::string from(view(oldText));
    const std::string to(view(newText));
    if (from.empty()) return *this;
    std::size_t match = text_.find(from);
    if (match == std::string::npos) return *this;
    std::string result;
    std::size_t done = 0;
    for (; match != std::string::npos; match = text_.find(from, done)) {
        result.append(text_, done, match - done).append(to);
        done = match + from.size();
    }
    result.append(text_, done);
    text_.swap(result);
    return *this;
}

String& String::erase(int pos, int n) {
    const std::string_view all = text_;
    std::string result(part(all, 0, pos));
    result += part(all, std::int64_t{pos} + n, INT32_MAX);
    text_.swap(result);
    return *this;
}

void String::TrimLeft(const char* set) { text_.erase(0, text_.find_first_not_of(view(set))); }

void String::TrimRight(const char* set) { text_.erase(text_.find_last_not_of(view(set)) + 1); }

void String::Trim(const char* set) {
    const std::string kept(view(set));
    TrimLeft(kept.c_str());
    TrimRight(kept.c_str());
}

void String::MakeLower() {
    for (char& c : text_) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

void String::MakeUpper() {
    for (char& c : text_) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

String String::GetFilename() const {
    char name[2048];
    const std::size_t n = std::min(text_.size(), sizeof name - 1);
    std::memcpy(name, text_.data(), n);
    name[n] = 0;
    FixFilenameString(name);
    return name;
}

void String::Assign(const char* bytes, std::size_t n) {
    if (bytes) {
        text_.assign(bytes, n);
    } else {
        text_.clear();
    }
}

void String::Append(const char* bytes, std::size_t n) {
    if (bytes) text_.append(bytes, n);
}

String operator+(const String& a, const String& b) { return join(view(a), view(b)); }
String operator+(const String& a, const char* b) { return join(view(a), view(b)); }
String operator+(const char* a, const String& b) { return join(view(a), view(b)); }
String operator+(const String& a, char b) { return join(view(a), std::string_view(&b, b ? 1 : 0)); }
String operator+(char a, const String& b) { return join(std::string_view(&a, a ? 1 : 0), view(b)); }

bool operator==(const String& a, const String& b) { return view(a) == view(b); }
bool operator==(const String& a, const char* b) { return view(a) == view(b); }
bool operator==(const char* a, const String& b) { return view(a) == view(b); }
bool operator!=(const String& a, const String& b) { return view(a) != view(b); }
bool operator!=(const String& a, const char* b) { return view(a) != view(b); }
bool operator!=(const char* a, const String& b) { return view(a) != view(b); }
