#include "formats/discretization.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::ModelTexts texts(input);
    TextRules rules = fuzz::text_rules(input), used;
    rules.hdf5_records = input.flag(7);
    Discretization grid;
    Problems problems;
    const bool known = read_discretization(texts.file(), texts, rules, used, grid, problems);
    // A grid that is known is whole.
    if (known && (grid.tops.size() != static_cast<std::size_t>(grid.size.layers) ||
                  grid.delr.size() != static_cast<std::size_t>(grid.size.columns) ||
                  (grid.bottoms.back() && grid.bottoms.back()->size() != grid.size.per_layer())))
        __builtin_trap();
    if (!known && problems.empty()) __builtin_trap();
    return 0;
}
