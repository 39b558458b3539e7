// Points and vectors through matrices: every operation on doubles against its one-point rule for every length around an
// unrolling by four, and the integer points with their overflows.
#include <algorithm>
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
    const char* site;  // of the report of a w near zero; null where w is not tested
    int32_t (*run)(const double* m, int32_t count, double* points);
};

template <class M, class V, int32_t (*F)(const M*, int32_t, V*)>
int32_t plain(const double* m, int32_t count, double* points) {
    return F(reinterpret_cast<const M*>(m), count, reinterpret_cast<V*>(points));
}
template <class M, class V, void (M::*F)(int32_t, V*) const>
int32_t array(const double* m, int32_t count, double* points) {
    return static_cast<int32_t>(
        thrownBy([&] { (reinterpret_cast<const M*>(m)->*F)(count, reinterpret_cast<V*>(points)); }));
}
template <class M, class V, void (M::*F)(V*) const>
int32_t single(const double* m, int32_t count, double* points) {
    return static_cast<int32_t>(thrownBy([&] {
        for (int32_t i = 0; i < count; ++i) (reinterpret_cast<const M*>(m)->*F)(reinterpret_cast<V*>(points) + i);
    }));
}

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
    {"3 vector divided", 3, 3, kQuotient, "39", single<M3, V3, &M3::TransformPointAndDivide>},
    {"3 point divided", 3, 2, kQuotient, "39", single<M3, V2, &M3::TransformPointAndDivide>},
    {"3 vectors divided", 3, 3, kQuotient, "3A", array<M3, V3, &M3::TransformPointsAndDivide>},
    {"3 points divided", 3, 2, kQuotient, "39", array<M3, V2, &M3::TransformPointsAndDivide>},
    {"3 vector divided fast", 3, 3, kQuotient, nullptr, single<M3, V3, &M3::TransformPointAndDivideFast>},
    {"3 vectors divided fast", 3, 3, kQuotient, nullptr, array<M3, V3, &M3::TransformPointsAndDivideFast>},
    {"4 vector divided", 4, 4, kReciprocal, "3B", single<M4, V4, &M4::TransformPointAndDivide>},
    {"4 point divided", 4, 3, kReciprocal, "3B", single<M4, V3, &M4::TransformPointAndDivide>},
    {"4 vectors divided", 4, 4, kReciprocal, "3C", array<M4, V4, &M4::TransformPointsAndDivide>},
    {"4 points divided", 4, 3, kReciprocal, "3B", array<M4, V3, &M4::TransformPointsAndDivide>},
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
    if (operation.site != nullptr && nearZero) return false;
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
                const std::string report = host.takeAll();
                CHECK((good ? report.empty()
                            : report == std::string("0x1100") + operation.site + " sev 8: homogeneous point has W=0"));
                CHECK(std::equal(points.begin(), points.end(), expected.begin(), sameBits<double>));
            }
        }
    }
}

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Two points, h and v, through a matrix whose third column is not read; the second shows what a failure leaves alone.
template <class Point, class Coordinate>
void checkIntegers(int32_t (*plainly)(const M3*, int32_t, Point*), const char* overflow, const double (&rows)[6],
                   const Coordinate (&in)[4], const Coordinate (&out)[4]) {
    HostReports host;
    CAPTURE(rows[0], rows[3], rows[4], in[0], in[1]);
    const M3 m = matrix({rows[0], rows[1], kNaN, rows[2], rows[3], kNaN, rows[4], rows[5], kNaN});
    const std::string report = overflow == nullptr ? "" : std::string(overflow) + " transformation.";
    for (const bool member : {false, true}) {
        Point points[2];
        for (size_t i = 0; i < 2; ++i) points[i].h = in[2 * i], points[i].v = in[2 * i + 1];
        CHECK((member ? thrownBy([&] { m.TransformPoints(2, points); }) : plainly(&m, 2, points)) ==
              (overflow == nullptr ? 0 : 0x1102));
        CHECK(host.takeAll() == report);
        for (size_t i = 0; i < 2; ++i) CHECK((points[i].h == out[2 * i] && points[i].v == out[2 * i + 1]));
    }
}

}  // namespace

