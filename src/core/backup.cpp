#include <cstring>
#include <string>

#include "core/c_boundary.h"
#include "platform/platform.h"
#include "plxutils/core/VXUtilities.h"

namespace {

constexpr std::size_t kMaxNameBytes = 2048;
constexpr int kMaxNumbered = 10;

int rotate(const char* name) {
    const std::string newest = std::string(name, strnlen(name, kMaxNameBytes)) + ".backup";
    const auto generation = [&](int k) { return k == 0 ? newest : newest + std::to_string(k); };
    const auto move = [](const std::string& from, const std::string& to) {
        return plx::platform::replace_move(from.c_str(), to.c_str());
    };

    int taken = 0;
    while (taken < kMaxNumbered && FileExists(generation(taken).c_str())) ++taken;
    for (int k = taken - 1; k >= 0; --k) move(generation(k), generation(k + 1));
    return move(name, newest) ? 1 : 0;
}

}  // namespace

bool FileExists(const char* name) {
    return plx::guarded(false, [name] { return plx::platform::find_file(name).exists; });
}

int BackupFile(const char* name) {
    if (!name) return 0;
    return plx::guarded(0, [name] { return rotate(name); });
}
