// The plain kernel of products and inverses: one element after another.
#include "matrix/kernels/matrices.h"
#include "matrix/minors.h"

#include <cmath>

namespace {

constexpr double kSmallestDeterminant = 1e-16;

zan::Elements<4> load(const void* matrix) { return zan::elements(*static_cast<const Zan_Matrix4*>(matrix)); }
void store(const zan::Elements<4>& e, void* matrix) { zan::assign(*static_cast<Zan_Matrix4*>(matrix), e); }

void multiply(const void* a, const void* b, void* result) { store(zan::product(load(a), load(b)), result); }

bool invert(const void* matrix, void* result) {
    const zan::Elements<4> m = load(matrix);
    const double determinant = zan::determinant4(m);
    const bool inverted = !(std::fabs(determinant) < kSmallestDeterminant);
    zan::Elements<4> inverse;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            const double minor = zan::minorOf(m, j, i);
            const double cofactor = (i + j) % 2 == 0 ? minor : -minor;
            inverse.at[i][j] = inverted ? cofactor / determinant : cofactor;
        }
    }
    store(inverse, result);
    return inverted;
}

}  // namespace

const zan::MatrixKernel zan::kPlainMatrixKernel = {.name = "plain", .multiply = multiply, .invert = invert};
