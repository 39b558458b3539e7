// A host in C: projects a layer and tests whether the mouse is on it.
#include "layer.h"

#include <stdio.h>

int main(void) {
    if (Zan_CheckVersions(0x1000, Zan_kInterfaceVersion) != 0) return 1;
    if (Zan_Birth(Zan_Service_Basic, NULL) != 0) return 1;

    // A 200 by 100 layer, rotated by 60 degrees about the vertical axis, 500 in front of the eye.
    const Zan_Vector2d corners[4] = {{-100.0, -50.0}, {100.0, -50.0}, {100.0, 50.0}, {-100.0, 50.0}};
    Zan_Matrix4 toEye;
    Zan_IdentityMatrix4(&toEye);
    Zan_RotateMatrix4XYZ(0.0, 1.0471975511965976, 0.0, &toEye);
    Zan_TranslateMatrix4(0.0, 0.0, 500.0, &toEye);

    // Projection to a screen of 1280 by 800 with a focal length of 1000, as Zan_Matrix4::Project builds it.
    Zan_Matrix4 toScreen;
    Zan_IdentityMatrix4(&toScreen);
    toScreen.m23 = 1.0 / 1000.0;
    toScreen.m32 = -1.0;
    toScreen.m33 = 0.0;
    Zan_TranslateMatrix4(640.0, 400.0, 0.0, &toScreen);

    LayerOutline outline;
    layerOutline(corners, &toEye, &toScreen, &outline);
    const Zan_Vector2d mouse = {700.0, 420.0};
    printf("%d outline points, the mouse is %s\n", (int)outline.count,
           layerIsHit(&outline, mouse, 2.0) ? "on the layer" : "elsewhere");
    return Zan_Death();
}