TEST_CASE("16-bit and 16.16 points") {
    const auto check = [](const double(&m)[6], const int16_t(&in)[4], const int16_t(&out)[4], bool fits = true) {
        const char* report = fits ? nullptr : "0x110026 sev 8: overflow in point";
        checkIntegers(Zan_TransformPoints, report, m, in, out);
    };
    check({1, 2, -1, 3, 10, 20}, {3, 4, 5, 6}, {9, 38, 9, 48});
    check({0.5, 0, 0, 0.5, 0, 0}, {5, -5, -1, 1}, {3, -2, 0, 1});  // halves go up
    check({1, 0, 0, 1, 32766.6, -32767.9}, {0, 0, 0, 0}, {32767, -32768, 32767, -32768});
    check({1, 0, 0, 1, 32767, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, false);
    check({1, 0, 0, 1, -32767, 0}, {0, 7, -1, 7}, {-32767, 7, -1, 7}, false);
    check({2, 0, 0, 40000, 0, 0}, {1, 1, 3, 1}, {2, 1, 3, 1}, false);  // keeps the new h
    check({1, 0, 0, -32768, 5, 0}, {1, 0, 1, 1}, {6, 0, 6, 1}, false);
    check({kNaN, 1, 1, 0, 0, 0}, {1, 2, 3, 4}, {0, 1, 0, 3});  // v is made of the old h

    const auto checkFixed = [](const double(&m)[6], const int32_t(&in)[4], const int32_t(&out)[4], bool fits = true) {
        const char* report = fits ? nullptr : "0x110027 sev 8: overflow in fixed point";
        checkIntegers(Zan_TransformFixPoints, report, m, in, out);
    };
    constexpr int32_t kMax = INT32_MAX, kMin = INT32_MIN;
    checkFixed({1, 0, 0, 1, 1, -2}, {5, 6, 7, 8}, {65541, -131066, 65543, -131064});  // translation in whole units
    checkFixed({1, 0, 0, 1, 0, 0}, {kMax - 1, kMin + 1, 1, 2}, {kMax - 1, kMin + 1, 1, 2});
    checkFixed({1, 0, 0, 1, 0, 0}, {1, 2, kMax, 4}, {1, 2, kMax, 4}, false);
    checkFixed({2, 0, 0, 1, 0, 0}, {1, 2, 3, kMin}, {2, 2, 6, kMin}, false);
    checkFixed({kNaN, 0, 0, 1, 0, 0}, {1, 2, 3, 4}, {kMin, 2, kMin, 4});  // the failure value of the rounding
}

TEST_CASE("16-bit points as points of space are clamped and truncated") {
    const auto check = [](double m00, double m03, double m30, double m31, double m33, const Zan_Point& p,
                          const Zan_Point& expected) {
        CAPTURE(m00, m30, p.h, p.v);
        const M4 m = matrix({m00, 0, 9, m03, 0, 1, 9, 0, 9, 9, 9, 9, m30, m31, 9, m33});
        Zan_Point points[] = {p, p, p};
        CHECK((Zan_3DTransform2DPoints(&m, 2, points) == 0 && Zan_3DTransform2DPoints(&m, 0, points + 2) == 0));
        CHECK((points[0].h == expected.h && points[0].v == expected.v));
        CHECK((points[1].h == expected.h && points[2].h == p.h));
    };
    check(1, 0, 0.7, -2.7, 1, {0, 0}, {-2, 0});  // v, then h
    check(1, 0, 0.9, -0.9, 1, {-32766, 32766}, {-32766, 32766});
    check(1, 0, 0, 0, 1, {-32768, 32767}, {-32767, 32766}), check(1, 0, 4e4, -4e4, 1, {0, 0}, {-32767, 32766});
    check(1, 1, 0, 0, 0, {7, 2}, {3, 1});
    check(1, 0, 1, 2, 0, {4, 3}, {6, 4});  // at w = 0 not divided
    check(kNaN, 0, 0, 0, 1, {4, 3}, {4, 0});
}
