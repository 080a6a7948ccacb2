// Runs a fuzz target over the files of a folder: replay_inputs TARGET FOLDER. A reader that crashes, hangs or
// breaks what the target checks ends the process.
#include <sys/resource.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

#define PLX_REPLAYED(name) extern "C" int fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "replayed.inc"
#undef PLX_REPLAYED

namespace {

struct Target {
    std::string_view name;
    int (*run)(const std::uint8_t* data, std::size_t size);
};

#define PLX_REPLAYED(name) {#name, fuzz_##name},
constexpr Target kTargets[] = {
#include "replayed.inc"
};
#undef PLX_REPLAYED

/// A reader that asks for more than a small file can need ends the process. The sanitizers have a limit of
/// their own, because they reserve addresses for more than there is.
void limit_memory() {
#ifndef __SANITIZE_ADDRESS__
    const rlimit limit{.rlim_cur = 512U << 20, .rlim_max = 512U << 20};
    setrlimit(RLIMIT_AS, &limit);
#endif
}

}  // namespace

int main(int argc, char** argv) {
    limit_memory();
    int replayed = 0;
    for (const Target& target : kTargets) {
        if (argc != 3 || target.name != argv[1]) continue;
        for (const auto& entry : std::filesystem::directory_iterator(argv[2])) {
            std::fprintf(stderr, "%s\n", entry.path().filename().c_str());
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
            target.run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    return replayed > 0 ? 0 : 1;
}
