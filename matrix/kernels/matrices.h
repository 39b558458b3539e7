// Products and inverses of Zan_Matrix4, one kernel for each instruction set. Declarations only, for the reason that
// points.h gives.
#ifndef ZAN_MATRIX_KERNELS_MATRICES_H
#define ZAN_MATRIX_KERNELS_MATRICES_H

namespace zan {

/// All pointers are to Zan_Matrix4; a result may be one of the arguments.
struct MatrixKernel {
    const char* name;
    /// result := a * b, each element a sum of products added from left to right.
    void (*multiply)(const void* a, const void* b, void* result);
    /// result := the adjugate of m divided by the determinant. False when the determinant is too near zero; result is
    /// then the undivided adjugate.
    bool (*invert)(const void* m, void* result);
};

/// Every kernel gives the same bits as the plain one.
extern const MatrixKernel kPlainMatrixKernel;
extern const MatrixKernel kAvx2MatrixKernel;

/// The kernels of this build, indexed by zan::InstructionSet, with a null pointer at the end.
extern const MatrixKernel* const kMatrixKernels[];

/// These run the kernel of zan::activeInstructionSet().
void multiplyMatrices(const void* a, const void* b, void* result);
bool invertMatrix(const void* m, void* result);

}  // namespace zan

#endif  // ZAN_MATRIX_KERNELS_MATRICES_H
