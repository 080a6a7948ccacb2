#include "platform/part_file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <string_view>

#include "platform/descriptor.h"
#include "platform/host_path.h"
#include "platform/part_file_system.h"
#include "platform/platform.h"

namespace plx::platform {
namespace {

constexpr std::size_t kPathBytes = 4096;
constexpr int kNoSlot = -1;

/// Names that a signal handler can read at any moment, so they are neither moved nor released.
struct Slot {
    std::atomic<bool> taken{false}, filled{false};
    char path[kPathBytes];
};
static_assert(std::atomic<bool>::is_always_lock_free);

std::array<Slot, 32> slots;
std::atomic<bool> ending{false};

/// Without a free slot the file is written all the same; a signal then leaves it behind.
int remember(const std::string& path) {
    if (path.size() >= kPathBytes) return kNoSlot;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (slots[i].taken.exchange(true)) continue;
        std::memcpy(slots[i].path, path.c_str(), path.size() + 1);
        slots[i].filled.store(true);
        return static_cast<int>(i);
    }
    return kNoSlot;
}

}  // namespace

std::string part_name(const std::string& target) {
    constexpr std::size_t kAdded = sizeof "~.part" - 1;
    const std::size_t cut = target.find_last_of(names_are_native() ? "\\/:" : "/");
    const std::size_t start = cut == std::string::npos ? 0 : cut + 1;
    std::string name = target.substr(start);
    if (target.size() + kAdded > longest_path()) name.resize(name.size() - std::min(name.size(), kAdded));
    return target.substr(0, start) + "~" + name + ".part";
}

int PartFile::create(const std::string& native) {
    remove();
    target_ = native.empty() ? native : follow_links(native);
    if (target_.empty()) return -1;
    const std::string part = part_name(target_);
    // Before the file is there: a signal may come right after.
    slot_ = remember(part);
    const int descriptor = ending ? -1 : create_part(part, target_);
    if (descriptor < 0) {
        forget();
    } else {
        part_ = part;
    }
    return descriptor;
}

std::FILE* PartFile::open(const char* stored, const char* mode) {
    remove();
    const std::string native = stored ? target_path(stored) : "";
    in_place_ = is_device(native);
    if (in_place_) return open_file(stored, mode);
    // A trailing separator names a folder.
    if (native.empty() ||
        std::string_view("/\\").find(stored[std::strlen(stored) - 1]) != std::string_view::npos)
        return nullptr;
    const int descriptor = create(native);
    std::FILE* const stream = descriptor < 0 ? nullptr : stream_of(descriptor, mode);
    if (descriptor >= 0 && !stream) {
        close_descriptor(descriptor);
        remove();
    }
    return stream;
}

bool PartFile::put_in_place() {
    if (in_place_) return true;
    if (part_.empty()) return false;
    const bool moved = move_over(part_, target_);
    if (moved) part_.clear();
    remove();
    return moved;
}

void PartFile::remove() {
    if (!part_.empty()) delete_file(part_.c_str());
    part_.clear();
    in_place_ = false;
    forget();
}

void PartFile::forget() {
    if (slot_ == kNoSlot) return;
    Slot& slot = slots[static_cast<std::size_t>(slot_)];
    slot.filled.store(false);
    slot.taken.store(false);
    slot_ = kNoSlot;
}

void remove_part_files() noexcept {
    ending = true;
    for (const Slot& slot : slots) {
        if (slot.filled) delete_file(slot.path);
    }
}

}  // namespace plx::platform
