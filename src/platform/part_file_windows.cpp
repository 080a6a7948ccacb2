#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <memory>

#include "platform/part_file.h"
#include "platform/part_file_system.h"

namespace plx::platform {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct CloseHandleOf {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

/// An existing file; null when it cannot be opened so.
Handle open_existing(const std::string& native, DWORD access) {
    const HANDLE handle = CreateFileA(native.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

}  // namespace

std::size_t longest_path() { return MAX_PATH - 1; }

std::string follow_links(const std::string& native) {
    const DWORD attributes = GetFileAttributesA(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) return native;
    const Handle file = open_existing(native, FILE_READ_ATTRIBUTES);
    if (!file) return native;
    std::string path(32768, '\0');
    path.resize(GetFinalPathNameByHandleA(file.get(), path.data(), static_cast<DWORD>(path.size()), 0));
    return path.empty() ? native : path;
}

bool is_device(const std::string& native) {
    const Handle file = open_existing(native, FILE_READ_ATTRIBUTES);
    return file && GetFileType(file.get()) != FILE_TYPE_DISK;
}

int create_part(const std::string& part, const std::string& target) {
    if (GetFileAttributesA(target.c_str()) != INVALID_FILE_ATTRIBUTES &&
        !open_existing(target, GENERIC_WRITE))
        return -1;
    DeleteFileA(part.c_str());
    // Sharing the right to delete lets a console handler remove the file while it is open.
    const HANDLE file = CreateFileA(part.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY);
    if (descriptor < 0) CloseHandle(file);
    return descriptor;
}

bool move_over(const std::string& part, const std::string& target) {
    return MoveFileExA(part.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

void delete_file(const char* native) noexcept { DeleteFileA(native); }

}  // namespace plx::platform
