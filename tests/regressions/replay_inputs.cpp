// Runs a fuzz target over the files of a folder: replay_inputs TARGET FOLDER. A reader that crashes, hangs or
// breaks what the target checks ends the process.
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

}  // namespace

int main(int argc, char** argv) {
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
