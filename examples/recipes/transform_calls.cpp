// Prints the guide's table of the calls that transform points and rectangles. Every cell is what the call did when this
// program called it.
#include "zan/platform/bel.h"

#include <zan/zan.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

// The same transform for both sizes of matrix: scale, translation along x, and the last element of the diagonal, which
// becomes w for a point of w = 1.
struct Probe {
    double x = 10.0;
    double scale = 1.0;
    double translation = 0.0;
    double w = 1.0;

    [[nodiscard]] Zan_Matrix3 plane() const {
        Zan_Matrix3 m(true);
        m.m00 = m.m11 = scale;
        m.m20 = translation;
        m.m22 = w;
        return m;
    }
    [[nodiscard]] Zan_Matrix4 space() const {
        Zan_Matrix4 m(true);
        m.m00 = m.m11 = scale;
        m.m30 = translation;
        m.m33 = w;
        return m;
    }
};

struct Answer {
    double x = 0.0;
    double w = NAN;    // of a homogeneous result
    int32_t code = 0;  // returned or thrown
    bool thrown = false;
    uint32_t report = 0;  // the number of the report, 0 without one
};

// Fixed point has a scale of its own; the answer is in whole units.
constexpr double kFixedOne = 65536.0;

using Run = Answer (*)(const Probe&);

Answer points16(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    Zan_Point p = {0, static_cast<int16_t>(probe.x)};
    const int32_t code = Zan_TransformPoints(&m, 1, &p);
    return {static_cast<double>(p.h), NAN, code};
}
Answer pointsFixed(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    Zan_FixedPoint p = {static_cast<Zan_Fixed>(probe.x * kFixedOne), 0};
    const int32_t code = Zan_TransformFixPoints(&m, 1, &p);
    return {p.h / kFixedOne, NAN, code};
}
Answer pointsFloat(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    Zan_Vector2T<double> p(probe.x, 0.0);
    Zan_TransformFloatPoints(&m, 1, &p);
    return {p.x};
}
Answer vectors3(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    Zan_Vector3T<double> p(probe.x, 0.0, 1.0);
    Zan_TransformVector3(&m, 1, &p);
    return {p.x, p.z};
}
Answer rect16(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    const auto left = static_cast<int16_t>(probe.x);
    Zan_Rect r = {0, left, 4, static_cast<int16_t>(left + 4)};
    Zan_TransformRect(&m, &r, nullptr, nullptr);
    return {static_cast<double>(r.left)};
}
Answer rectFloat(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    Zan_FloatRect r = {probe.x, 0.0, probe.x + 4, 4.0};
    Zan_TransformFloatRect(&m, &r, nullptr, nullptr);
    return {r.left};
}
Answer rectFixed(const Probe& probe) {
    const Zan_Matrix3 m = probe.plane();
    const auto left = static_cast<Zan_Fixed>(probe.x * kFixedOne);
    Zan_FixedRect r = {left, 0, left + 262144, 262144};
    const int32_t code = Zan_TransformFixRect(&m, &r, nullptr, nullptr);
    return {r.left / kFixedOne, NAN, code};
}
Answer bounds(const Probe& probe) {
    const auto left = static_cast<int32_t>(probe.x);
    const Zan_LRect box = Zan_TransformBounds(probe.plane(), {left, 0, left + 4, 4});
    return {static_cast<double>(box.left)};
}
Answer point2(const Probe& probe) {
    Zan_Vector2T<double> p(probe.x, 0.0);
    probe.plane().TransformPoint(&p);
    return {p.x};
}
Answer point3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 1.0);
    probe.plane().TransformPoint(&p);
    return {p.x, p.z};
}
Answer divide2(const Probe& probe) {
    Zan_Vector2T<double> p(probe.x, 0.0);
    probe.plane().TransformPointAndDivide(&p);
    return {p.x};
}
Answer divide3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 1.0);
    probe.plane().TransformPointAndDivide(&p);
    return {p.x, p.z};
}
Answer divideFast3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 1.0);
    probe.plane().TransformPointAndDivideFast(&p);
    return {p.x, p.z};
}
Answer toScreen2(const Probe& probe) {
    Zan_Vector2T<double> p(probe.x, 0.0);
    Zan_TransformPoint2DtoScreen(probe.plane(), Zan_Matrix3(true), &p);
    return {p.x};
}
Answer poly2(const Probe& probe) {
    Zan_TransformPoly2D poly;
    poly.SetLayerPoint(0, {probe.x, 0.0});
    for (int32_t i = 1; i < 4; ++i) poly.SetLayerPoint(i, {0.0, 0.0});
    poly.TransformPoints(probe.plane());
    Zan_Vector2T<double> p;
    poly.GetPoint(0, &p);
    return {p.x};
}
Answer space3(const Probe& probe) {
    const Zan_Matrix4 m = probe.space();
    Zan_Vector3T<double> p(probe.x, 0.0, 0.0);
    Zan_Transform3DFloatPoints(&m, 1, &p);
    return {p.x};
}
Answer space16(const Probe& probe) {
    const Zan_Matrix4 m = probe.space();
    Zan_Point p = {0, static_cast<int16_t>(probe.x)};
    Zan_3DTransform2DPoints(&m, 1, &p);
    return {static_cast<double>(p.h)};
}
Answer vectors4(const Probe& probe) {
    const Zan_Matrix4 m = probe.space();
    Zan_Vector4T<double> p(probe.x, 0.0, 0.0, 1.0);
    Zan_TransformVector4(&m, 1, &p);
    return {p.x, p.w};
}
Answer vectors4NoDivide(const Probe& probe) {
    const Zan_Matrix4 m = probe.space();
    Zan_Vector4T<double> p(probe.x, 0.0, 0.0, 1.0);
    Zan_TransformVector4NoDivide(&m, 1, &p);
    return {p.x, p.w};
}
Answer member3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 0.0);
    probe.space().TransformPoint(&p);
    return {p.x};
}
Answer members3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 0.0);
    probe.space().TransformPoints(1, &p);
    return {p.x};
}
Answer member4(const Probe& probe) {
    Zan_Vector4T<double> p(probe.x, 0.0, 0.0, 1.0);
    probe.space().TransformPoint(&p);
    return {p.x, p.w};
}
Answer memberDivide3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 0.0);
    probe.space().TransformPointAndDivide(&p);
    return {p.x};
}
Answer membersDivide4(const Probe& probe) {
    Zan_Vector4T<double> p(probe.x, 0.0, 0.0, 1.0);
    probe.space().TransformPointsAndDivide(1, &p);
    return {p.x, p.w};
}
Answer memberDivideFast4(const Probe& probe) {
    Zan_Vector4T<double> p(probe.x, 0.0, 0.0, 1.0);
    probe.space().TransformPointAndDivideFast(&p);
    return {p.x, p.w};
}
Answer toScreen3(const Probe& probe) {
    Zan_Vector3T<double> p(probe.x, 0.0, 1.0);
    const bool seen = Zan_TransformPoint3DtoScreen(Zan_Matrix4(true), probe.space(), Zan_Matrix3(true), &p);
    return {seen ? p.x : NAN};
}
Answer poly3(const Probe& probe) {
    Zan_TransformPoly3D poly;
    for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, {i == 0 ? probe.x : 0.0, 0.0});
    Zan_Matrix4 toEye(true);
    toEye.Translate(0.0, 0.0, 1.0);
    poly.TransformPointsToEye(toEye);
    poly.TransformPointsToScreen(probe.space());
    Zan_Vector2T<double> p;
    poly.GetPoint(0, &p);
    return {p.x};
}

