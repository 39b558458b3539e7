// Arrays of points with 16-bit and 16.16 coordinates through a matrix, beside loops written by hand and pixman.
#include "matrix_points.h"

#include <cmath>

#ifdef ZAN_BENCH_PIXMAN
#include <pixman.h>
#endif

namespace zan_bench {
namespace {

// The matrices rotate and translate. Their elements are multiples of 2^-16, which pixman's 16.16 matrices hold exactly.

int32_t toFixed(double number) { return static_cast<int32_t>(std::lround(number * 65536)); }

/// Coordinates differ by at most one raw unit: the peers compute in another order and round halves differently.
struct WithinOne {
    template <class Zan, class Peer>
    bool operator()(const ArrayView<Zan>& zan, const ArrayView<Peer>& peer) const {
        for (size_t i = 0; i < zan.count; ++i) {
            const auto near = [](int64_t a, int64_t b) { return std::abs(a - b) <= 1; };
            if (!near(zan.data[i].h, peer.data[i].h) || !near(zan.data[i].v, peer.data[i].v)) return false;
        }
        return true;
    }
};
/// Rounds to the nearest integer, halves away from zero; clamps to the range.
int32_t byLround(double value, double limit) {
    return static_cast<int32_t>(std::lround(std::clamp(value, -limit, limit)));
}
int32_t byCast(double value, double limit) {
    const double inside = std::clamp(value, -limit, limit);
    return static_cast<int32_t>(inside + std::copysign(0.5, inside));
}
template <int32_t (*kRound)(double, double), class Point, class Number>
void transformIntegers(const Zan_Matrix3& m, size_t count, Point* points, double unit, Number limit) {
    const double a = m.m00, b = m.m01, c = m.m10, d = m.m11, tx = m.m20 * unit, ty = m.m21 * unit;
    for (size_t i = 0; i < count; ++i) {
        const double x = points[i].h, y = points[i].v;
        points[i].h = static_cast<Number>(kRound(x * a + y * c + tx, limit));
        points[i].v = static_cast<Number>(kRound(x * b + y * d + ty, limit));
    }
}
template <int32_t (*kRound)(double, double)>
auto shortsByHand(const std::vector<Zan_Matrix3>& matrices, std::vector<Zan_Point>& points) {
    return onArray(matrices, points, [](const Zan_Matrix3& m, size_t count, Zan_Point* p) {
        transformIntegers<kRound, Zan_Point, int16_t>(m, count, p, 1, 32767);
    });
}
template <int32_t (*kRound)(double, double)>
auto fixedByHand(const std::vector<Zan_Matrix3>& matrices, std::vector<Zan_FixedPoint>& points) {
    return onArray(matrices, points, [](const Zan_Matrix3& m, size_t count, Zan_FixedPoint* p) {
        transformIntegers<kRound, Zan_FixedPoint, int32_t>(m, count, p, 65536, 2147483647);
    });
}

}  // namespace

void addMatrixIntegerPoints() {
    static const auto matrices = [] {
        auto m = withInverses(copiedBytes<Zan_Matrix3>(inputs(1, 50, [](Random& random) {
            const double angle = random.real(0.3, 1.2), c = std::cos(angle), s = std::sin(angle);
            return std::array<double, 9>{c, s, 0, -s, c, 0, 3.25, 4.5, 1};
        })));
        for (Zan_Matrix3& matrix : m) {
            for (double* number : {&matrix.m00, &matrix.m01, &matrix.m10, &matrix.m11, &matrix.m20, &matrix.m21}) {
                *number = toFixed(*number) / 65536.0;
            }
        }
        return m;
    }();
    static auto shorts = inputs(kPoints, 46, [](Random& random) {
        return Zan_Point{static_cast<int16_t>(random.integer(-20000, 20000)),
                         static_cast<int16_t>(random.integer(-20000, 20000))};
    });
    static auto shortsLround = shorts, shortsCast = shorts;
    static auto fixed = inputs(kPoints, 47, [](Random& random) {
        return Zan_FixedPoint{random.integer(-0x20000000, 0x20000000), random.integer(-0x20000000, 0x20000000)};
    });
    static auto fixedLround = fixed, fixedCast = fixed;

    Entry("16-bit points, 4,096", 2,
          onArray(matrices, shorts,
                  [](const Zan_Matrix3& m, size_t count, Zan_Point* points) {
                      static_cast<void>(Zan_TransformPoints(&m, static_cast<int32_t>(count), points));
                  }),
          kPoints)
        .peer("by hand, std::lround", shortsByHand<byLround>(matrices, shortsLround), WithinOne())
        .peer("by hand, a cast", shortsByHand<byCast>(matrices, shortsCast), WithinOne())
        .hasKernels();
    Entry fixedEntry("16.16 points, 4,096", 2,
                     onArray(matrices, fixed,
                             [](const Zan_Matrix3& m, size_t count, Zan_FixedPoint* points) {
                                 static_cast<void>(Zan_TransformFixPoints(&m, static_cast<int32_t>(count), points));
                             }),
                     kPoints);
    fixedEntry.peer("by hand, std::lround", fixedByHand<byLround>(matrices, fixedLround), WithinOne())
        .peer("by hand, a cast", fixedByHand<byCast>(matrices, fixedCast), WithinOne())
        .hasKernels();
#ifdef ZAN_BENCH_PIXMAN
    struct PixmanPoint {
        int32_t h, v, one;
    };
    static_assert(sizeof(PixmanPoint) == sizeof(pixman_vector_t));
    static auto pixmanPoints = [] {
        std::vector<PixmanPoint> points;
        for (const Zan_FixedPoint& p : fixed) points.push_back({p.h, p.v, pixman_fixed_1});
        return points;
    }();
    static const auto pixmanMatrices = [] {
        std::vector<pixman_transform_t> all;
        for (const Zan_Matrix3& m : matrices) {
            all.push_back({{{toFixed(m.m00), toFixed(m.m10), toFixed(m.m20)},
                            {toFixed(m.m01), toFixed(m.m11), toFixed(m.m21)},
                            {0, 0, pixman_fixed_1}}});
        }
        return all;
    }();
    fixedEntry.peer("pixman",
                    onArray(pixmanMatrices, pixmanPoints,
                            [](const pixman_transform_t& m, size_t count, PixmanPoint* points) {
                                for (size_t i = 0; i < count; ++i) {
                                    pixman_vector_t v = {{points[i].h, points[i].v, points[i].one}};
                                    pixman_transform_point_3d(&m, &v);
                                    points[i] = {v.vector[0], v.vector[1], v.vector[2]};
                                }
                            }),
                    WithinOne());
#endif
}

}  // namespace zan_bench
