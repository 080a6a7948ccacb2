#include "formats/super_file.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const std::string path = fuzz::write_file("site.mfs", input.bytes());
    SuperFile super;
    Problems problems;
    if (!read_super_file(VXFile(path.c_str()), super, problems)) __builtin_trap();
    return 0;
}
