// Every kernel of the matrices gives the same bits as the plain one.
#include "matrix/kernels/matrices.h"
#include "matrix/kernels/points.h"
#include "property.h"

namespace {

using zan::PointKernel;

// Tame numbers, with which every loop runs to its end; boundary values; matrices that make w equal to x of the
// point (for integer points: each coordinate equal to x plus an element).
enum Kind { kTame, kNasty, kFromX, kKinds };

// Thresholds of the transforms, the doubles next to them, and boundary values.
double element(Choices& c, int32_t kind) {
    static constexpr double kEdges[] = {1e-12, -1e-12, 1e-16, -1e-16, 1.0, -32768.0, 32767.0, 2147483647.0, -0.5};
    if (kind == kTame) return c.plain(0.25, 0.5);
    if (c.below(3) != 0) return c.nasty();
    const double edge = c.among(kEdges), toward[] = {edge, -HUGE_VAL, HUGE_VAL};
    return std::nextafter(edge, c.among(toward));
}

// `size` rows and columns in the matrix, `components` numbers in a point.
template <class Number, int size, int components>
bool points(Choices& c, zan::PointTransform transform) {
    constexpr bool whole = std::is_integral_v<Number>;
    const int32_t kind = c.below(kKinds), step = c.below(21), count = step == 20 ? 1000 : step - 1;
    double m[16];
    for (double& e : m) e = element(c, kind);
    for (int k = 0; k < size && kind == kFromX; ++k) {
        m[k * size + size - 1] = k == 0 ? 1.0 : 0.0;
        if (whole) m[k * size] = m[k * size + 1] = k == 0 ? 1.0 : k == 2 ? element(c, kind) : 0.0;
    }
    // The array starts at any alignment; the numbers before and after it must stay unchanged.
    const int32_t before = c.below(8), numbers = std::max(count, 0) * components;
    const bool ones = kind == kFromX && c.below(2) == 0;
    std::vector<Number> start(size_t(before + numbers + 8), 1);
    for (Number& x : start) {
        if (ones) break;
        if constexpr (whole) x = static_cast<Number>(kind == kTame ? c.below(20001) - 10000 : c.nastyInt());
        if constexpr (!whole) x = kind == kTame ? c.plain(1, 2) : element(c, kind);
    }
    std::vector<Number> plain = start;
    const int32_t done = (zan::kPlainPointKernel.*transform)(m, count, plain.data() + before);
    eachKernel(zan::kPointKernels, zan::kLanesPointKernel, [&](const zan::PointKernel& kernel) {
        std::vector<Number> other = start;
        must((kernel.*transform)(m, count, other.data() + before) == done);
        for (size_t i = 0; i < plain.size(); ++i) must(sameBits(double(plain[i]), double(other[i])));
    });
    return done == count;
}

bool matrices(Choices& c) {
    struct Matrix {
        double e[16];
    };
    // Most elements are from a short list, so that terms cancel to zeros of either sign. One matrix in seven is
    // triangular, with a determinant that is one number of the list.
    const double few[] = {element(c, kNasty), 0.0, -0.0, 1.0, -1.0, 1e-4};
    const int32_t kind = c.below(3), place = c.below(4);
    const bool triangular = c.below(7) == 0;
    const auto some = [&] { return kind == 0 ? c.plain(-1, 1) : few[c.below(kind == 1 ? 6 : 5)]; };
    Matrix a, b, buffer[2];
    for (int i = 0; i < 16; ++i) {
        a.e[i] = !triangular || i / 4 < i % 4 ? some() : i / 4 > i % 4 ? -0.0 : i == 0 ? few[0] : 1.0;
        b.e[i] = some();
    }
    Matrix product, square, inverse;
    zan::kPlainMatrixKernel.multiply(&a, &b, &product);
    zan::kPlainMatrixKernel.multiply(&a, &a, &square);
    const bool inverted = zan::kPlainMatrixKernel.invert(&a, &inverse);
    // The result replaces an argument, at any alignment of a double.
    auto& other = *reinterpret_cast<Matrix*>(buffer[0].e + place);
    eachKernel(zan::kMatrixKernels, zan::kPlainMatrixKernel, [&](const zan::MatrixKernel& kernel) {
        kernel.multiply(&(other = a), &b, &other);
        must(sameDoubles(other, product));
        kernel.multiply(&a, &(other = b), &other);
        must(sameDoubles(other, product));
        kernel.multiply(&(other = a), &other, &other);
        must(sameDoubles(other, square));
        must(kernel.invert(&(other = a), &other) == inverted);
        must(sameDoubles(other, inverse));
    });
    return inverted;
}

struct Row {
    zan::PointTransform transform;
    bool (*check)(Choices&, zan::PointTransform);
};
constexpr Row kRows[] = {
    {&PointKernel::planeAffine, points<double, 3, 2>},
    {&PointKernel::planeProduct, points<double, 3, 3>},
    {&PointKernel::planeDivide, points<double, 3, 3>},
    {&PointKernel::planeCheckedDivide, points<double, 3, 3>},
    {&PointKernel::planeCheckedDivideXY, points<double, 3, 2>},
    {&PointKernel::spaceAffine, points<double, 4, 3>},
    {&PointKernel::spaceProduct, points<double, 4, 4>},
    {&PointKernel::spaceDivide, points<double, 4, 4>},
    {&PointKernel::spaceCheckedDivide, points<double, 4, 4>},
    {&PointKernel::spaceCheckedDivideXYZ, points<double, 4, 3>},
    {&PointKernel::spaceDivideUnlessNearZero, points<double, 4, 4>},
    {&PointKernel::spaceDivideUnlessNearZeroXYZ, points<double, 4, 3>},
    {&PointKernel::planeRound16, points<int16_t, 3, 2>},
    {&PointKernel::planeRoundFixed, points<int32_t, 3, 2>},
    {&PointKernel::spaceClamp16, points<int16_t, 4, 2>},
};
static_assert(sizeof(PointKernel) == sizeof(const char*) + std::size(kRows) * sizeof(zan::PointLoop));

const Property kMatrices("matrix_products", 30000, matrices);
const Property kPoints("matrix_points", 30000, [](Choices& c) {
    const Row& row = c.among(kRows);
    return row.check(c, row.transform);
});

}  // namespace
