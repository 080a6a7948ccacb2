#include "formats/transport_package.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const fuzz::OpenFile file = fuzz::open_bytes(input.bytes());
    TextSource in(file.get(), "site.btn");
    const GridSize grid{2, 3, 4};
    std::vector<double> porosity;
    Problems problems;
    const bool read = read_package_porosity(in, grid, input.flag(0), porosity, problems);
    if (porosity.size() != (read ? grid.cells() : 0) || (!read && problems.empty())) __builtin_trap();
    return 0;
}
