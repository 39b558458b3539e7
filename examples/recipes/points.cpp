// Many points: arrays of each type through one transform, what happens when a coordinate does not fit, and a transform
// of all points or none.
#include "zan/platform/bel.h"

#include <zan/zan.h>

#include <cstdio>
#include <vector>

namespace {

//! [report]
void printReport(void* /*context*/, const Bel_Report* report) {
    std::printf("  report 0x%X: %s\n", report->errorNumber, report->text);
}
//! [report]

//! [types]
// The same point as each type. The 16-bit and 16.16 records are rounded; the others are not.
void transformEachType(const Zan_Matrix3& m) {
    Zan_Point small;
    Zan_SetPt(&small, 100, 50);  // h, v; the record stores v first
    Zan_FixedPoint fixed = {100 * 65536, 50 * 65536};
    Zan_Vector2T<double> plane(100.0, 50.0);
    Zan_Vector3T<double> homogeneous(100.0, 50.0, 1.0);
    if (Zan_TransformPoints(&m, 1, &small) != 0) return;
    if (Zan_TransformFixPoints(&m, 1, &fixed) != 0) return;
    Zan_TransformFloatPoints(&m, 1, &plane);
    Zan_TransformVector3(&m, 1, &homogeneous);
    std::printf("16-bit (%d, %d), 16.16 (%.5f, %.5f), plane (%.5f, %.5f), homogeneous (%.5f, %.5f, %.1f)\n", small.h,
                small.v, fixed.h / 65536.0, fixed.v / 65536.0, plane.x, plane.y, homogeneous.x, homogeneous.y,
                homogeneous.z);
}
//! [types]

void print(const char* what, const std::vector<Zan_Point>& points) {
    std::printf("  %s:", what);
    for (const Zan_Point& p : points) std::printf(" (%d, %d)", p.h, p.v);
    std::puts("");
}

//! [all or nothing]
// Transforms all points, or reports and leaves all of them unchanged.
bool transformAllOrNone(const Zan_Matrix3& m, std::vector<Zan_Point>& points) {
    std::vector<Zan_Point> copy = points;
    if (Zan_TransformPoints(&m, static_cast<int32_t>(copy.size()), copy.data()) != 0) return false;
    points.swap(copy);
    return true;
}
//! [all or nothing]

}  // namespace

int main() {
    Bel_SetReportHandler(printReport, nullptr);

    Zan_Matrix3 rotation(true);
    rotation.Rotate(30.0);
    rotation.Translate(0.25, 0.0);
    transformEachType(rotation);

    //! [overflow]
    Zan_Matrix3 enlarge(true);
    enlarge.Scale(100.0, 100.0);
    std::vector<Zan_Point> points(4);
    Zan_SetPt(&points[0], 1, 2);
    Zan_SetPt(&points[1], 300, 400);  // 300 * 100 fits 16 bits, 400 * 100 does not
    Zan_SetPt(&points[2], 5, 6);
    Zan_SetPt(&points[3], 7, 8);
    std::vector<Zan_Point> inPlace = points;
    std::puts("in place:");
    const int32_t code = Zan_TransformPoints(&enlarge, 4, inPlace.data());
    std::printf("  code 0x%X\n", static_cast<unsigned>(code));
    print("afterwards", inPlace);

    std::puts("all or none:");
    const bool done = transformAllOrNone(enlarge, points);
    std::printf("  %s\n", done ? "done" : "not done");
    print("afterwards", points);
    //! [overflow]

    //! [wide]
    // Points of a type that cannot overflow, rounded at the end: coordinates that are too large are clamped.
    std::vector<Zan_Vector2T<double>> wide;
    wide.reserve(points.size());
    for (const Zan_Point& p : points) wide.emplace_back(p.h, p.v);
    Zan_TransformFloatPoints(&enlarge, static_cast<int32_t>(wide.size()), wide.data());
    std::puts("in double precision:");
    for (const Zan_Vector2T<double>& p : wide)
        std::printf("  (%d, %d)\n", Zan_RoundDoubleSafe(p.x), Zan_RoundDoubleSafe(p.y));
    //! [wide]
}
