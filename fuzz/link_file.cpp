#include "converters/link_flows.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::SmallModel small(input);
    small.open_flows(input.bytes());
    scan_link_flows(small.model);
    small.load_some_flows(&load_link_flows);
    return 0;
}
