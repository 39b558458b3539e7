// Inverses: by elimination for a transform of the plane, by the adjugate for one of space; the adjugate and the normal
// matrix.
#include "frame/report.h"
#include "matrix/elements.h"
#include "matrix/kernels/matrices.h"

#include <cmath>
#include <cstddef>

namespace {

constexpr double kSmallestPivot = 1e-20;

// A row of the matrix under elimination beside its row of the inverse, whose columns stand in the order of the pivots.
struct Row {
    double a[3];
    double inverse[3];
    std::ptrdiff_t from;  // the row of the matrix that it was
};

// 1 or 0, as a number: nobody can foresee which row is the pivot's, so nothing shall branch on it.
int larger(double a, double b) { return std::fabs(a) > std::fabs(b) ? 1 : 0; }
template <class T>
void swapIf(int swapped, T& a, T& b) {
    const T both[] = {a, b};
    a = both[swapped];
    b = both[1 - swapped];
}

// One step of Gauss and Jordan's elimination with partial pivoting; false when the pivot is too small. All indices are
// constants, so that the rows stay in registers.
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

// False when there is no inverse. The pivot's row is the first whose element is larger than that of every later one, so
// ties go to the later row; the others keep their order.
bool invert(const void* m, void* inverse) {
    const auto* e = static_cast<const double*>(m);
    // By which of the first two are larger than which later ones.
    static constexpr std::ptrdiff_t kOrders[][3] = {{2, 0, 1}, {1, 0, 2}, {2, 0, 1}, {1, 0, 2},
                                                    {2, 0, 1}, {1, 0, 2}, {0, 1, 2}, {0, 1, 2}};
    const auto& order = kOrders[4 * larger(e[0], e[3]) + 2 * larger(e[0], e[6]) + larger(e[3], e[6])];
    const auto row = [e](std::ptrdiff_t r) -> Row { return {{e[3 * r], e[3 * r + 1], e[3 * r + 2]}, {}, r}; };
    Row rows[] = {row(order[0]), row(order[1]), row(order[2])};
    if (!eliminate<0>(rows)) return false;
    const int last = 1 - larger(rows[1].a[1], rows[2].a[1]);
    swapIf(last, rows[1].a[1], rows[2].a[1]);
    swapIf(last, rows[1].a[2], rows[2].a[2]);
    swapIf(last, rows[1].inverse[0], rows[2].inverse[0]);
    swapIf(last, rows[1].from, rows[2].from);
    if (!eliminate<1>(rows) || !eliminate<2>(rows)) return false;
    auto* to = static_cast<double*>(inverse);
    for (std::ptrdiff_t i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) to[3 * i + rows[j].from] = rows[i].inverse[j];
    }
    return true;
}

int32_t answer(bool inverted, unsigned char* singular) {
    if (singular != nullptr) *singular = inverted ? 0 : 1;
    return inverted ? 0 : Zan_Err_CannotInvert;
}

// The members keep the matrix when it has no inverse.
template <class Matrix, class Inverse>
int32_t replace(Matrix& m, Inverse inverse) {
    Matrix result;
    const int32_t code = inverse(&m, &result);
    if (code == 0) m = result;
    return code;
}

}  // namespace

int32_t Zan_InverseMatrixQuiet(const Zan_Matrix3* in, Zan_Matrix3* out, unsigned char* singular) {
    const bool inverted = invert(in, out);
    if (!inverted) zan::assign(*out, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}});
    return answer(inverted, singular);
}

int32_t Zan_InverseMatrix(const Zan_Matrix3* in, Zan_Matrix3* out) {
    const int32_t code = Zan_InverseMatrixQuiet(in, out, nullptr);
    return code == 0 ? 0 : zan::report(zan::Site::InverseMatrix, code, zan::kNoContext);
}

int32_t Zan_InverseMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular) {
    return answer(zan::invertMatrix(in, out), singular);
}

int32_t Zan_InverseMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out) {
    const int32_t code = Zan_InverseMatrix4Quiet(in, out, nullptr);
    return code == 0 ? 0 : zan::report(zan::Site::TakeApartMatrix4, code, zan::kNoContext);
}

int32_t Zan_CalcNormalMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out) {
    const int32_t code = Zan_InverseMatrix4(in, out);
    return code != 0 ? code : Zan_TransposeMatrix4(out, out);
}

int32_t Zan_CalcNormalMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular) {
    const int32_t code = Zan_InverseMatrix4Quiet(in, out, singular);
    Zan_TransposeMatrix4(out, out);
    return code;
}

void Zan_Matrix3::Invert() { zan::throwIfFailed(replace(*this, Zan_InverseMatrix)); }
bool Zan_Matrix3::InvertQuiet() {
    return replace(*this, [](auto* in, auto* out) { return Zan_InverseMatrixQuiet(in, out, nullptr); }) != 0;
}
void Zan_Matrix4::Invert() { zan::throwIfFailed(replace(*this, Zan_InverseMatrix4)); }
bool Zan_Matrix4::InvertQuiet() {
    return replace(*this, [](auto* in, auto* out) { return Zan_InverseMatrix4Quiet(in, out, nullptr); }) != 0;
}

void Zan_Matrix3::Adjoint() {
    zan::assign(*this, {{{m11 * m22 - m12 * m21, m02 * m21 - m01 * m22, m01 * m12 - m02 * m11},
                         {m20 * m12 - m10 * m22, m00 * m22 - m02 * m20, m02 * m10 - m00 * m12},
                         {m10 * m21 - m20 * m11, m01 * m20 - m00 * m21, m00 * m11 - m01 * m10}}});
}
