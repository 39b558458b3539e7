// A host of the other tool family: compiled by clang for the Microsoft ABI, linked by lld-link with zan.lib, with no C
// runtime at all. Plain functions, records, handlers and exported data work across the families. Exits with 0, or with
// the number of the first check that fails.
#include "platform/bel.h"
#include "zan/frame.h"
#include "zan/matrix.h"
#include "zan/scalar.h"
#include "zan/space.h"

extern "C" int _fltused = 0;  // the linker asks for it where floating point is used

namespace {

uint32_t lastNumber = 0;
char lastText[100];

void keep(void* context, const Bel_Report* report) {
    ++*static_cast<int*>(context);
    lastNumber = report->errorNumber;
    for (size_t i = 0; i + 1 < sizeof lastText; ++i) {
        lastText[i] = report->text[i];
        if (report->text[i] == '\0') break;
    }
}

bool same(const char* a, const char* b) {
    while (*a != '\0' && *a == *b) ++a, ++b;
    return *a == *b;
}

}  // namespace

extern "C" int entry() {
    int reports = 0, check = 1;
#define EXPECT(condition)               \
    do {                                \
        if (!(condition)) return check; \
        ++check;                        \
    } while (false)

    Bel_SetReportHandler(keep, &reports);
    EXPECT(Zan_PkgObjectVersion() == 0x120004);
    EXPECT(Zan_CheckVersions(1, Zan_kInterfaceVersion) == 0);
    uint32_t started = 0;
    EXPECT(Zan_Birth(Zan_Service_Basic | Zan_Service_FastCharMath, &started) == 0 && started == 5);
    EXPECT(Zanp_G.headMagic == Zan_kGlobalsMagic && Zanp_G.services == 5);
    EXPECT(same(static_cast<const Zan_MessageTable*>(Zan_G_zref)->module, "Zan"));

    bool ready = false;
    uint8_t *products = nullptr, *quotients = nullptr;
    EXPECT(Zan_PrepareFCMD(true, false, &ready, &products, &quotients) == 0 && ready);
    EXPECT(products[128 * 256 + 128] == 64 && quotients[128 * 256 + 64] == 128);
    EXPECT(Zan_UnprepareFCMD() == 0);

    // Integers of each width, booleans and doubles, in and out.
    EXPECT(Zan_LeadingZeros(0x00FF0000) == 8 && Zan_TrailingZeros(0x00FF0000) == 16);
    EXPECT(Zan_RoundDouble64(-5000000000.75) == -5000000001 && Zan_fmod(-7.5, 2.0) == -1.5);
    EXPECT(Zan_AddWouldOverflow(INT32_MAX, 1) && !Zan_AddWouldOverflow(INT32_MAX, 0));
    EXPECT(Zan_FixMul(0x18000, -0x20000) == -0x30000);

    EXPECT(reports == 0);
    EXPECT(Zan_Fix24Mul(0x40000000, 0x02000000) == INT32_MIN);
    EXPECT(reports == 1 && lastNumber == 0x110008 && same(lastText, "overflow in fix24 multiply."));

    // Records by address.
    Zan_Matrix3 scale = {}, shift = {};
    scale.m00 = 2.0, scale.m11 = 3.0, scale.m22 = 1.0;
    shift.m00 = 1.0, shift.m11 = 1.0, shift.m22 = 1.0, shift.m20 = 5.0, shift.m21 = 7.0;
    EXPECT(Zan_ConcatMatrix(&scale, &shift) == 0);
    Zan_MatrixType kind = -1;
    EXPECT(Zan_GetMatrixType(&shift, &kind) == 0 && kind == Zan_MatrixType_ScaleTranslate);
    Zan_Vector2T<double> point(10.0, 100.0);
    Zan_TransformFloatPoints(&shift, 1, &point);
    EXPECT(point.x == 30.0 && point.y == 321.0);

    const Zan_PlaneEq plane = {0.0, 0.0, 1.0, -4.0};
    Zan_Ray ray = {};
    ray.direction.z = 2.0;
    Zan_Vector3T<double> hit = {};
    bool found = false;
    EXPECT(Zan_RayIntersectPlane(&plane, true, &ray, &hit, nullptr, &found) == 0 && found && hit.z == 4.0);

    EXPECT(Zan_Death() == 0 && reports == 1);
    return 0;
}
