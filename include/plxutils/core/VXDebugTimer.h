#pragma once

#include <cstdint>

#include "plxutils/export.h"

/// Adds up the time spent between start and stop, for profiling sections of code.
class PLX_EXPORT VXDebugTimer {
public:
    VXDebugTimer();
    void start();
    void stop();
    /// Whole seconds, truncated.
    double seconds() const;
    /// Forgets the time added up and the last start.
    void reset();

private:
    std::int64_t start_, frequency_, accumulated_;
};
