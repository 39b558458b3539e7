// Convex hulls by CGAL, with exact predicates.
#ifndef ZAN_BENCH_PEERS_CGAL_H
#define ZAN_BENCH_PEERS_CGAL_H

#include "entries.h"
#include "tests/support/vectors.h"

#include <memory>
#include <vector>

namespace zan_bench {

using Cloud = std::vector<Vector2>;

/// Holds the clouds as CGAL's points. A call returns the vertices of one cloud's hull.
class CgalHulls {
public:
    explicit CgalHulls(const std::vector<Cloud>& clouds);
    ArrayView<Vector2> operator()(size_t i) const;

private:
    struct Points;
    std::shared_ptr<Points> points_;
};

}  // namespace zan_bench

#endif  // ZAN_BENCH_PEERS_CGAL_H
