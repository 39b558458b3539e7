// Products and inverses of matrices of space, in the forms that processors allow. Declarations only, as in points.h.
#ifndef ZAN_MATRIX_KERNELS_MATRICES_H
#define ZAN_MATRIX_KERNELS_MATRICES_H

namespace zan {

/// Of Zan_Matrix4; a result may be an argument.
struct MatrixKernel {
    const char* name;
    /// result := a * b, each element added up from left to right.
    void (*multiply)(const void* a, const void* b, void* result);
    /// The adjugate divided by the determinant. False when that is too near zero: the adjugate is left undivided.
    bool (*invert)(const void* m, void* result);
};

/// Every kernel gives the bits of the plain one.
extern const MatrixKernel kPlainMatrixKernel;
extern const MatrixKernel kAvx2MatrixKernel;

/// The kernels of this build, one for each of zan::Instructions, null behind the last.
extern const MatrixKernel* const kMatrixKernels[];

/// By the kernel of zan::activeInstructionSet().
void multiplyMatrices(const void* a, const void* b, void* result);
bool invertMatrix(const void* m, void* result);

}  // namespace zan

#endif  // ZAN_MATRIX_KERNELS_MATRICES_H
