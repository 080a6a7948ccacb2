#include "formats/visual_modflow.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const auto parts = input.parts(2);
    VisualUnits units;
    Problems warnings;
    if (!read_vmf(VXFile(fuzz::write_file("site.vmf", parts[0]).c_str()), units, warnings)) __builtin_trap();
    const fuzz::OpenFile file = fuzz::open_bytes(parts[1]);
    TextSource in(file.get(), "site.vmg");
    VisualGrid grid;
    const auto fault = read_vmg(in, grid);
    if (!fault && (grid.column_edges.size() != static_cast<std::size_t>(grid.size.columns) + 1 ||
                   grid.status.size() != static_cast<std::size_t>(grid.size.layers) ||
                   grid.surfaces.size() != static_cast<std::size_t>(grid.size.layers) + 1))
        __builtin_trap();
    return 0;
}
