// Convex hulls by CGAL, in a separate file since its headers take long to compile.
#include "peers_cgal.h"

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/convex_hull_2.h>

namespace zan_bench {

using Point = CGAL::Exact_predicates_inexact_constructions_kernel::Point_2;

struct CgalHulls::Points {
    std::vector<std::vector<Point>> clouds;
    std::vector<Point> hull;
    std::vector<Vector2> result;
};

CgalHulls::CgalHulls(const std::vector<Cloud>& clouds) : points_(std::make_shared<Points>()) {
    for (const Cloud& cloud : clouds) {
        auto& points = points_->clouds.emplace_back();
        for (const auto& p : cloud) points.emplace_back(p.x, p.y);
    }
}

ArrayView<Vector2> CgalHulls::operator()(size_t i) const {
    const std::vector<Point>& cloud = points_->clouds[i];
    points_->hull.clear();
    CGAL::convex_hull_2(cloud.begin(), cloud.end(), std::back_inserter(points_->hull));
    points_->result.clear();
    for (const Point& p : points_->hull) points_->result.emplace_back(p.x(), p.y());
    return viewOf(points_->result);
}

}  // namespace zan_bench
