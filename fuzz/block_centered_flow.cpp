#include "formats/block_centered_flow.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::ModelTexts texts(input);
    const TextRules rules = fuzz::text_rules(input);
    TextRules used;
    Problems problems;
    BlockCenteredFlow flow;
    double dry_head = 0.0;
    bool free_used = false;
    read_flow_package_dry_head(*texts.unit(14), dry_head);
    read_block_centered_flow(texts.file(), texts, rules, used, {2, 3, 4}, input.flag(6), input.flag(7),
                             free_used, flow, problems);
    return 0;
}
