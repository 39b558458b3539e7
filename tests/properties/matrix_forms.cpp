// Operations of matrix/ whose code differs from the steps that define them give the bits of those steps.
#include "matrix/kernels/matrices.h"
#include "matrix/nearly_equal.h"
#include "property.h"
#include "tests/support/plain_forms.h"
#include "zan/matrix.h"

#include <bit>
#include <numbers>

namespace {

// m times three rotations: about the x, y and z axes in turn, each axis as the rotations before it have turned it.
Zan_Matrix4 rotatedByDefinition(const Zan_Matrix4& m, const double (&radians)[3]) {
    Zan_Matrix4 rotation(/*identity=*/true);
    for (int i = 0; i < 3; ++i) {
        Vector4 image(i == 0 ? 1.0 : 0.0, i == 1 ? 1.0 : 0.0, i == 2 ? 1.0 : 0.0, 0.0);
        Zan_TransformVector4(&rotation, 1, &image);
        must(Zan_RotateMatrix4(image.x, image.y, image.z, radians[i], &rotation) == 0);
    }
    Zan_Matrix4 result;
    zan::kPlainMatrixKernel.multiply(&m, &rotation, &result);
    return result;
}

bool rotations(Choices& c) {
    // Most angles are multiples of a right angle, so that elements cancel to zeros of either sign.
    const auto angle = [&] { return c.below(3) == 0 ? c.nasty() : (c.below(9) - 4) * (std::numbers::pi / 2); };
    const double radians[] = {angle(), angle(), angle()};
    const double few[] = {c.nasty(), 0.0, -0.0, 1.0, -1.0};
    double elements[16];
    for (double& e : elements) e = c.among(few);
    const auto m = std::bit_cast<Zan_Matrix4>(elements);
    Zan_Matrix4 rotated = m;
    must(Zan_RotateMatrix4XYZ(radians[0], radians[1], radians[2], &rotated) == 0);
    must(sameDoubles(rotated, rotatedByDefinition(m, radians)));
    return std::fabs(radians[0]) < 1;
}

bool comparisons(Choices& c) {
    // Most pairs differ by about the tolerance.
    const double a = c.nasty();
    const double step = c.plain(-2e-12, 2e-12);
    const double candidates[] = {c.nasty(), -a, a + step, a * (1 + step)};
    const double b = c.among(candidates);
    const bool equal = plain_forms::nearlyEqual(a, b);
    must(zan::nearlyEqual(a, b) == equal);
    must(zan::nearlyEqual(b, a) == equal);
    return equal;
}

const Property kRotations("matrix_rotations", 20000, rotations);
const Property kComparisons("matrix_comparisons", 100000, comparisons);

}  // namespace
