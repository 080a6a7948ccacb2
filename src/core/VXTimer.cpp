#include "plxutils/core/VXTimer.h"

#include <cstdio>

#include "platform/platform.h"

VXTimer::VXTimer() : frequency(plx::platform::clock_frequency()), start(plx::platform::clock_count()) {}

void VXTimer::reset() { start = plx::platform::clock_count(); }

double VXTimer::seconds() const {
    return static_cast<double>(plx::platform::clock_count() - start) / static_cast<double>(frequency);
}

VXTimings VXTimer::timings() const { return VXTimings(seconds()); }

void VXTimer::print() const { std::printf("[%lf secs]\n", seconds()); }
