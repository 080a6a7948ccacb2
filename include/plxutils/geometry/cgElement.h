#pragma once

#include "plxutils/export.h"

class cgPoint;

/// Base of all geometric elements: what a distance can be measured to.
class PLX_EXPORT cgElement {
public:
    cgElement(const cgElement&) = default;
    cgElement& operator=(const cgElement&) = default;
    /// Distance from the element to p.
    virtual double GetDistance(const cgPoint& p) const = 0;

protected:
    cgElement() = default;
    ~cgElement() = default;
};
