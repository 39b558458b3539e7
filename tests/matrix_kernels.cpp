// Every kernel of the matrices gives the bits of the plain one.
#include <vector>

#include "kernels.h"
#include "matrices.h"
#include "matrix/kernels/matrices.h"
#include "matrix/kernels/points.h"

namespace {

struct Row {
    zan::PointTransform transform;
    const char* name;
    int size;        // of the matrix
    int components;  // of a point
};
constexpr Row kDoubles[] = {
    {zan::kAffine2, "affine 2", 3, 2},
    {zan::kProduct3, "product 3", 3, 3},
    {zan::kQuotient3, "quotient 3", 3, 3},
    {zan::kGuardedQuotient3, "guarded quotient 3", 3, 3},
    {zan::kGuardedQuotient2, "guarded quotient 2", 3, 2},
    {zan::kAffine3, "affine 3", 4, 3},
    {zan::kProduct4, "product 4", 4, 4},
    {zan::kReciprocal4, "reciprocal 4", 4, 4},
    {zan::kGuardedReciprocal4, "guarded reciprocal 4", 4, 4},
    {zan::kGuardedReciprocal3, "guarded reciprocal 3", 4, 3},
    {zan::kUnlessNearZero4, "unless near zero 4", 4, 4},
    {zan::kUnlessNearZero3, "unless near zero 3", 4, 3},
};
constexpr Row kPoints = {zan::kRoundedPoint, "16-bit", 3, 2}, kFixedPoints = {zan::kRoundedFixedPoint, "16.16", 3, 2},
              kSpacePoints = {zan::kClampedPoint, "16-bit, of space", 4, 2};
static_assert(std::size(kDoubles) + 3 == zan::kPointTransformCount);

// Tame numbers, with which nothing stops, then nasty ones, then such that w' (or the coordinates) are those of x.
enum Kind { kTame, kNasty, kFromX, kKinds };

// Where a rule changes its mind, one step either side, and anything else.
double element(Random& random, Kind kind) {
    static constexpr double kEdges[] = {1e-12, -1e-12, 1e-16, -1e-16, 1.0, -32768.0, 32767.0, 2147483647.0, -0.5};
    if (kind == kTame) return random.plain(0.25, 0.5);
    if (random.below(3) != 0) return random.nasty();
    const double edge = kEdges[random.below(std::size(kEdges))], toward[] = {edge, -HUGE_VAL, HUGE_VAL};
    return std::nextafter(edge, toward[random.below(3)]);
}
int32_t number(Random& random, Kind kind) { return kind == kTame ? random.below(20001) - 10000 : random.nastyInt(); }

template <class Number>
void compare(const zan::PointKernel& kernel, const Row& row, Random& random) {
    constexpr bool whole = std::is_integral_v<Number>;
    for (const int32_t count : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 1000}) {
        for (int round = 0; round < 24; ++round) {
            const Kind kind = static_cast<Kind>(round % kKinds);
            double m[16];
            for (double& e : m) e = element(random, kind);
            for (int k = 0; k < row.size && kind == kFromX; ++k) {
                m[k * row.size + row.size - 1] = k == 0 ? 1.0 : 0.0;
                if (whole) m[k * row.size] = m[k * row.size + 1] = k == 0 ? 1.0 : k == 2 ? element(random, kind) : 0.0;
            }
            // At every alignment of a number, and nothing on either side is touched.
            const int32_t before = round / kKinds, size = std::max(count, 0) * row.components;
            std::vector<Number> plain(size_t(before + size + 8));
            for (Number& x : plain) {
                if constexpr (whole) x = static_cast<Number>(number(random, kind));
                if constexpr (!whole) x = kind == kTame ? random.plain(1, 2) : element(random, kind);
            }
            if (kind == kFromX && round < 12) std::fill(plain.begin(), plain.end(), Number{1});
            std::vector<Number> other = plain;
            const auto run = [&](const zan::PointKernel& k, std::vector<Number>& points) {
                return k.loops[row.transform](m, count, points.data() + before);
            };
            CAPTURE(kernel.name, row.name, count, round);
            CHECK(run(kernel, other) == run(zan::kPlainPointKernel, plain));
            bool same = true;
            for (size_t i = 0; i < plain.size(); ++i) same &= sameBits(double(plain[i]), double(other[i]));
            CHECK(same);
        }
    }
}

}  // namespace

TEST_CASE("arrays of points by every kernel") {
    Random random(45);
    eachKernel(zan::kPointKernels, zan::kPlainPointKernel, [&](const zan::PointKernel& kernel) {
        for (const Row& row : kDoubles) compare<double>(kernel, row, random);
        compare<int16_t>(kernel, kPoints, random);
        compare<int16_t>(kernel, kSpacePoints, random);
        compare<int32_t>(kernel, kFixedPoints, random);
    });
}

TEST_CASE("products and inverses by every kernel") {
    Random random(46);
    eachKernel(zan::kMatrixKernels, zan::kPlainMatrixKernel, [&](const zan::MatrixKernel& kernel) {
        for (int round = 0; round < 30000; ++round) {
            // Few numbers, so that terms cancel to a zero of either sign; a determinant that is on the threshold.
            const double few[] = {element(random, kNasty), 0.0, -0.0, 1.0, -1.0, 1e-4};
            const auto some = [&](int, int) {
                return round % 3 == 0 ? random.plain(-1, 1) : few[random.below(round % 3 == 1 ? 6 : 5)];
            };
            const auto upper = [&](int i, int j) {
                return i == j ? (i == 0 ? few[0] : 1.0) : i < j ? some(i, j) : -0.0;
            };
            const auto a = round % 7 == 0 ? fill<Zan_Matrix4>(upper) : fill<Zan_Matrix4>(some);
            const auto b = fill<Zan_Matrix4>(some);
            // The result on an argument, at every alignment of a double.
            Zan_Matrix4 plain = a, plainSquare = a, room[2];
            auto& other = *reinterpret_cast<Zan_Matrix4*>(reinterpret_cast<double*>(room) + round % 4);
            CAPTURE(kernel.name, round);
            const auto same = [&](const Zan_Matrix4& expected) { return sameDoubles(expected, other); };
            zan::kPlainMatrixKernel.multiply(&a, &b, &plain);
            kernel.multiply(&(other = a), &b, &other);
            CHECK(same(plain));
            kernel.multiply(&a, &(other = b), &other);
            CHECK(same(plain));
            zan::kPlainMatrixKernel.multiply(&a, &a, &plainSquare);
            kernel.multiply(&(other = a), &other, &other);
            CHECK(same(plainSquare));
            const bool inverted = zan::kPlainMatrixKernel.invert(&a, &plain);
            CHECK(kernel.invert(&(other = a), &other) == inverted);
            CHECK(same(plain));
        }
    });
}
