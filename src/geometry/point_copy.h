#pragma once

#include "plxutils/geometry/cgPoint.h"

namespace plx {

/// Assignment without the copy that cgPoint::operator= returns.
inline void copy_point(cgPoint& to, const cgPoint& from) {
    to.SetPoint(from.x(), from.y(), from.z(), from.num_data(), from.data());
}

}  // namespace plx
