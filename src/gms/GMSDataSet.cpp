#include "plxutils/gms/GMSDataSet.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <utility>

#include "gms/data_column.h"

double TimeStep::Value(int index, int component) const {
    if (index < 0 || index >= numValues || component < 0 || component >= components)
        return plx::kMissingValue;
    return values[index][component];
}

bool TimeStep::Active(int cell) const {
    if (cell < 0 || cell >= numCells || cell >= numDescribed) return false;
    if (!status) return true;
    const auto i = static_cast<std::size_t>(cell);
    return i < status->size() && (*status)[i] != 0;
}

// Plain arrays, because a vector would write zeros over memory that is filled right afterwards.
void TimeStep::Grow(std::size_t rows) {
    const auto width = static_cast<std::size_t>(components);
    const auto used = static_cast<std::size_t>(numValues);
    std::unique_ptr<double[]> block(new double[rows * width]);
    std::unique_ptr<double*[]> table(new double*[rows]);
    std::copy_n(block_.get(), used * width, block.get());
    for (std::size_t i = 0; i < used; ++i) table[i] = block.get() + i * width;
    block_ = std::move(block);
    rows_ = std::move(table);
    capacity_ = rows;
    values = rows_.get();
}

double* TimeStep::AddRows(int rows) {
    const auto used = static_cast<std::size_t>(numValues);
    const std::size_t wanted = used + static_cast<std::size_t>(std::max(rows, 0));
    if (wanted > capacity_ || !block_) Grow(std::max(wanted, capacity_ + capacity_ / 2));
    const auto width = static_cast<std::size_t>(components);
    for (std::size_t i = used; i < wanted; ++i) values[i] = block_.get() + i * width;
    numValues = static_cast<int>(wanted);
    return block_.get() + used * width;
}

void TimeStep::KeepRows(int rows) { numValues = std::clamp(rows, 0, numValues); }

TimeStep* TimeStepMap::Set(std::unique_ptr<TimeStep> step) {
    TimeStep* const entered = step.get();
    const auto known = by_time_.find(entered->time);
    if (known != by_time_.end()) {
        steps_[known->second] = std::move(step);
        return entered;
    }
    steps_.push_back(std::move(step));
    if (!std::isnan(entered->time)) by_time_.emplace(entered->time, steps_.size() - 1);
    return entered;
}

TimeStep* TimeStepMap::Find(double time) const {
    const auto known = by_time_.find(time);
    return known == by_time_.end() ? nullptr : steps_[known->second].get();
}

TimeStep* TimeStepMap::Nearest(double time) const {
    // An infinite time has no distance from itself.
    if (TimeStep* const exact = Find(time)) return exact;
    TimeStep* nearest = GetAt(0);
    double distance = std::numeric_limits<double>::infinity();
    for (const auto& step : steps_) {
        const double here = std::fabs(step->time - time);
        if (here < distance) {
            distance = here;
            nearest = step.get();
        }
    }
    return nearest;
}

TimeStep* TimeStepMap::GetAt(int i) const {
    return i >= 0 && i < GetCount() ? steps_[static_cast<std::size_t>(i)].get() : nullptr;
}

GMSDataSet::GMSDataSet() : name{} {}

GMSDataSet::~GMSDataSet() { std::printf("DataSet %s deleted\n", name); }

void GMSDataSet::SetName(const char* text, int length) {
    const auto room = static_cast<std::size_t>(std::clamp(length, 0, kNameSize - 1));
    const void* const end = room > 0 ? std::memchr(text, 0, room) : nullptr;
    const std::size_t n =
        end == nullptr ? room : static_cast<std::size_t>(static_cast<const char*>(end) - text);
    if (n > 0) std::memcpy(name, text, n);  // text may be null without a length
    std::memset(name + n, 0, sizeof name - n);
}
