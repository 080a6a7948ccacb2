#pragma once

#include "plxutils/geometry/ElementArray.h"
#include "plxutils/geometry/cgBox.h"
#include "plxutils/geometry/cgSegment.h"

namespace plx {

/// Prolongs a chain of segments at both of its ends while the end point lies in the box (bounds included).
///
/// New segments continue the end segment: with its direction and length, or with length `step` where it is
/// longer. Nothing is added at an end whose segment has no length, for a step that is not above 0, or when
/// crossing the box would take more than a million segments.
void extend_chain(ElementArray<cgSegment>& chain, const cgBox& box, double step);

/// Appends the segment to out in equal pieces not longer than `step`; in one piece for a step that is not
/// above 0 or one that would take more than a million pieces. The inner ends carry the data of p0.
void append_pieces(const cgSegment& segment, double step, ElementArray<cgSegment>& out);

}  // namespace plx
