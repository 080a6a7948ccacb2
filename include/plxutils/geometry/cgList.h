#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/cgBox.h"
#include "plxutils/geometry/cgElement.h"

/// Base of the lists of elements.
class PLX_EXPORT cgList {
public:
    /// Bounding box of the elements.
    virtual cgBox GetExtents() const = 0;
    /// Adds a copy at the front or at the end; an element of another kind is ignored.
    virtual void prepend(const cgElement& e) = 0;
    virtual void append(const cgElement& e) = 0;

protected:
    cgList() = default;
    cgList(const cgList&) = default;
    cgList& operator=(const cgList&) = default;
    ~cgList() = default;
};
