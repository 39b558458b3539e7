// Products and inverses with AVX2, each lane in the plain form's order, without fused operations. This file is compiled
// for AVX2: it may include nothing that defines a function.
#include "matrix/kernels/matrices.h"

#include <immintrin.h>

namespace {

using Lanes = __m256d;

Lanes all(double x) { return _mm256_set1_pd(x); }
Lanes times(Lanes a, Lanes b) { return _mm256_mul_pd(a, b); }
Lanes plus(Lanes a, Lanes b) { return _mm256_add_pd(a, b); }
Lanes minus(Lanes a, Lanes b) { return _mm256_sub_pd(a, b); }

// A row at a time: the result may be a, of which a row is read before it is written.
void multiply(const void* first, const void* second, void* result) {
    const auto* a = static_cast<const double*>(first);
    const auto* b = static_cast<const double*>(second);
    auto* to = static_cast<double*>(result);
    const Lanes b0 = _mm256_loadu_pd(b), b1 = _mm256_loadu_pd(b + 4), b2 = _mm256_loadu_pd(b + 8),
                b3 = _mm256_loadu_pd(b + 12);
    for (int i = 0; i < 16; i += 4) {
        const Lanes sum = plus(plus(times(all(a[i]), b0), times(all(a[i + 1]), b1)), times(all(a[i + 2]), b2));
        _mm256_storeu_pd(to + i, plus(sum, times(all(a[i + 3]), b3)));
    }
}

// A column without the row of the lane's number: the first, the second and the third of what is left.
struct Column {
    Lanes p, q, r;
};
Column column(const double* m, int j) {
    const Lanes m0 = all(m[j]), m1 = all(m[4 + j]), m2 = all(m[8 + j]), m3 = all(m[12 + j]);
    return {_mm256_blend_pd(m0, m1, 1), _mm256_blend_pd(m1, m2, 3), _mm256_blend_pd(m2, m3, 7)};
}
// What a minor multiplies the first row with. The other order of columns is not its negative, where it is zero.
Lanes lower(const Column& a, const Column& b) { return minus(times(a.q, b.r), times(a.r, b.q)); }
Lanes minors(const Column& a, const Column& b, const Column& c, Lanes bc, Lanes ca, Lanes ab) {
    return plus(plus(times(a.p, bc), times(b.p, ca)), times(c.p, ab));
}

bool invert(const void* matrix, void* result) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column(m, 0), c1 = column(m, 1), c2 = column(m, 2), c3 = column(m, 3);
    // The minors without column j, one a row that is left out: row j of the adjugate but for its signs.
    const Lanes of01 = lower(c0, c1), of12 = lower(c1, c2), of23 = lower(c2, c3), of30 = lower(c3, c0);
    const Lanes without0 = minors(c1, c2, c3, of23, lower(c3, c1), of12);
    const Lanes without1 = minors(c0, c2, c3, of23, of30, lower(c0, c2));
    const Lanes without2 = minors(c0, c1, c3, lower(c1, c3), of30, of01);
    const Lanes without3 = minors(c0, c1, c2, of12, lower(c2, c0), of01);
    const double determinant = m[0] * _mm256_cvtsd_f64(without0) - m[1] * _mm256_cvtsd_f64(without1) +
                               m[2] * _mm256_cvtsd_f64(without2) - m[3] * _mm256_cvtsd_f64(without3);
    const Lanes evenSigns = _mm256_setr_pd(0.0, -0.0, 0.0, -0.0), oddSigns = _mm256_setr_pd(-0.0, 0.0, -0.0, 0.0);
    Lanes r0 = _mm256_xor_pd(without0, evenSigns), r1 = _mm256_xor_pd(without1, oddSigns),
          r2 = _mm256_xor_pd(without2, evenSigns), r3 = _mm256_xor_pd(without3, oddSigns);
    const bool inverted = !(__builtin_fabs(determinant) < 1e-16);
    if (inverted) {
        const Lanes d = all(determinant);
        r0 = _mm256_div_pd(r0, d), r1 = _mm256_div_pd(r1, d), r2 = _mm256_div_pd(r2, d), r3 = _mm256_div_pd(r3, d);
    }
    auto* to = static_cast<double*>(result);
    _mm256_storeu_pd(to, r0);
    _mm256_storeu_pd(to + 4, r1);
    _mm256_storeu_pd(to + 8, r2);
    _mm256_storeu_pd(to + 12, r3);
    return inverted;
}

}  // namespace

const zan::MatrixKernel zan::kAvx2MatrixKernel = {"AVX2", multiply, invert};
