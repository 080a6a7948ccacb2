#include "gms/dataset_summary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "gms/data_column.h"
#include "gms/names.h"

namespace plx {

namespace {

GmsDatasetSummary describe(const GMSDataSet& dataset) {
    GmsDatasetSummary summary;
    summary.name = dataset.name;
    summary.object_type = gms_type_word(dataset.objectType);
    summary.object_id = dataset.objectId;
    summary.components = dataset.components;
    ValueRange range;
    for (int i = 0; i < dataset.timeSteps.GetCount(); ++i) {
        const TimeStep& step = *dataset.timeSteps.GetAt(i);
        summary.times.push_back(step.time);
        summary.components = std::max(summary.components, step.components);
        summary.values = std::max<std::int64_t>(summary.values, step.numValues);
        for (int k = 0; k < step.numValues; ++k) range.add(step.Value(k, 0));
    }
    range.store(summary);
    return summary;
}

}  // namespace

const char* gms_type_word(int object_type) {
    constexpr std::array<const char*, 9> kWords = {"",       "tin",    "bhole",  "mesh2d", "grid2d",
                                                   "scat2d", "mesh3d", "grid3d", "scat3d"};
    const bool known = object_type > 0 && object_type < static_cast<int>(kWords.size());
    return kWords[known ? static_cast<std::size_t>(object_type) : 0];
}

void ValueRange::add(double value) {
    if (!std::isfinite(value) || value == kMissingValue) return;
    min_ = any_ ? std::min(min_, value) : value;
    max_ = any_ ? std::max(max_, value) : value;
    any_ = true;
}

void ValueRange::store(GmsDatasetSummary& summary) const {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    summary.min = any_ ? min_ : kNone;
    summary.max = any_ ? max_ : kNone;
}

bool describe_datasets(GMStoPLX& converter, const std::string& name, std::vector<GmsDatasetSummary>& out) {
    const bool complete = converter.AddDataSet(name.c_str());
    for (const auto& dataset : converter.dataSets) {
        out.push_back(describe(*dataset));
        out.back().file = last_component(name);
    }
    converter.dataSets.clear();
    return complete;
}

}  // namespace plx
