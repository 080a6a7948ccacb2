#include "plxutils/core/VXDebugTimer.h"

#include "platform/platform.h"

VXDebugTimer::VXDebugTimer() : start_(0), frequency_(plx::platform::clock_frequency()), accumulated_(0) {}

void VXDebugTimer::start() { start_ = plx::platform::clock_count(); }

// Without a start the whole counter is added; profiling scripts detect a missing start by it.
void VXDebugTimer::stop() { accumulated_ += plx::platform::clock_count() - start_; }

// An integer division on purpose: hosts compare whole seconds.
double VXDebugTimer::seconds() const { return static_cast<double>(accumulated_ / frequency_); }

void VXDebugTimer::reset() { start_ = accumulated_ = 0; }
