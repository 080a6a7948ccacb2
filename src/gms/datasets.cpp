#include "gms/datasets.h"

#include <algorithm>
#include <utility>

namespace plx {

void StepFlags::take(TimeStep& step, std::vector<unsigned char> flags) {
    described_ = step.numCells = step.numDescribed = static_cast<int>(flags.size());
    step.status = status_ = std::make_shared<const std::vector<unsigned char>>(std::move(flags));
    any_ = true;
}

void StepFlags::derive(TimeStep& step, int cells) {
    step.numCells = cells;
    described_ = any_ ? std::min(described_, cells) : cells;
    step.numDescribed = described_;
    step.status = status_;
    any_ = true;
}

}  // namespace plx