struct Call {
    const char* name;
    const char* matrix;
    Run run;
};

constexpr std::array kCalls = {
    Call{"`Zan_TransformPoints`", "3 x 3", points16},
    Call{"`Zan_TransformFixPoints`", "3 x 3", pointsFixed},
    Call{"`Zan_TransformFloatPoints`", "3 x 3", pointsFloat},
    Call{"`Zan_TransformVector3`", "3 x 3", vectors3},
    Call{"`Zan_TransformRect` on `Zan_Rect`", "3 x 3", rect16},
    Call{"`Zan_TransformFixRect`", "3 x 3", rectFixed},
    Call{"`Zan_TransformFloatRect`", "3 x 3", rectFloat},
    Call{"`Zan_TransformBounds`", "3 x 3", bounds},
    Call{"`Zan_Matrix3::TransformPoint` on `Zan_Vector2T`", "3 x 3", point2},
    Call{"`Zan_Matrix3::TransformPoint` on `Zan_Vector3T`", "3 x 3", point3},
    Call{"`Zan_Matrix3::TransformPointAndDivide` on `Zan_Vector2T`", "3 x 3", divide2},
    Call{"`Zan_Matrix3::TransformPointAndDivide` on `Zan_Vector3T`", "3 x 3", divide3},
    Call{"`Zan_Matrix3::TransformPointAndDivideFast`", "3 x 3", divideFast3},
    Call{"`Zan_TransformPoint2DtoScreen`", "3 x 3", toScreen2},
    Call{"`Zan_TransformPoly2D::TransformPoints`", "3 x 3", poly2},
    Call{"`Zan_Transform3DFloatPoints`", "4 x 4", space3},
    Call{"`Zan_3DTransform2DPoints`", "4 x 4", space16},
    Call{"`Zan_TransformVector4`", "4 x 4", vectors4},
    Call{"`Zan_TransformVector4NoDivide`", "4 x 4", vectors4NoDivide},
    Call{"`Zan_Matrix4::TransformPoint` on `Zan_Vector3T`", "4 x 4", member3},
    Call{"`Zan_Matrix4::TransformPoints` on `Zan_Vector3T`", "4 x 4", members3},
    Call{"`Zan_Matrix4::TransformPoint` on `Zan_Vector4T`", "4 x 4", member4},
    Call{"`Zan_Matrix4::TransformPointAndDivide` on `Zan_Vector3T`", "4 x 4", memberDivide3},
    Call{"`Zan_Matrix4::TransformPointsAndDivide` on `Zan_Vector4T`", "4 x 4", membersDivide4},
    Call{"`Zan_Matrix4::TransformPointAndDivideFast`", "4 x 4", memberDivideFast4},
    Call{"`Zan_TransformPoint3DtoScreen`", "4 x 4", toScreen3},
    Call{"`Zan_TransformPoly3D::TransformPointsToScreen`", "4 x 4", poly3},
};

