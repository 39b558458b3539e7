// Points through matrices: every operation on doubles against its one-point rule, and integer points that overflow.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"
#include "zan/geom2d.h"

namespace {

using M3 = Zan_Matrix3;
using M4 = Zan_Matrix4;

// What happens to the product; a point shorter than the matrix goes in with 1 as its last component.
enum Ending { kKept, kUnlessNearZero, kQuotient, kReciprocal };

// An operation in its forms, null where there is none, each with the site of its report, null where w is not tested.
template <class M, class V>
void check(Ending ending, int32_t (*plain)(const M*, int32_t, V*), void (M::*single)(V*) const = nullptr,
           void (M::*array)(int32_t, V*) const = nullptr, const char* singleSite = nullptr,
           const char* arraySite = nullptr) {
    HostReports host;
    Random random(44);
    for (int round = 0; round < 432; ++round) {
        // Tame numbers in the first rounds, so that guarded arrays are done to their end; later w' is often x.
        const int form = round % 3, count = round / 3 % 12 - 1, kind = round / 144;
        const char* site = form == 1 ? singleSite : form == 2 ? arraySite : nullptr;
        if (form == 0 ? plain == nullptr : single == nullptr) continue;
        CAPTURE(sizeof(M), sizeof(V), ending, site == nullptr, form, count, kind);
        const auto number = [&] { return kind == 0 ? random.plain(1, 2) : random.nasty(); };
        const M m = fill<M>([&](int i, int j) {
            return kind < 2 || j < sizeOf<M> - 1 ? number() : i == 0 ? 1.0 : 0.0;
        });
        constexpr int n = sizeOf<M>, components = sizeof(V) / sizeof(double);
        std::vector<double> numbers(size_t(std::max(count, 0) * components) + 1);
        std::generate(numbers.begin(), numbers.end(), number);
        std::vector<double> expected = numbers;
        V* points = reinterpret_cast<V*>(numbers.data());
        bool good = true;
        for (int i = 0; i < count && good; ++i) {
            double* point = &expected[size_t(i * components)];
            const M row = fill<M>([&](int r, int c) { return r > 0 ? 0.0 : c < components ? point[c] : 1.0; });
            const M out = product(row, m);
            const double w = at(out, 0, n - 1);
            const bool nearZero = w > -1e-12 && w < 1e-12;
            const bool kept = ending == kKept || (ending == kUnlessNearZero && nearZero);
            good = site == nullptr || !nearZero;
            for (int j = 0; j < components && good; ++j) {
                const double x = at(out, 0, j);
                point[j] = kept ? x : j == n - 1 ? 1.0 : ending == kQuotient ? x / w : x * (1.0 / w);
            }
        }
        const auto run = [&] {
            if (form == 2) (m.*array)(count, points);
            for (int i = 0; i < count && form == 1; ++i) (m.*single)(points + i);
        };
        CHECK((form == 0 ? plain(&m, count, points) : thrownBy(run)) == (good ? 0 : 0x110C));
        CHECK(host.takeAll() == (good ? "" : std::string("0x1100") + site + " sev 8: homogeneous point has W=0"));
        CHECK(std::equal(numbers.begin(), numbers.end(), expected.begin(), sameBits<double>));
    }
}

}  // namespace

TEST_CASE("arrays of points equal the one-point rule") {
    check<M3, V2>(kKept, Zan_TransformFloatPoints, &M3::TransformPoint, &M3::TransformPoints);
    check<M3, V3>(kKept, Zan_TransformVector3, &M3::TransformPoint, &M3::TransformPoints);
    check<M4, V4>(kKept, Zan_TransformVector4NoDivide, &M4::TransformPoint, &M4::TransformPoints);
    check<M4, V3>(kKept, nullptr, &M4::TransformPoint, &M4::TransformPoints);
    check<M4, V4>(kUnlessNearZero, Zan_TransformVector4);
    check<M4, V3>(kUnlessNearZero, Zan_Transform3DFloatPoints);
    check<M3, V2>(kQuotient, nullptr, &M3::TransformPointAndDivide, &M3::TransformPointsAndDivide, "39", "39");
    check<M3, V3>(kQuotient, nullptr, &M3::TransformPointAndDivide, &M3::TransformPointsAndDivide, "39", "3A");
    check<M3, V3>(kQuotient, nullptr, &M3::TransformPointAndDivideFast, &M3::TransformPointsAndDivideFast);
    check<M4, V3>(kReciprocal, nullptr, &M4::TransformPointAndDivide, &M4::TransformPointsAndDivide, "3B", "3B");
    check<M4, V4>(kReciprocal, nullptr, &M4::TransformPointAndDivide, &M4::TransformPointsAndDivide, "3B", "3C");
    check<M4, V4>(kReciprocal, nullptr, &M4::TransformPointAndDivideFast, &M4::TransformPointsAndDivideFast);
}

