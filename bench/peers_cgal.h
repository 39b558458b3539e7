// CGAL as the benchmarks use it: hulls, with predicates that are exact.
#ifndef ZAN_BENCH_PEERS_CGAL_H
#define ZAN_BENCH_PEERS_CGAL_H

#include "entries.h"
#include "zan/types.h"

#include <memory>
#include <vector>

namespace zan_bench {

using Cloud = std::vector<Zan_Vector2T<double>>;

/// The clouds as CGAL's points. A call computes the hull of one and shows its vertices.
class CgalHulls {
public:
    explicit CgalHulls(const std::vector<Cloud>& clouds);
    Array<Zan_Vector2T<double>> operator()(size_t i) const;

private:
    struct Points;
    std::shared_ptr<Points> points_;
};

}  // namespace zan_bench

#endif  // ZAN_BENCH_PEERS_CGAL_H
