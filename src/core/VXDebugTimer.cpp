#include "plxutils/core/VXDebugTimer.h"

#include "platform/platform.h"

VXDebugTimer::VXDebugTimer() : start_(0), frequency_(plx::platform::clock_frequency()), accumulated_(0) {}

void VXDebugTimer::start() { start_ = plx::platform::clock_count(); }

// Without a start the whole counter is added; profiling scripts detect a missing start by it.
void VXDebugTimer::stop() { accumulated_ += plx::platform::clock_count() - start_; }

double VXDebugTimer::seconds() const {
    // Rounded down on purpose: hosts compare whole seconds.
    const std::int64_t whole = accumulated_ / frequency_;
    return static_cast<double>(whole);
}

void VXDebugTimer::reset() { start_ = accumulated_ = 0; }
