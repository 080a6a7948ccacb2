#pragma once

#include <map>
#include <utility>
#include <vector>

namespace plx {

struct StressPeriod {
    double length = 0.0;      ///< PERLEN, model time units
    int steps = 0;            ///< NSTP
    double multiplier = 1.0;  ///< TSMULT
    bool steady = false;      ///< "SS" in a discretization file
};

struct StressPeriods {
    std::vector<StressPeriod> periods;
    int total_steps() const;    ///< sum of NSTP, clamped to the int range
    int largest_steps() const;  ///< largest NSTP
    /// Elapsed time at the end of a step (both from 0) by PERLEN, NSTP and TSMULT; -1.0 outside.
    double end_time(int period, int step) const;
};

/// Elapsed time of every saved step by (stress period, step), both from 0. Steps that no result file holds
/// are absent, so that an absurd NSTP costs nothing.
using StepTimes = std::map<std::pair<int, int>, double>;

}  // namespace plx
