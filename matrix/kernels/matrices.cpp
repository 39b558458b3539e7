// Selects the kernel for products and inverses.
#include "matrix/kernels/matrices.h"

#include "frame/processor.h"

const zan::MatrixKernel* const zan::kMatrixKernels[] = {&kPlainMatrixKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                        &kAvx2MatrixKernel,
#endif
                                                        nullptr};

void zan::multiplyMatrices(const void* a, const void* b, void* result) {
    kMatrixKernels[static_cast<int>(activeInstructionSet())]->multiply(a, b, result);
}
bool zan::invertMatrix(const void* m, void* result) {
    return kMatrixKernels[static_cast<int>(activeInstructionSet())]->invert(m, result);
}
