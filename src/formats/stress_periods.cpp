#include "formats/stress_periods.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace plx {

int StressPeriods::total_steps() const {
    long long total = 0;
    for (const StressPeriod& period : periods) total += std::max(period.steps, 0);
    return static_cast<int>(std::min<long long>(total, INT_MAX));
}

int StressPeriods::largest_steps() const {
    int largest = 0;
    for (const StressPeriod& period : periods) largest = std::max(largest, period.steps);
    return largest;
}

namespace {

/// Part of a period that has passed after `done` of its steps, each `ratio` times as long as the one before.
double elapsed_part(int done, int steps, double ratio) {
    if (done >= steps) return 1.0;
    if (!(ratio > 0.0) || ratio == 1.0) return static_cast<double>(done) / steps;
    if (ratio < 1.0) return (1.0 - std::pow(ratio, done)) / (1.0 - std::pow(ratio, steps));
    // The powers of a ratio above 1 overflow; those of its inverse do not.
    return std::pow(ratio, done - steps) * (1.0 - std::pow(ratio, -done)) / (1.0 - std::pow(ratio, -steps));
}

}  // namespace

double StressPeriods::end_time(int period, int step) const {
    if (period < 0 || static_cast<std::size_t>(period) >= periods.size()) return -1.0;
    const StressPeriod& last = periods[static_cast<std::size_t>(period)];
    if (step < 0 || step >= last.steps) return -1.0;
    double start = 0.0;
    for (int i = 0; i < period; ++i) start += periods[static_cast<std::size_t>(i)].length;
    return start + last.length * elapsed_part(step + 1, last.steps, last.multiplier);
}

}  // namespace plx
