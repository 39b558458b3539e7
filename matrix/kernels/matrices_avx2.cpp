// The AVX2 kernel of products and inverses. Each lane does the operations of the plain kernel in the same order, none
// fused. This file is compiled for AVX2: it must not include a header that defines a function for other files.
#include "frame/lanes.h"
#include "matrix/kernels/matrices.h"

namespace {

static_assert(kLanes == 4);

// One row at a time. The result may be a, since a row is read before it is written; all of b is read first.
void multiply(const void* first, const void* second, void* result) {
    const auto* a = static_cast<const double*>(first);
    const auto* b = static_cast<const double*>(second);
    auto* to = static_cast<double*>(result);
    const Lanes b0 = load(b), b1 = load(b + 4), b2 = load(b + 8), b3 = load(b + 12);
    for (int i = 0; i < 16; i += 4) {
        store(to + i, a[i] * b0 + a[i + 1] * b1 + a[i + 2] * b2 + a[i + 3] * b3);
    }
}

// A column of the matrix without one element: lane i leaves out row i, and p, q, r are the first, second and third of
// the other three.
struct Column {
    Lanes p, q, r;
};
Column column(const double* m, int j) {
    const Lanes m0 = all(m[j]), m1 = all(m[4 + j]), m2 = all(m[8 + j]), m3 = all(m[12 + j]);
    return {_mm256_blend_pd(m0, m1, 1), _mm256_blend_pd(m1, m2, 3), _mm256_blend_pd(m2, m3, 7)};
}
// The 2 x 2 determinants of the last two rows of a minor, by which the elements of its first row are multiplied.
// determinants2(b, a) is not always -determinants2(a, b): where the products cancel, both are +0.
Lanes determinants2(const Column& a, const Column& b) { return a.q * b.r - a.r * b.q; }
Lanes minors(const Column& a, const Column& b, const Column& c, Lanes bc, Lanes ca, Lanes ab) {
    return a.p * bc + b.p * ca + c.p * ab;
}

bool invert(const void* matrix, void* result) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column(m, 0), c1 = column(m, 1), c2 = column(m, 2), c3 = column(m, 3);
    // Lane i of withoutJ is the minor without row i and column J: row J of the adjugate, apart from its signs.
    const Lanes of01 = determinants2(c0, c1), of12 = determinants2(c1, c2), of23 = determinants2(c2, c3),
                of30 = determinants2(c3, c0);
    const Lanes without0 = minors(c1, c2, c3, of23, determinants2(c3, c1), of12);
    const Lanes without1 = minors(c0, c2, c3, of23, of30, determinants2(c0, c2));
    const Lanes without2 = minors(c0, c1, c3, determinants2(c1, c3), of30, of01);
    const Lanes without3 = minors(c0, c1, c2, of12, determinants2(c2, c0), of01);
    const double determinant = m[0] * without0[0] - m[1] * without1[0] + m[2] * without2[0] - m[3] * without3[0];
    const Lanes evenSigns = _mm256_setr_pd(0.0, -0.0, 0.0, -0.0), oddSigns = _mm256_setr_pd(-0.0, 0.0, -0.0, 0.0);
    Lanes r0 = _mm256_xor_pd(without0, evenSigns), r1 = _mm256_xor_pd(without1, oddSigns),
          r2 = _mm256_xor_pd(without2, evenSigns), r3 = _mm256_xor_pd(without3, oddSigns);
    const bool inverted = !(__builtin_fabs(determinant) < 1e-16);
    if (inverted) {
        r0 /= determinant, r1 /= determinant, r2 /= determinant, r3 /= determinant;
    }
    auto* to = static_cast<double*>(result);
    store(to, r0);
    store(to + 4, r1);
    store(to + 8, r2);
    store(to + 12, r3);
    return inverted;
}

}  // namespace

const zan::MatrixKernel zan::kAvx2MatrixKernel = {.name = "AVX2", .multiply = multiply, .invert = invert};
