#include "geometry/segment_chain.h"

#include <algorithm>
#include <cmath>

namespace plx {

namespace {

constexpr double kMostPieces = 1e6;

/// The segments that continue from `end` in the direction d.
ElementArray<cgSegment> continuation(const cgPoint& end, cgVector d, const cgBox& box, double step) {
    ElementArray<cgSegment> added;
    if (d.Length() > step) d.Normalize(step);
    const double pieces = (box.max - box.min).Length() / d.Length();
    if (!(step > 0.0) || !(pieces < kMostPieces)) return added;
    cgPoint from(end);
    while (box.ContainsPoint(from)) {
        cgPoint to = from + d;
        if (to == from) break;  // the step is lost in the size of the coordinates
        added.emplace_back(from, to);
        from.swap(to);
    }
    return added;
}

}  // namespace

void extend_chain(ElementArray<cgSegment>& chain, const cgBox& box, double step) {
    if (chain.empty()) return;
    const ElementArray<cgSegment> after =
        continuation(chain.back().p1, chain.back().p1 - chain.back().p0, box, step);
    ElementArray<cgSegment> result;
    for (const cgSegment& s :
         continuation(chain.front().p0, chain.front().p0 - chain.front().p1, box, step)) {
        result.emplace_back(s.p1, s.p0);
    }
    std::reverse(result.begin(), result.end());
    result.insert(result.end(), chain.begin(), chain.end());
    result.insert(result.end(), after.begin(), after.end());
    chain.swap(result);
}

void append_pieces(const cgSegment& segment, double step, ElementArray<cgSegment>& out) {
    const double pieces = std::ceil(segment.Length() / step);
    if (!(step > 0.0) || !(pieces > 1.0) || pieces > kMostPieces) {
        out.push_back(cgSegment(segment));
        return;
    }
    const int n = static_cast<int>(pieces);
    const cgVector d = segment.p1 - segment.p0;
    cgPoint from(segment.p0);
    for (int i = 1; i <= n; ++i) {
        cgPoint to = i < n ? segment.p0 + d * (i / pieces) : segment.p1;
        out.emplace_back(from, to);
        from.swap(to);
    }
}

}  // namespace plx
