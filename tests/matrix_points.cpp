// Points and vectors through matrices: every operation on doubles against its one-point rule for every length around an
// unrolling by four, and the integer points with their overflows.
#include <string>
#include <vector>

#include "host_reports.h"
#include "matrices.h"

namespace {

using V2 = Zan_Vector2T<double>;
using V3 = Zan_Vector3T<double>;
using V4 = Zan_Vector4T<double>;
using M3 = Zan_Matrix3;
using M4 = Zan_Matrix4;

// What happens to the product; a point shorter than the matrix goes in with 1 as its last component.
enum Ending { kKept, kUnlessNearZero, kQuotient, kReciprocal };

struct Operation {
    const char* name;
    int size, components;
    Ending ending;
    const char* guard;  // what is reported for a w near zero; null where w is not tested
    int32_t (*run)(const double* m, int32_t count, double* points);
};

template <class M, class V, int32_t (*F)(const M*, int32_t, V*)>
int32_t plain(const double* m, int32_t count, double* points) {
    return F(reinterpret_cast<const M*>(m), count, reinterpret_cast<V*>(points));
}
template <class M, class V, void (M::*F)(int32_t, V*) const>
int32_t array(const double* m, int32_t count, double* points) {
    try {
        (reinterpret_cast<const M*>(m)->*F)(count, reinterpret_cast<V*>(points));
    } catch (long code) {
        return static_cast<int32_t>(code);
    }
    return 0;
}
template <class M, class V, void (M::*F)(V*) const>
int32_t single(const double* m, int32_t count, double* points) {
    try {
        for (int32_t i = 0; i < count; ++i) (reinterpret_cast<const M*>(m)->*F)(reinterpret_cast<V*>(points) + i);
    } catch (long code) {
        return static_cast<int32_t>(code);
    }
    return 0;
}

const char* const kWZero39 = "0x110039 sev 8: homogeneous point has W=0";
const char* const kWZero3A = "0x11003A sev 8: homogeneous point has W=0";
const char* const kWZero3B = "0x11003B sev 8: homogeneous point has W=0";
const char* const kWZero3C = "0x11003C sev 8: homogeneous point has W=0";
const Operation kOperations[] = {
    {"float points", 3, 2, kKept, nullptr, plain<M3, V2, Zan_TransformFloatPoints>},
    {"3 points", 3, 2, kKept, nullptr, array<M3, V2, &M3::TransformPoints>},
    {"3 point", 3, 2, kKept, nullptr, single<M3, V2, &M3::TransformPoint>},
    {"vector3", 3, 3, kKept, nullptr, plain<M3, V3, Zan_TransformVector3>},
    {"3 vectors", 3, 3, kKept, nullptr, array<M3, V3, &M3::TransformPoints>},
    {"3 vector", 3, 3, kKept, nullptr, single<M3, V3, &M3::TransformPoint>},
    {"vector4", 4, 4, kUnlessNearZero, nullptr, plain<M4, V4, Zan_TransformVector4>},
    {"vector4 no divide", 4, 4, kKept, nullptr, plain<M4, V4, Zan_TransformVector4NoDivide>},
    {"4 vectors", 4, 4, kKept, nullptr, array<M4, V4, &M4::TransformPoints>},
    {"4 vector", 4, 4, kKept, nullptr, single<M4, V4, &M4::TransformPoint>},
    {"3D float points", 4, 3, kUnlessNearZero, nullptr, plain<M4, V3, Zan_Transform3DFloatPoints>},
    {"4 points", 4, 3, kKept, nullptr, array<M4, V3, &M4::TransformPoints>},
    {"4 point", 4, 3, kKept, nullptr, single<M4, V3, &M4::TransformPoint>},
    {"3 vector divided", 3, 3, kQuotient, kWZero39, single<M3, V3, &M3::TransformPointAndDivide>},
    {"3 point divided", 3, 2, kQuotient, kWZero39, single<M3, V2, &M3::TransformPointAndDivide>},
    {"3 vectors divided", 3, 3, kQuotient, kWZero3A, array<M3, V3, &M3::TransformPointsAndDivide>},
    {"3 points divided", 3, 2, kQuotient, kWZero39, array<M3, V2, &M3::TransformPointsAndDivide>},
    {"3 vector divided fast", 3, 3, kQuotient, nullptr, single<M3, V3, &M3::TransformPointAndDivideFast>},
    {"3 vectors divided fast", 3, 3, kQuotient, nullptr, array<M3, V3, &M3::TransformPointsAndDivideFast>},
    {"4 vector divided", 4, 4, kReciprocal, kWZero3B, single<M4, V4, &M4::TransformPointAndDivide>},
    {"4 point divided", 4, 3, kReciprocal, kWZero3B, single<M4, V3, &M4::TransformPointAndDivide>},
    {"4 vectors divided", 4, 4, kReciprocal, kWZero3C, array<M4, V4, &M4::TransformPointsAndDivide>},
    {"4 points divided", 4, 3, kReciprocal, kWZero3B, array<M4, V3, &M4::TransformPointsAndDivide>},
    {"4 vector divided fast", 4, 4, kReciprocal, nullptr, single<M4, V4, &M4::TransformPointAndDivideFast>},
    {"4 vectors divided fast", 4, 4, kReciprocal, nullptr, array<M4, V4, &M4::TransformPointsAndDivideFast>},
};

// One point by the rule; false when its w is near zero and that is guarded against.
bool byTheRule(const Operation& operation, const double* m, double* point) {
    const int n = operation.size;
    double out[4];
    for (int j = 0; j < n; ++j) {
        out[j] = point[0] * m[j];
        for (int k = 1; k < n; ++k) out[j] += (k < operation.components ? point[k] : 1.0) * m[k * n + j];
    }
    const double w = out[n - 1];
    const bool nearZero = w > -1e-12 && w < 1e-12;
    if (operation.guard != nullptr && nearZero) return false;
    if (operation.ending != kKept && !(operation.ending == kUnlessNearZero && nearZero)) {
        for (int j = 0; j < n - 1; ++j) out[j] = operation.ending == kQuotient ? out[j] / w : out[j] * (1.0 / w);
        out[n - 1] = 1.0;
    }
    std::copy(out, out + operation.components, point);
    return true;
}

}  // namespace

