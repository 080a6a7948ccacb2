#include "formats/mt3d_settings.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const std::string path = fuzz::write_file("site.mts", input.bytes());
    Mt3dSettings settings;
    Problems problems;
    if (!read_mt3d_settings(VXFile(path.c_str()), settings, problems)) __builtin_trap();
    return 0;
}
