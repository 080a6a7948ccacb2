#pragma once

#include <cstdint>

#include "plxutils/core/VXTimings.h"
#include "plxutils/export.h"

/// Wall-clock time since construction or the last reset, from a monotonic clock.
class PLX_EXPORT VXTimer {
public:
    VXTimer();
    void reset();
    double seconds() const;
    VXTimings timings() const;
    /// Prints "[%lf secs]" and a line end with seconds() to standard output.
    void print() const;

private:
    std::int64_t frequency, start;
};
