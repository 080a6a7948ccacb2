#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/part_file.h"
#include "platform/part_file_system.h"

namespace plx::platform {

std::size_t longest_path() { return PATH_MAX - 1; }

std::string follow_links(const std::string& native) {
    constexpr int kMostLinks = 40;
    std::filesystem::path path = native;
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) return path.string();
        path = path.parent_path() / next;
    }
    return "";
}

bool is_device(const std::string& native) {
    struct stat facts;
    return stat(native.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode) && !S_ISDIR(facts.st_mode);
}

int create_part(const std::string& part, const std::string& target) {
    struct stat old;
    const bool replaces = stat(target.c_str(), &old) == 0;
    if (replaces) {
        // Only opening tells whether it may be written: neither mode nor access() know enough.
        const int writable = open(target.c_str(), O_WRONLY | O_CLOEXEC);
        if (writable < 0) return -1;
        close(writable);
    }
    unlink(part.c_str());
    const int descriptor = open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0 && replaces) {
        // Giving a file away is the super-user's; others keep what they made.
        [[maybe_unused]] const int owner = fchown(descriptor, old.st_uid, old.st_gid);
        fchmod(descriptor, old.st_mode & 0777);
    }
    return descriptor;
}

bool move_over(const std::string& part, const std::string& target) {
    return std::rename(part.c_str(), target.c_str()) == 0;
}

void delete_file(const char* native) noexcept { unlink(native); }

}  // namespace plx::platform
