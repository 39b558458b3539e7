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

/// Filter without division or square root: with a = p.x - end.x, (b, c) = start - end and h = end.y - p.y, the sign of
/// cross = a * c + h * b decides the edge unless |cross| is within the error bound.
///
/// In exact arithmetic, cross = b * (Y - p.y), where Y is the y of the edge's line at p.x. So cross > 0 means that the
/// line is above p when b > 0, and below when b < 0. And |cross| is the edge's length times the distance from p to its
/// line.
///
/// Error bound. Rounding is to nearest, so each operation has a relative error of at most u = 2^-53. Terms in u^2 are
/// left out; the factors below leave room for them. Let P = |a * c| + |h * b|.
/// - In cross, each product has three roundings and the sum one: the error is at most 4u * P.
/// - The exact test calculates Y as a / b * c + end.y. Its product has five roundings and its sum one: the error is at
///   most 5u * |Y - end.y| + u * |Y|. Multiplied by |b| that is at most 6u * P + u * |b| * |p.y|, because
///   |b| * |Y - end.y| = |a * c| <= P, |b| * |Y| <= |b| * |p.y| + |cross| and |cross| <= P.
/// - Together: at most 10u * P + u * |b| * |p.y|. The first term of errorBound, 2^-45 * P = 256u * P, exceeds the first
///   part. The second term is |b| * yTolerance = |b| * (|p.y| + 1) * 2^-39, and 1 % of that exceeds the second part.
/// - So when |cross| > errorBound, the exact test's Y is on the same side of p.y as the exact Y. It differs from p.y by
///   more than 0.99 * yTolerance > (|p.y| + 1) * 1.8e-12, which is more than zan::nearlyEqual admits.
/// - With a tolerance, errorBound has the term margin * (|b| + |c|). The edge's length is at most |b| + |c|, so p is
///   farther than the margin from the edge's line, and so from both ends.
/// - 2^-1000 exceeds what underflow adds. If anything overflows, errorBound is infinite or NaN: the edge is uncertain.
template <bool kTolerant, class Vertex>
EdgeClass classifyEdge(const HitQuery& query, const Vertex& start, const Vertex& end) {
    const bool startsLeft = start.x < query.x, spans = startsLeft != (end.x < query.x);
    if (!kTolerant && !spans) return kNoCrossing;
    const double endX = end.x, endY = end.y;
    const double a = query.x - endX, b = start.x - endX, c = start.y - endY, h = endY - query.y;
    const double ac = a * c, hb = h * b, cross = ac + hb;
    double errorBound = (std::fabs(ac) + std::fabs(hb)) * 0x1p-45 + std::fabs(b) * query.yTolerance + 0x1p-1000;
    if constexpr (kTolerant) errorBound += (std::fabs(b) + std::fabs(c)) * query.margin;
    if (!(std::fabs(cross) > errorBound)) return kUncertain;
    return static_cast<EdgeClass>(unsigned{spans} & (unsigned{cross > 0} ^ unsigned{startsLeft}));
}

}  // namespace zan

#endif  // ZAN_POLY_EDGE_RULES_H
