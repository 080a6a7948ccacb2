#include "converters/link_flows.h"
#include "plxutils/converters/ModelSummary.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::SmallModel small(input);
    ModelState& model = small.model;
    small.open(51, "site.cbb", input.bytes());
    small.factory.ccf_unit = 51;
    scan_link_flows(model);
    int loaded = 0;
    for (const auto& [step, slots] : model.flows.positions) {
        model.current = {.period = step.first, .step = step.second};
        load_link_flows(model);
        for (const TermCells& term : model.flows.terms) {
            for (const int cell : term.cells)
                if (cell < 0 || static_cast<std::size_t>(cell) >= model.size().cells()) __builtin_trap();
        }
        if (++loaded == 10) break;
    }
    summarize_result_file((fuzz::folder() + "/site.cbb").c_str());
    return 0;
}