TEST_CASE("16-bit and 16.16 points") {
    HostReports host;
    // Two points, h and v, through a matrix whose third column is not read; a failure leaves the second alone.
    const auto check = [&]<class Point>(Point, const double(&e)[6], const int32_t(&in)[4], const int32_t(&out)[4],
                                        bool fits = true) {
        using T = decltype(Point::h);
        CAPTURE(e[0], e[3], e[4], in[0], in[1]);
        const std::string kind = sizeof(T) == 2 ? "26 sev 8: overflow in point" : "27 sev 8: overflow in fixed point";
        const M3 m = matrix({e[0], e[1], kNaN, e[2], e[3], kNaN, e[4], e[5], kNaN});
        Point points[2], &p = points[0], &q = points[1];
        p.h = T(in[0]), p.v = T(in[1]), q.h = T(in[2]), q.v = T(in[3]);
        CHECK(thrownBy([&] { m.TransformPoints(2, points); }) == (fits ? 0 : 0x1102));
        CHECK(host.takeAll() == (fits ? "" : "0x1100" + kind + " transformation."));
        CHECK((p.h == out[0] && p.v == out[1] && q.h == out[2] && q.v == out[3]));
    };
    constexpr Zan_Point whole = {};
    check(whole, {1, 2, -1, 3, 10, 20}, {3, 4, 5, 6}, {9, 38, 9, 48});
    check(whole, {0.5, 0, 0, 0.5, 0, 0}, {5, -5, -1, 1}, {3, -2, 0, 1});  // halves go up
    check(whole, {1, 0, 0, 1, 32766.6, -32767.9}, {0, 0, 0, 0}, {32767, -32768, 32767, -32768});
    check(whole, {1, 0, 0, 1, 32767, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, false);
    check(whole, {1, 0, 0, 1, 0, 32767}, {0, 0, 0, 0}, {0, 0, 0, 0}, false);
    check(whole, {1, 0, 0, 1, -32767, 0}, {0, 7, -1, 7}, {-32767, 7, -1, 7}, false);
    check(whole, {2, 0, 0, 40000, 0, 0}, {1, 1, 3, 1}, {2, 1, 3, 1}, false);  // keeps the new h
    check(whole, {1, 0, 0, -32768, 5, 0}, {1, 0, 1, 1}, {6, 0, 6, 1}, false);
    check(whole, {kNaN, 1, 1, 0, 0, 0}, {1, 2, 3, 4}, {0, 1, 0, 3});  // v is made of the old h
    constexpr Zan_FixedPoint fixed = {};
    constexpr int32_t kMax = INT32_MAX, kMin = INT32_MIN;
    check(fixed, {1, 0, 0, 1, 1, -2}, {5, 6, 7, 8}, {65541, -131066, 65543, -131064});  // translation in whole units
    check(fixed, {1, 0, 0, 1, 0, 0}, {kMax - 1, kMin + 1, 1, 2}, {kMax - 1, kMin + 1, 1, 2});
    check(fixed, {1, 0, 0, 1, 0, 0}, {1, 2, kMax, 4}, {1, 2, kMax, 4}, false);
    check(fixed, {2, 0, 0, 1, 0, 0}, {1, 2, 3, kMin}, {2, 2, 6, kMin}, false);
    check(fixed, {kNaN, 0, 0, 1, 0, 0}, {1, 2, 3, 4}, {kMin, 2, kMin, 4});  // the failure value of the rounding
}

TEST_CASE("16-bit points as points of space are clamped and truncated") {
    const auto check = [](double m00, double m03, double m30, double m31, double m33, const Zan_Point& p,
                          const Zan_Point& due) {
        CAPTURE(m00, m30, p.h, p.v);
        const M4 m = matrix({m00, 0, 9, m03, 0, 1, 9, 0, 9, 9, 9, 9, m30, m31, 9, m33});
        Zan_Point points[] = {p, p, p};
        CHECK((Zan_3DTransform2DPoints(&m, 2, points) == 0 && Zan_EqualPt(&points[0], &due)));
        CHECK((Zan_EqualPt(&points[1], &due) && Zan_EqualPt(&points[2], &p)));
    };
    check(1, 0, 0.7, -2.7, 1, {0, 0}, {-2, 0});  // v, then h
    check(1, 0, 0.9, -0.9, 1, {-32766, 32766}, {-32766, 32766});
    check(1, 0, 0, 0, 1, {-32768, 32767}, {-32767, 32766}), check(1, 0, 4e4, -4e4, 1, {0, 0}, {-32767, 32766});
    check(1, 1, 0, 0, 0, {7, 2}, {3, 1});
    check(1, 0, 1, 2, 0, {4, 3}, {6, 4});  // at w = 0 not divided
    check(kNaN, 0, 0, 0, 1, {4, 3}, {4, 0});
}