uint32_t lastReport = 0;

Answer runReported(const Call& call, const Probe& probe) {
    lastReport = 0;
    Answer answer;
    try {
        answer = call.run(probe);
    } catch (long code) {
        answer.code = static_cast<int32_t>(code);
        answer.thrown = true;
    }
    answer.report = lastReport;
    return answer;
}

std::string hexadecimal(uint32_t value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%X", value);
    return text.data();
}

std::string failure(const Answer& a) {
    return "reports " + hexadecimal(a.report) + (a.thrown ? ", throws " : ", returns ") +
           hexadecimal(static_cast<uint32_t>(a.code));
}

std::string useOfW(const Call& call) {
    Probe probe;
    probe.w = 2.0;
    const Answer twice = runReported(call, probe);
    if (twice.x == 10.0) return twice.w == 2.0 ? "keeps it in the result" : "ignores it";
    if (twice.x != 5.0) return "?";
    probe.x = probe.w = 49.0;  // 49 * (1.0 / 49) is not 1
    return runReported(call, probe).x == 1.0 ? "divides" : "multiplies by 1/w";
}

std::string nearZeroW(const Call& call) {
    Probe probe;
    probe.w = 0.0;
    const Answer a = runReported(call, probe);
    if (a.code != 0) return failure(a);
    if (std::isinf(a.x)) return "infinite";
    return a.x == 10.0 ? "does not divide" : hexadecimal(static_cast<uint32_t>(a.x)) + "?";
}

std::string rounding(const Call& call) {
    Probe probe;
    probe.scale = 0.25;
    const double positive = runReported(call, probe).x;
    probe.x = -10.0;
    const double negative = runReported(call, probe).x;
    if (positive == 2.5 && negative == -2.5) return "";
    if (positive == 3.0 && negative == -2.0) return "rounds, halves up";
    if (positive == 2.0 && negative == -2.0) return "truncates";
    return positive == 2.0 && negative == -3.0 ? "rounds outward" : "?";
}

std::string tooLarge(const Call& call) {
    Probe probe;
    probe.translation = 1e12;
    const Answer a = runReported(call, probe);
    if (a.code != 0) return failure(a);
    if (a.x >= 1e12) return "";
    probe.translation = -1e12;
    const double lowest = runReported(call, probe).x;
    return "clamps to " + std::to_string(static_cast<int64_t>(lowest)) + " to " +
           std::to_string(static_cast<int64_t>(a.x));
}

void print(const Call& call) {
    const std::string w = useOfW(call);
    std::printf("| %s | %s | %s | %s | %s | %s |\n", call.name, call.matrix, w.c_str(),
                w == "ignores it" || w == "keeps it in the result" ? "" : nearZeroW(call).c_str(),
                rounding(call).c_str(), tooLarge(call).c_str());
}

}  // namespace

int main() {
    Bel_SetReportHandler([](void*, const Bel_Report* report) { lastReport = report->errorNumber; }, nullptr);
    std::puts(
        "| Call | Matrix | w | w near zero | Rounding to integers | Result too large |\n|---|---|---|---|---|---|");
    for (const Call& call : kCalls) print(call);
}
