#pragma once

#include "plxutils/export.h"

/// A duration in three units and as a readable text.
class PLX_EXPORT VXTimings {
public:
    double seconds, minutes, hours;
    /// NUL-terminated: "5.00 hours", "1 hour, 30 minutes", "2 minutes, 1 second", "12 seconds", "0.7
    /// seconds".
    char text[1024];

    VXTimings(double seconds);
    /// The duration end - start, both in seconds.
    VXTimings(double start, double end);
    /// Sets the three units and the text.
    void setSeconds(double seconds);
    /// Rebuilds the text from the three units.
    void UpdateText();
};
