#include "converters/head_results.h"
#include "plxutils/converters/ModelSummary.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // Bit 1: the layout of heads in which a gap may stand in place of headers.
    const HeadDialect dialect{.gap = input.flag(1) ? 29 : 0};
    fuzz::SmallModel small(input);
    ModelState& model = small.model;
    small.open(50, "site.hds", input.bytes());
    small.factory.hed_unit = 50;
    scan_heads(model, dialect);
    int loaded = 0;
    for (const auto& [step, positions] : model.heads.positions) {
        model.current = {.period = step.first, .step = step.second};
        load_heads(model, dialect);
        if (model.heads.values.size() != model.size().cells() && !model.heads.values.empty())
            __builtin_trap();
        if (++loaded == 10) break;
    }
    summarize_result_file((fuzz::folder() + "/site.hds").c_str());
    return 0;
}
