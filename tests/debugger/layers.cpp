// Layer outlines in a program's own code, for a debugger to print where pointsOf() is called.
#include "zan/zan.h"

[[gnu::noinline]] static int pointsOf(const Zan_TransformPoly3D& layer) { return layer.NumPolyPoints(); }

int main() {
    Zan_TransformPoly2D flat;
    Zan_TransformPoly3D solid;
    const Zan_Vector2T<double> corners[] = {{-1, -1}, {1, -1}, {1, 1.5}, {-1, 1}};
    for (int32_t i = 0; i < 4; ++i) {
        flat.SetLayerPoint(i, corners[i]);
        solid.SetLayerPoint(i, corners[i]);
    }
    const Zan_TransformPoly3D untransformed(solid);
    Zan_Matrix4 toEye(true);  // y becomes depth: the corners 0 and 1 are at z = 1, the others behind
    toEye.m11 = 0.0;
    toEye.m12 = -1.0;
    solid.TransformPointsToEye(toEye);
    solid.TransformPointsToScreen(Zan_Matrix4(true));
    solid.InitPolyPoints();
    const Zan_TransformPoly3D& reference = solid;
    return pointsOf(reference) - pointsOf(untransformed) - 4;
}