TEST_CASE("arrays of points equal the one-point rule") {
    HostReports host;
    Random random(44);
    for (const Operation& operation : kOperations) {
        for (const int32_t count : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 63, 200}) {
            for (int round = 0; round < 12; ++round) {
                // Tame numbers in the first rounds, so that guarded arrays are done to their end; later w' is often x.
                CAPTURE(operation.name, count, round);
                const auto number = [&] { return round < 4 ? random.plain(1, 2) : random.nasty(); };
                double m[16];
                for (double& element : m) element = number();
                for (int k = 0; k < operation.size && round >= 8; ++k) {
                    m[k * operation.size + operation.size - 1] = k == 0 ? 1.0 : 0.0;
                }
                std::vector<double> points(size_t(std::max(count, 0) * operation.components) + 1);
                for (double& coordinate : points) coordinate = number();
                std::vector<double> expected = points;
                bool good = true;
                for (int32_t i = 0; i < count && good; ++i) {
                    good = byTheRule(operation, m, &expected[size_t(i * operation.components)]);
                }
                CHECK(operation.run(m, count, points.data()) == (good ? 0 : 0x110C));
                CHECK(host.takeAll() == (good ? "" : operation.guard));
                size_t same = 0;
                while (same < points.size() && sameBits(points[same], expected[same])) ++same;
                CHECK(same == points.size());
            }
        }
    }
}

