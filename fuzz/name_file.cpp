#include "formats/name_file.h"
#include "plxutils/converters/ModelKind.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const std::string path = fuzz::write_file("site.nam", input.bytes());
    std::vector<NameFileEntry> entries;
    if (!read_name_file(VXFile(path.c_str()), entries)) __builtin_trap();
    find_model_kind(path);
    return 0;
}
