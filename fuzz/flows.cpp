#include "converters/flow_results.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::SmallModel small(input);
    small.open_flows(input.bytes());
    small.model.flow_units = {51};
    if (begin_flow_scan(small.model)) scan_flows(small.model, input.flag(1));
    small.load_some_flows(&load_flows);
    return 0;
}