namespace {

constexpr const char* kOverflow = "0x110026 sev 8: overflow in point transformation.";
constexpr const char* kFixOverflow = "0x110027 sev 8: overflow in fixed point transformation.";
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Two points through a matrix whose third column is not read; the second shows what a failure leaves alone.
template <class Coordinate>
struct IntegerRow {
    const char* what;
    double m00, m01, m10, m11, m20, m21;
    Coordinate in[4], out[4];  // h, v, h, v
    const char* report;
};
const IntegerRow<int16_t> kPoints[] = {
    {"whole", 1, 2, -1, 3, 10, 20, {3, 4, 5, 6}, {9, 38, 9, 48}, ""},
    {"halves go up", 0.5, 0, 0, 0.5, 0, 0, {5, -5, -1, 1}, {3, -2, 0, 1}, ""},
    {"the largest", 1, 0, 0, 1, 32766.6, -32767.9, {0, 0, 0, 0}, {32767, -32768, 32767, -32768}, ""},
    {"h at the limit", 1, 0, 0, 1, 32767, 0, {0, 0, 0, 0}, {0, 0, 0, 0}, kOverflow},
    {"h at the lower limit", 1, 0, 0, 1, -32767, 0, {0, 7, -1, 7}, {-32767, 7, -1, 7}, kOverflow},
    {"v at the limit keeps the new h", 2, 0, 0, 40000, 0, 0, {1, 1, 3, 1}, {2, 1, 3, 1}, kOverflow},
    {"v at the lower limit", 1, 0, 0, -32768, 5, 0, {1, 0, 1, 1}, {6, 0, 6, 1}, kOverflow},
    {"v is made of the old h", 0, 1, 1, 0, 0, 0, {1, 2, 3, 4}, {2, 1, 4, 3}, ""},
    {"NaN becomes 0", kNaN, 0, 0, 1, 0, 0, {1, 2, 3, 4}, {0, 2, 0, 4}, ""},
};
constexpr int32_t kMax = INT32_MAX, kMin = INT32_MIN;
const IntegerRow<int32_t> kFixPoints[] = {
    {"translation in whole units", 1, 0, 0, 1, 1, -2, {5, 6, 7, 8}, {65541, -131066, 65543, -131064}, ""},
    {"halves go up", 0.5, 0, 0, 0.5, 0, 0, {5, -5, -1, 1}, {3, -2, 0, 1}, ""},
    {"the largest", 1, 0, 0, 1, 0, 0, {kMax - 1, kMin + 1, 1, 2}, {kMax - 1, kMin + 1, 1, 2}, ""},
    {"h too large", 1, 0, 0, 1, 0, 0, {1, 2, kMax, 4}, {1, 2, kMax, 4}, kFixOverflow},
    {"h too small", 2, 0, 0, 1, 0, 0, {1, 2, -0x40000000, 4}, {2, 2, -0x40000000, 4}, kFixOverflow},
    {"v too large keeps the new h", 2, 0, 0, 1, 0, 0, {1, kMax, 3, 4}, {2, kMax, 3, 4}, kFixOverflow},
    {"v too small", 2, 0, 0, 1, 0, 0, {1, 2, 3, kMin}, {2, 2, 6, kMin}, kFixOverflow},
    {"NaN is the failure value", kNaN, 0, 0, 1, 0, 0, {1, 2, 3, 4}, {kMin, 2, kMin, 4}, ""},
};

template <class Point, class Coordinate>
void checkIntegers(const IntegerRow<Coordinate>& r, int32_t (*plainly)(const Zan_Matrix3*, int32_t, Point*)) {
    HostReports host;
    CAPTURE(r.what);
    const Zan_Matrix3 m = matrix3({r.m00, r.m01, kNaN, r.m10, r.m11, kNaN, r.m20, r.m21, kNaN});
    const int32_t code = *r.report == '\0' ? 0 : 0x1102;
    for (const bool member : {false, true}) {
        Point points[2];
        for (size_t i = 0; i < 2; ++i) points[i].h = r.in[2 * i], points[i].v = r.in[2 * i + 1];
        CHECK((member ? array<Zan_Matrix3, Point, &Zan_Matrix3::TransformPoints>(&m.m00, 2,
                                                                                 reinterpret_cast<double*>(points))
                      : plainly(&m, 2, points)) == code);
        for (size_t i = 0; i < 2; ++i) CHECK((points[i].h == r.out[2 * i] && points[i].v == r.out[2 * i + 1]));
        CHECK(host.takeAll() == r.report);
    }
    Point untouched{1, 1};
    CHECK((plainly(&m, 0, &untouched) == 0 && plainly(&m, -3, &untouched) == 0 && untouched.h == 1));
}

}  // namespace

TEST_CASE("16-bit and 16.16 points") {
    for (const auto& r : kPoints) checkIntegers<Zan_Point>(r, Zan_TransformPoints);
    for (const auto& r : kFixPoints) checkIntegers<Zan_FixedPoint>(r, Zan_TransformFixPoints);
}

TEST_CASE("16-bit points as points of space are clamped and truncated") {
    struct {
        const char* what;
        double m00, m03, m11, m30, m31, m33;
        int16_t h, v, newH, newV;
    } const rows[] = {
        {"truncated, not rounded", 1, 0, 1, 0.7, -2.7, 1, 0, 0, 0, -2},
        {"clamped", 1, 0, 1, 40000, -40000, 1, 0, 0, 32766, -32767},
        {"the clamp is at 32766", 1, 0, 1, 0.9, -0.9, 1, 32766, -32766, 32766, -32766},
        {"the ends of the record", 1, 0, 1, 0, 0, 1, 32767, -32768, 32766, -32767},
        {"divided", 1, 1, 1, 0, 0, 0, 2, 7, 1, 3},
        {"at w = 0 not divided", 1, 0, 1, 1, 2, 0, 3, 4, 4, 6},
        {"NaN becomes 0", kNaN, 0, 1, 0, 0, 1, 3, 4, 0, 4},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        const Zan_Matrix4 m = matrix4({r.m00, 0, 9, r.m03, 0, r.m11, 9, 0, 9, 9, 9, 9, r.m30, r.m31, 9, r.m33});
        Zan_Point points[3] = {{r.v, r.h}, {r.v, r.h}, {r.v, r.h}};
        CHECK(Zan_3DTransform2DPoints(&m, 2, points) == 0);
        CHECK((points[0].h == r.newH && points[0].v == r.newV && points[1].h == r.newH && points[2].h == r.h));
        CHECK((Zan_3DTransform2DPoints(&m, 0, points + 2) == 0 && points[2].v == r.v));
    }
}
