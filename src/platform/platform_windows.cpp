#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <io.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <windows.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "platform/device_names.h"
#include "platform/ini_default.h"
#include "platform/platform.h"

namespace plx::platform {
namespace {

/// Calls a system function that fills a buffer and gives the length, or the size it needs.
template <class Fill>
std::string text_of(Fill fill) {
    std::vector<char> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = fill(buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) return "";
        if (length < buffer.size()) return std::string(buffer.data(), length);
        buffer.resize(std::max<std::size_t>(length + 1, buffer.size() * 2));
    }
}

std::string lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

}  // namespace

bool names_are_native() { return true; }

std::FILE* open_file(const char* stored, const char* mode) {
    if (!stored || !mode || !*stored) return nullptr;
    const DWORD attributes = GetFileAttributesA(stored);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) return nullptr;
    // Reading the console would wait for somebody to type.
    const std::string_view name(stored);
    if (*mode == 'r' && is_device_name(name.substr(name.find_last_of("/\\") + 1))) return nullptr;
    return std::fopen(stored, mode);
}

FileFacts find_file(const char* stored) {
    FileFacts found;
    if (!stored || !*stored) return found;
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA(stored, &entry);
    if (search == INVALID_HANDLE_VALUE) return found;
    FindClose(search);
    found.exists = true;
    found.read_only = (entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    found.directory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!found.directory) {
        ULARGE_INTEGER size;
        size.HighPart = entry.nFileSizeHigh;
        size.LowPart = entry.nFileSizeLow;
        found.size = static_cast<std::int64_t>(size.QuadPart);
    }
    return found;
}

std::optional<std::vector<std::string>> folder_names(const char* stored) {
    std::vector<std::string> names;
    if (!stored || !*stored) return names;
    const DWORD attributes = GetFileAttributesA(stored);
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) return names;
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA((std::string(stored) + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return std::nullopt;
    do {
        const std::string name = lower(entry.cFileName);
        if (name != "." && name != "..") names.push_back(name);
    } while (FindNextFileA(search, &entry));
    const bool complete = GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    if (!complete) return std::nullopt;
    return names;
}

bool make_directory(const char* stored) {
    if (!stored || !*stored) return false;
    if (CreateDirectoryA(stored, nullptr)) return true;
    const DWORD attributes = GetFileAttributesA(stored);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool replace_move(const char* from_stored, const char* to_stored) {
    if (!from_stored || !to_stored) return false;
    return MoveFileExA(from_stored, to_stored, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED) != 0;
}

bool is_regular_file(const std::string& native) {
    const HANDLE file = CreateFileA(native.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    // A folder does not open without FILE_FLAG_BACKUP_SEMANTICS.
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool regular = GetFileType(file) == FILE_TYPE_DISK;
    CloseHandle(file);
    return regular;
}

std::string utf8_path(const std::string& native) {
    const auto size = [](int length) { return static_cast<std::size_t>(std::max(length, 0)); };
    const int bytes = static_cast<int>(native.size());
    std::wstring wide(size(MultiByteToWideChar(CP_ACP, 0, native.data(), bytes, nullptr, 0)), L'\0');
    const int units = static_cast<int>(wide.size());
    MultiByteToWideChar(CP_ACP, 0, native.data(), bytes, wide.data(), units);
    std::string text(size(WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr)),
                     '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, text.data(), static_cast<int>(text.size()), nullptr,
                        nullptr);
    return text;
}

std::string full_path(const std::string& name) {
    const std::string full = text_of(
        [&](char* buffer, DWORD size) { return GetFullPathNameA(name.c_str(), size, buffer, nullptr); });
    return full.empty() ? name : full;
}

std::string command_line() { return GetCommandLineA(); }

std::string system_drive() {
    return text_of([](char* buffer, DWORD size) { return GetSystemDirectoryA(buffer, size); }).substr(0, 2);
}

std::string executable_path() {
    return text_of([](char* buffer, DWORD size) { return GetModuleFileNameA(nullptr, buffer, size); });
}

std::string environment(const char* name) {
    if (!name) return "";
    return text_of([&](char* buffer, DWORD size) { return GetEnvironmentVariableA(name, buffer, size); });
}

bool seek(std::FILE* file, std::int64_t offset, int origin) {
    return file && _fseeki64(file, offset, origin) == 0;
}

std::int64_t tell(std::FILE* file) { return file ? _ftelli64(file) : -1; }

std::int64_t file_size(std::FILE* file) {
    struct _stat64 facts;
    if (!file || _fstat64(_fileno(file), &facts) != 0 || (facts.st_mode & _S_IFMT) != _S_IFREG) return -1;
    return std::max<std::int64_t>(facts.st_size, tell(file));
}

std::int64_t clock_count() {
    LARGE_INTEGER count;
    QueryPerformanceCounter(&count);
    return count.QuadPart;
}

std::int64_t clock_frequency() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return frequency.QuadPart;
}

std::string ini_value(const char* stored_file, const char* section, const char* key, const char* fallback) {
    // Not left to the system, which does not cut what it does not look for.
    const std::string otherwise(ini_default(fallback));
    if (!stored_file || !*stored_file || !section || !key) return otherwise;
    // A name without a folder would be looked for in the Windows directory.
    const std::string file = full_path(stored_file);
    std::vector<char> value(32768);
    const DWORD length = GetPrivateProfileStringA(section, key, otherwise.c_str(), value.data(),
                                                  static_cast<DWORD>(value.size()), file.c_str());
    return std::string(value.data(), length);
}

}  // namespace plx::platform
