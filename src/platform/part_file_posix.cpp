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

namespace {

/// Gives a new file what the older one allowed. Giving it away is the super-user's; a group that cannot be
/// kept either loses its rights, for they would be those of another group.
void keep_permissions(int descriptor, const struct stat& old) {
    constexpr mode_t kAll = 0777, kGroup = 070;
    const uid_t same_owner = static_cast<uid_t>(-1);
    const bool kept =
        fchown(descriptor, old.st_uid, old.st_gid) == 0 || fchown(descriptor, same_owner, old.st_gid) == 0;
    fchmod(descriptor, old.st_mode & (kept ? kAll : kAll & ~kGroup));
}

/// In a folder that everybody may write to but nobody may tidy, like /tmp, only links of its owner and of
/// this user count: systems that protect their users follow no others.
bool is_planted(const std::filesystem::path& link) {
    struct stat facts, folder;
    const std::filesystem::path parent = link.has_parent_path() ? link.parent_path() : ".";
    if (lstat(link.c_str(), &facts) != 0 || stat(parent.c_str(), &folder) != 0) return true;
    constexpr mode_t kShared = S_ISVTX | S_IWOTH;
    return (folder.st_mode & kShared) == kShared && facts.st_uid != geteuid() &&
           facts.st_uid != folder.st_uid;
}

}  // namespace

std::size_t longest_path() { return PATH_MAX - 1; }

std::string follow_links(const std::string& native) {
    constexpr int kMostLinks = 40;
    std::filesystem::path path = native;
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) return path.string();
        if (is_planted(path)) return "";
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
        keep_permissions(descriptor, old);
    }
    return descriptor;
}

bool move_over(const std::string& part, const std::string& target) {
    return std::rename(part.c_str(), target.c_str()) == 0;
}

void delete_file(const char* native) noexcept { unlink(native); }

}  // namespace plx::platform
