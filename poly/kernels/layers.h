// Kernels of layers in space: four corners to the eye, clipped at the near plane, and to the screen. Declarations only:
// a kernel's file is compiled for one instruction set, and the linker may keep that file's copy of a shared inline
// function.
#ifndef ZAN_POLY_KERNELS_LAYERS_H
#define ZAN_POLY_KERNELS_LAYERS_H

namespace zan {

/// Matrices are Zan_Matrix4; corners and clip points are arrays of four Vector3. With a degenerate matrix both
/// functions return false and change nothing.
struct LayerKernel {
    const char* name;
    /// Transforms the corners as Zan_Transform3DFloatPoints does.
    bool (*toEye)(const void* layerToEye, void* corners);
    /// Finds which corners, in eye space, are behind the near plane, and the clip points of the edges: where edge i,
    /// from corner i to the next one, crosses the plane, else (0, 0, 0). Then transforms corners and clip points.
    bool (*toScreen)(const void* eyeToScreen, void* corners, void* clipPoints, bool* behind);
};

/// Every kernel gives the bits of the plain one.
extern const LayerKernel kPlainLayerKernel;
extern const LayerKernel kAvx2LayerKernel;

/// The kernels of this build, in the order of zan::InstructionSet, then null.
extern const LayerKernel* const kLayerKernels[];

}  // namespace zan

#endif  // ZAN_POLY_KERNELS_LAYERS_H
