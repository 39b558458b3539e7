// Inverses: of a Zan_Matrix3 by elimination, of a Zan_Matrix4 by its adjugate; the adjugate and the normal matrix.
#include "frame/report.h"
#include "matrix/elements.h"
#include "matrix/kernels/matrices.h"

#include <cmath>
#include <cstddef>

namespace {

constexpr double kSmallestPivot = 1e-20;

// A row of the matrix under elimination, and of the inverse that grows beside it. Columns of the inverse are in the
// order of the pivots; `source` is the row's index in the input.
struct Row {
    double a[3];
    double inverse[3];
    std::ptrdiff_t source;
};

// Returns 0 or 1 so that the pivot search indexes instead of branching: the pivot row is unpredictable.
int absGreater(double a, double b) { return std::fabs(a) > std::fabs(b) ? 1 : 0; }
template <class T>
void swapIf(int swapped, T& a, T& b) {
    const T both[] = {a, b};
    a = both[swapped];
    b = both[1 - swapped];
}

// One step of Gauss-Jordan elimination; false when the pivot is too small. The step is a template argument so that all
// indices are constants and the rows stay in registers.
template <int step>
bool eliminate(Row (&rows)[3]) {
    Row& pivot = rows[step];
    if (std::fabs(pivot.a[step]) < kSmallestPivot) return false;
    const double k = 1.0 / pivot.a[step];
    for (int c = step + 1; c < 3; ++c) pivot.a[c] *= k;
    for (int c = 0; c < step; ++c) pivot.inverse[c] *= k;
    pivot.inverse[step] = k;
    for (int r = 0; r < 3; ++r) {
        if (r == step) continue;
        Row& row = rows[r];
        const double f = -row.a[step];
        for (int c = step + 1; c < 3; ++c) row.a[c] += f * pivot.a[c];
        for (int c = 0; c < step; ++c) row.inverse[c] += f * pivot.inverse[c];
        row.inverse[step] = f * k;
    }
    return true;
}

// Partial pivoting: the pivot row is the first whose element exceeds those of all later rows in absolute value, so that
// of equal ones the last row wins. The other rows keep their order. False when there is no inverse.
bool invert(const void* m, void* inverse) {
    const auto* e = static_cast<const double*>(m);
    // The order of the rows, pivot first, indexed by the comparisons of column 0: row 0 with row 1 (weight 4), row 0
    // with row 2 (weight 2), row 1 with row 2 (weight 1).
    static constexpr std::ptrdiff_t kOrders[][3] = {{2, 0, 1}, {1, 0, 2}, {2, 0, 1}, {1, 0, 2},
                                                    {2, 0, 1}, {1, 0, 2}, {0, 1, 2}, {0, 1, 2}};
    const auto& order = kOrders[4 * absGreater(e[0], e[3]) + 2 * absGreater(e[0], e[6]) + absGreater(e[3], e[6])];
    const auto row = [e](std::ptrdiff_t r) -> Row { return {{e[3 * r], e[3 * r + 1], e[3 * r + 2]}, {}, r}; };
    Row rows[] = {row(order[0]), row(order[1]), row(order[2])};
    if (!eliminate<0>(rows)) return false;
    const int swapped = 1 - absGreater(rows[1].a[1], rows[2].a[1]);
    swapIf(swapped, rows[1].a[1], rows[2].a[1]);
    swapIf(swapped, rows[1].a[2], rows[2].a[2]);
    swapIf(swapped, rows[1].inverse[0], rows[2].inverse[0]);
    swapIf(swapped, rows[1].source, rows[2].source);
    if (!eliminate<1>(rows) || !eliminate<2>(rows)) return false;
    auto* to = static_cast<double*>(inverse);
    for (std::ptrdiff_t i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) to[3 * i + rows[j].source] = rows[i].inverse[j];
    }
    return true;
}

// The code of the quiet operations, and their flag.
int32_t resultCode(bool inverted, unsigned char* singular) {
    if (singular != nullptr) *singular = inverted ? 0 : 1;
    return inverted ? 0 : Zan_Err_CannotInvert;
}

// m := inverse(m); m is unchanged after a failure.
template <class Matrix, class Inverse>
int32_t invertInPlace(Matrix& m, Inverse inverse) {
    Matrix result;
    const int32_t code = inverse(&m, &result);
    if (code == 0) m = result;
    return code;
}

}  // namespace

int32_t Zan_InverseMatrixQuiet(const Zan_Matrix3* in, Zan_Matrix3* out, unsigned char* singular) {
    const bool inverted = invert(in, out);
    if (!inverted) zan::assign(*out, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}});
    return resultCode(inverted, singular);
}

int32_t Zan_InverseMatrix(const Zan_Matrix3* in, Zan_Matrix3* out) {
    const int32_t code = Zan_InverseMatrixQuiet(in, out, nullptr);
    return code == 0 ? 0 : zan::report(zan::Site::InverseMatrix, code, zan::kNoContext);
}

int32_t Zan_InverseMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular) {
    return resultCode(zan::invertMatrix(in, out), singular);
}

int32_t Zan_InverseMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out) {
    const int32_t code = Zan_InverseMatrix4Quiet(in, out, nullptr);
    return code == 0 ? 0 : zan::report(zan::Site::InvertOrDecomposeMatrix4, code, zan::kNoContext);
}

int32_t Zan_CalcNormalMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out) {
    const int32_t code = Zan_InverseMatrix4(in, out);
    if (code == 0) Zan_TransposeMatrix4(out, out);
    return code;
}

int32_t Zan_CalcNormalMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular) {
    const int32_t code = Zan_InverseMatrix4Quiet(in, out, singular);
    Zan_TransposeMatrix4(out, out);
    return code;
}

void Zan_Matrix3::Invert() { zan::throwIfFailed(invertInPlace(*this, Zan_InverseMatrix)); }
bool Zan_Matrix3::InvertQuiet() {
    return invertInPlace(*this, [](auto* in, auto* out) { return Zan_InverseMatrixQuiet(in, out, nullptr); }) != 0;
}
void Zan_Matrix4::Invert() { zan::throwIfFailed(invertInPlace(*this, Zan_InverseMatrix4)); }
bool Zan_Matrix4::InvertQuiet() {
    return invertInPlace(*this, [](auto* in, auto* out) { return Zan_InverseMatrix4Quiet(in, out, nullptr); }) != 0;
}

void Zan_Matrix3::Adjoint() {
    zan::assign(*this, {{{m11 * m22 - m12 * m21, m02 * m21 - m01 * m22, m01 * m12 - m02 * m11},
                         {m20 * m12 - m10 * m22, m00 * m22 - m02 * m20, m02 * m10 - m00 * m12},
                         {m10 * m21 - m20 * m11, m01 * m20 - m00 * m21, m00 * m11 - m01 * m10}}});
}
