// Every form of the loops over arrays of points gives the bits of the plain one.
#include "matrix/kernels/points.h"

#include <vector>

#include "frame/processor.h"
#include "values.h"
#include "zan/types.h"

namespace {

struct Row {
    zan::PointTransform transform;
    const char* name;
    int size, components;  // of the matrix, of a point of doubles
    size_t integerBytes;   // of a point of integers, else 0
};
constexpr Row kRows[] = {
    {zan::kAffine2, "affine 2", 3, 2, 0},
    {zan::kProduct3, "product 3", 3, 3, 0},
    {zan::kQuotient3, "quotient 3", 3, 3, 0},
    {zan::kGuardedQuotient3, "guarded quotient 3", 3, 3, 0},
    {zan::kGuardedQuotient2, "guarded quotient 2", 3, 2, 0},
    {zan::kAffine3, "affine 3", 4, 3, 0},
    {zan::kProduct4, "product 4", 4, 4, 0},
    {zan::kReciprocal4, "reciprocal 4", 4, 4, 0},
    {zan::kGuardedReciprocal4, "guarded reciprocal 4", 4, 4, 0},
    {zan::kGuardedReciprocal3, "guarded reciprocal 3", 4, 3, 0},
    {zan::kUnlessNearZero4, "unless near zero 4", 4, 4, 0},
    {zan::kUnlessNearZero3, "unless near zero 3", 4, 3, 0},
    {zan::kRoundedPoint, "16-bit", 3, 0, sizeof(Zan_Point)},
    {zan::kRoundedFixedPoint, "16.16", 3, 0, sizeof(Zan_FixedPoint)},
};
static_assert(std::size(kRows) == zan::kPointTransformCount);

// One point more than count, which nobody may touch.
template <class Number>
bool sameAsPlain(const zan::PointKernel& kernel, const Row& row, const double* m, int32_t count,
                 const std::vector<Number>& points, bool tame) {
    std::vector<Number> plain = points, other = points, alone = points;
    const int32_t plainDone = zan::kPlainPointKernel.loops[row.transform](m, count, plain.data());
    const int32_t done = zan::transformPoints(kernel, row.transform, m, count, other.data());
    for (size_t i = 0; i < points.size(); ++i) {
        if (!sameBits(static_cast<double>(plain[i]), static_cast<double>(other[i]))) return false;
    }
    // Where nothing stops it a kernel is to do all but the last few by itself.
    return done == plainDone && !(tame && kernel.loops[row.transform](m, count, alone.data()) < count - 3);
}

bool sameAsPlain(const zan::PointKernel& kernel, const Row& row, int32_t count, int round, Random& random) {
    // First tame numbers, so that nothing stops; later nasty ones, then a w' (or coordinates) that equal those of x.
    const bool tame = round < 4;
    double m[16];
    for (double& element : m) element = tame ? random.plain(0.25, 0.5) : random.nasty();
    for (int k = 0; k < row.size && round >= 10; ++k) {
        m[k * row.size + row.size - 1] = k == 0 ? 1.0 : 0.0;
        if (row.integerBytes != 0) m[k * row.size] = m[k * row.size + 1] = k == 0 ? 1.0 : k == 2 ? 0.5 : 0.0;
    }
    const size_t points = size_t(count) + 1;
    if (row.integerBytes == 0) {
        std::vector<double> p(points * size_t(row.components));
        for (double& x : p) x = tame ? random.plain(1, 2) : random.nasty();
        return sameAsPlain(kernel, row, m, count, p, tame);
    }
    const auto fill = [&](auto p) {
        for (auto& x : p) {
            const int32_t any = tame ? random.below(20001) - 10000 : random.nastyInt();
            x = static_cast<std::decay_t<decltype(x)>>(any);
        }
        return sameAsPlain(kernel, row, m, count, p, tame);
    };
    if (row.transform == zan::kRoundedPoint) return fill(std::vector<int16_t>(points * 2));
    return fill(std::vector<int32_t>(points * 2));
}

}  // namespace

TEST_CASE("every kernel gives the bits of the plain one") {
    Random random(45);
    CHECK(zan::kPointKernels[0] == &zan::kPlainPointKernel);
    for (const zan::PointKernel* const* kernel = zan::kPointKernels; *kernel != nullptr; ++kernel) {
        if (kernel - zan::kPointKernels > static_cast<int>(zan::supportedInstructions())) {
            WARN((*kernel)->name << " skipped: not on this machine");
            continue;
        }
        for (const Row& row : kRows) {
            for (const int32_t count : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13, 63, 64, 65, 1000}) {
                for (int round = 0; round < 20; ++round) {
                    CAPTURE((*kernel)->name, row.name, count, round);
                    CHECK(sameAsPlain(**kernel, row, count, round, random));
                }
            }
        }
    }
}
