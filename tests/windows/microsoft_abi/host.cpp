// A host with the Microsoft ABI; the DLL, built by MinGW, has another one. It is compiled by clang and linked by
// lld-link with zan.lib, without a C runtime. Plain functions, records, handlers and exported data work all the same.
// Exits with 0, or with the number of the first check that fails.
#include "zan/frame.h"
#include "zan/matrix.h"
#include "zan/platform/bel.h"
#include "zan/scalar.h"
#include "zan/space.h"

extern "C" int _fltused = 0;  // needed by the linker in a program that uses floating point
extern "C" int failedLayerCheck();

namespace {

bool same(const char* a, const char* b) {
    while (*a != '\0' && *a == *b) ++a, ++b;
    return *a == *b;
}

// Counts reports; an unexpected one counts as 100.
void keep(void* reports, const Bel_Report* report) {
    const bool expected = report->errorNumber == 0x110008 && same(report->text, "overflow in fix24 multiply.");
    *static_cast<int*>(reports) += expected ? 1 : 100;
}

}  // namespace

extern "C" int entry() {
    int reports = 0, checks = 0, failed = 0;
    const auto expect = [&](bool good) {
        ++checks;
        if (!good && failed == 0) failed = checks;
    };
    Bel_SetReportHandler(keep, &reports);
    expect(Zan_CheckVersions(1, Zan_kInterfaceVersion) == 0);
    uint32_t started = 0;
    expect(Zan_Birth(Zan_Service_Basic | Zan_Service_FastCharMath, &started) == 0);
    expect(started == 5);
    expect(Zanp_G.headMagic == Zan_kGlobalsMagic);
    expect(Zanp_G.services == 5);
    expect(same(static_cast<const Zan_MessageTable*>(Zan_G_zref)->module, "Zan"));

    bool ready = false;
    uint8_t *products = nullptr, *quotients = nullptr;
    expect(Zan_PrepareFCMD(true, false, &ready, &products, &quotients) == 0);
    expect(ready);
    expect(ready && products[128 * 256 + 128] == 64);
    expect(ready && quotients[128 * 256 + 64] == 128);
    expect(Zan_UnprepareFCMD() == 0);

    // Integers of each width, booleans and doubles, in and out.
    expect(Zan_LeadingZeros(0x00FF0000) == 8);
    expect(Zan_RoundDouble64(-5000000000.75) == -5000000001);
    expect(Zan_fmod(-7.5, 2.0) == -1.5);
    expect(Zan_AddWouldOverflow(INT32_MAX, 1));
    expect(!Zan_AddWouldOverflow(INT32_MAX, 0));
    expect(Zan_Fix24Mul(0x40000000, 0x02000000) == INT32_MIN);
    expect(reports == 1);

    // Records by address.
    Zan_Matrix3 matrix = {};
    matrix.m00 = 2.0;
    matrix.m11 = 3.0;
    matrix.m22 = 1.0;
    matrix.m21 = 21.0;
    Zan_Vector2T<double> point(10.0, 100.0);
    Zan_TransformFloatPoints(&matrix, 1, &point);
    expect(point.x == 20.0);
    expect(point.y == 321.0);
    const Zan_PlaneEq plane = {0.0, 0.0, 1.0, -4.0};
    Zan_Ray ray = {};
    ray.direction.z = 2.0;
    Zan_Vector3T<double> hit = {};
    bool found = false;
    expect(Zan_RayIntersectPlane(&plane, true, &ray, &hit, nullptr, &found) == 0);
    expect(found);
    expect(hit.z == 4.0);
    expect(failedLayerCheck() == 0);
    expect(Zan_Death() == 0);
    expect(reports == 1);
    return failed;
}
