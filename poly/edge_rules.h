// The plain forms of the hit test's filters: which edges can matter at all, and which side of the point an edge passes
// unless that is too close to decide.
#ifndef ZAN_POLY_EDGE_RULES_H
#define ZAN_POLY_EDGE_RULES_H

#include "poly/kernels/edges.h"

#include <cmath>

namespace zan {

/// Where a vertex lies relative to the point: left of it, and beyond the margin on each side.
enum Outcode : unsigned { kLeft = 1, kFarRight = 2, kFarLeft = 4, kFarAbove = 8, kFarBelow = 16 };

/// NaN is left of nothing and beyond nothing.
template <bool kTolerant, class Vertex>
unsigned outcode(const Vertex& v, const HitQuery& query) {
    const unsigned left = v.x < query.x ? kLeft : 0U;
    if constexpr (!kTolerant) return left;
    const double dx = v.x - query.x, dy = v.y - query.y;
    return left | (dx > query.margin ? kFarRight : 0U) | (dx < -query.margin ? kFarLeft : 0U) |
           (dy > query.margin ? kFarAbove : 0U) | (dy < -query.margin ? kFarBelow : 0U);
}

template <bool kTolerant, class Vertex>
EdgeBits scanEdges(const Vertex* vertices, int32_t edges, const HitQuery& query) {
    EdgeBits bits{};
    unsigned start = outcode<kTolerant>(vertices[0], query);
    for (int32_t i = 0; i < edges; ++i) {
        const unsigned end = outcode<kTolerant>(vertices[i + 1], query);
        bits.spanning |= uint64_t{(start ^ end) & kLeft} << i;
        if constexpr (kTolerant) bits.maybeNear |= uint64_t{(start & end & ~unsigned{kLeft}) == 0} << i;
        start = end;
    }
    return bits;
}

/// Result of the filter for an edge. kUncertain: only the exact test decides. The other two are certain: the edge is
/// not near the point, and it crosses the ray from the point toward increasing y (kAbove) or does not (kNoCrossing).
enum EdgeClass : unsigned { kNoCrossing = 0, kAbove = 1, kUncertain = 2 };

/// Filter without division or square root: the sign of cross = (p.x - end.x) * c + (end.y - p.y) * b, with
/// (b, c) = start - end, decides the edge unless |cross| is within the error bound.
///
/// Exactly, cross is b * (Y - p.y), where Y is the height of the edge's line at p.x, and |cross| is the distance from p
/// to that line times the edge's length. So cross > 0 means above when b > 0 and below when b < 0.
///
/// Error bound. Rounding is to nearest, so each operation has a relative error of at most u = 2^-53; terms in u^2 only
/// make the counts below inexact, and those are rounded up. Let P = |p.x - end.x| * |c| + |end.y - p.y| * |b|.
/// - In cross, each product has three roundings and the sum one: the error is at most 4u * P.
/// - The exact test calculates Y as (p.x - end.x) / b * c + end.y. The product has five roundings and the sum one: the
///   error is at most 5u * |Y - end.y| + u * |Y|. Multiplied by |b| that is at most 6u * P + u * |b| * |p.y|, because
///   |b| * |Y - end.y| = |p.x - end.x| * |c| <= P and |b| * |Y| <= |b| * |p.y| + |cross| and |cross| <= P.
/// - Together that is at most 11u * P + u * |b| * |p.y|. The first term of errorBound is 2^-45 * P = 256u * P. Its
///   second term is |b| * yTolerance = |b| * (|p.y| + 1) * 2^-39, of which 1 % is more than u * |b| * |p.y|. So when
///   |cross| > errorBound, the exact test's Y lies on the same side of p.y as the exact Y and differs from p.y by more
///   than 0.99 * yTolerance > (|p.y| + 1) * 1.8e-12, which is more than zan::nearlyEqual admits.
/// - With a tolerance, errorBound also has the term margin * (|b| + |c|). The edge's length is at most |b| + |c|, so
/// the
///   edge's line is farther from p than the margin, and so are both ends.
/// - 2^-1000 is more than underflow adds. If anything overflows, errorBound is infinite or NaN and the edge uncertain.
template <bool kTolerant, class Vertex>
EdgeClass classifyEdge(const HitQuery& query, const Vertex& start, const Vertex& end) {
    const bool startsLeft = start.x < query.x, spans = startsLeft != (end.x < query.x);
    if (!kTolerant && !spans) return kNoCrossing;
    const double endX = end.x, endY = end.y;
    const double a = query.x - endX, b = start.x - endX, c = start.y - endY;
    const double ac = a * c, hb = (endY - query.y) * b, cross = ac + hb;
    double errorBound = (std::fabs(ac) + std::fabs(hb)) * 0x1p-45 + std::fabs(b) * query.yTolerance + 0x1p-1000;
    if constexpr (kTolerant) errorBound += (std::fabs(b) + std::fabs(c)) * query.margin;
    if (!(std::fabs(cross) > errorBound)) return kUncertain;
    return static_cast<EdgeClass>(unsigned{spans} & (unsigned{cross > 0} ^ unsigned{startsLeft}));
}

}  // namespace zan

#endif  // ZAN_POLY_EDGE_RULES_H
