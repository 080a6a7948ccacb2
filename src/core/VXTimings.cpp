#include "plxutils/core/VXTimings.h"

#include <cstdio>

namespace {
const char* plural(int n) { return n == 1 ? "" : "s"; }
}  // namespace

VXTimings::VXTimings(double duration) { setSeconds(duration); }

VXTimings::VXTimings(double start, double end) { setSeconds(end - start); }

void VXTimings::setSeconds(double duration) {
    seconds = duration;
    minutes = seconds / 60;
    hours = minutes / 60;
    UpdateText();
}

void VXTimings::UpdateText() {
    if (hours > 4) {
        std::snprintf(text, sizeof text, "%.2lf hours", hours);
    } else if (minutes >= 90) {
        const int h = static_cast<int>(hours);
        const int m = static_cast<int>(minutes) - 60 * h;
        std::snprintf(text, sizeof text, "%d hour%s, %d minute%s", h, plural(h), m, plural(m));
    } else if (minutes >= 1) {
        const int m = static_cast<int>(minutes);
        const int s = static_cast<int>(seconds) - 60 * m;
        std::snprintf(text, sizeof text, "%d minute%s, %d second%s", m, plural(m), s, plural(s));
    } else if (seconds >= 1) {
        const int s = static_cast<int>(seconds);
        std::snprintf(text, sizeof text, "%d second%s", s, plural(s));
    } else if (seconds >= 0.5) {
        std::snprintf(text, sizeof text, "%.1lf seconds", seconds);
    } else {
        // Two decimals also for the shortest times, where three would tell more: hosts show the text as it
        // is.
        std::snprintf(text, sizeof text, "%.2lf seconds", seconds);
    }
}
