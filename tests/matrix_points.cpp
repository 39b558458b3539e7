// Arrays of points in double precision: every operation against a point at a time, computed from the definition.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

#include <string>
#include <vector>

namespace {

using M3 = Zan_Matrix3;
using M4 = Zan_Matrix4;

// What follows the product of a point and the matrix.
enum class Division { kNone, kUnlessNearZero, kByW, kByReciprocal };

// One operation in its three forms; null where there is none. The sites are those of the report on a w near zero; null
// where w is not tested.
template <class M, class V>
struct Operation {
    const char* what;
    Division division;
    int32_t (*function)(const M*, int32_t, V*) = nullptr;
    void (M::*pointMember)(V*) const = nullptr;
    void (M::*arrayMember)(int32_t, V*) const = nullptr;
    const char* pointSite = nullptr;
    const char* arraySite = nullptr;
};

bool nearZero(double w) { return w > -1e-12 && w < 1e-12; }

// Transforms one point by the definition; a point with fewer components than the matrix has rows gets 1 as its last.
// False, and the point unchanged, where a tested w is near zero.
template <class M, class V>
bool transformByDefinition(const M& m, Division division, bool tested, V* point) {
    constexpr int n = sizeOf<M>;
    constexpr int components = sizeof(V) / sizeof(double);
    auto coordinates = std::bit_cast<DoublesOf<V>>(*point);
    const M row = fill<M>([&](int i, int j) {
        return i > 0 ? 0.0 : j < components ? coordinates[static_cast<size_t>(j)] : 1.0;
    });
    const M out = product(row, m);
    const double w = at(out, 0, n - 1);
    if (tested && nearZero(w)) return false;
    const bool divided = division != Division::kNone && !(division == Division::kUnlessNearZero && nearZero(w));
    for (int j = 0; j < components; ++j) {
        double& x = coordinates[static_cast<size_t>(j)];
        x = at(out, 0, j);
        if (!divided) continue;
        x = j == n - 1 ? 1.0 : division == Division::kByW ? x / w : x * (1.0 / w);
    }
    *point = std::bit_cast<V>(coordinates);
    return true;
}

// Tame numbers, with which no w is near zero, so that every array is transformed to its end; boundary values; boundary
// values with matrices that make w equal to x.
enum class Numbers { kTame, kNasty, kWIsX };

// Calls transform(m, count, points) for random points. Where there is a site, w is tested.
template <class M, class V, class Transform>
void checkForm(const char* form, Division division, const char* site, Transform transform) {
    Random random(44);
    for (int round = 0; round < 144; ++round) {
        const auto numbers = static_cast<Numbers>(round % 3);
        const int32_t count = round / 3 % 12 - 1;
        CAPTURE(form, round);
        const auto number = [&] { return numbers == Numbers::kTame ? random.plain(1, 2) : random.nasty(); };
        const M m = fill<M>([&](int i, int j) {
            if (numbers != Numbers::kWIsX || j < sizeOf<M> - 1) return number();
            return i == 0 ? 1.0 : 0.0;
        });
        // One point more than is to be transformed.
        std::vector<V> points(static_cast<size_t>(std::max(count, 0)) + 1);
        for (V& point : points) {
            DoublesOf<V> coordinates;
            for (double& x : coordinates) x = number();
            point = std::bit_cast<V>(coordinates);
        }
        std::vector<V> expected = points;
        bool complete = true;
        for (int32_t i = 0; i < count && complete; ++i) {
            complete = transformByDefinition(m, division, site != nullptr, &expected[static_cast<size_t>(i)]);
        }
        HostReports host;
        CHECK(thrownBy([&] { transform(m, count, points.data()); }) == (complete ? 0 : Zan_Err_HomogeneousWZero));
        CHECK(host.takeAll() == (complete ? "" : std::string("0x1100") + site + " sev 8: homogeneous point has W=0"));
        for (size_t i = 0; i < points.size(); ++i) {
            CAPTURE(i);
            CHECK(doubles(points[i]) == doubles(expected[i]));
        }
    }
}

template <class M, class V>
void check(const Operation<M, V>& operation) {
    CAPTURE(operation.what);
    if (operation.function != nullptr) {
        checkForm<M, V>("function", operation.division, nullptr, [&](const M& m, int32_t count, V* points) {
            CHECK(operation.function(&m, count, points) == 0);
        });
    }
    if (operation.pointMember == nullptr) return;
    checkForm<M, V>("point member", operation.division, operation.pointSite, [&](const M& m, int32_t count, V* points) {
        for (int32_t i = 0; i < count; ++i) (m.*operation.pointMember)(points + i);
    });
    checkForm<M, V>("array member", operation.division, operation.arraySite,
                    [&](const M& m, int32_t count, V* points) { (m.*operation.arrayMember)(count, points); });
}

}  // namespace

TEST_CASE("points that are not divided") {
    check<M3, Vector2>(
        {"affine, in the plane", Division::kNone, Zan_TransformFloatPoints, &M3::TransformPoint, &M3::TransformPoints});
    check<M3, Vector3>({"homogeneous, of the plane", Division::kNone, Zan_TransformVector3, &M3::TransformPoint,
                        &M3::TransformPoints});
    check<M4, Vector3>({"affine, in space", Division::kNone, nullptr, &M4::TransformPoint, &M4::TransformPoints});
    check<M4, Vector4>({"homogeneous, of space", Division::kNone, Zan_TransformVector4NoDivide, &M4::TransformPoint,
                        &M4::TransformPoints});
}

TEST_CASE("points that stay undivided where w is near zero") {
    check<M4, Vector4>({"homogeneous", Division::kUnlessNearZero, Zan_TransformVector4});
    check<M4, Vector3>({"without w, which counts as 1", Division::kUnlessNearZero, Zan_Transform3DFloatPoints});
}

TEST_CASE("points divided by any w") {
    check<M3, Vector3>({"of the plane, by a division", Division::kByW, nullptr, &M3::TransformPointAndDivideFast,
                        &M3::TransformPointsAndDivideFast});
    check<M4, Vector4>({"of space, by a reciprocal", Division::kByReciprocal, nullptr, &M4::TransformPointAndDivideFast,
                        &M4::TransformPointsAndDivideFast});
}

TEST_CASE("points divided by w, where a w near zero is reported and ends the transform") {
    check<M3, Vector2>({"of the plane, without w", Division::kByW, nullptr, &M3::TransformPointAndDivide,
                        &M3::TransformPointsAndDivide, "39", "39"});
    check<M3, Vector3>({"of the plane, homogeneous", Division::kByW, nullptr, &M3::TransformPointAndDivide,
                        &M3::TransformPointsAndDivide, "39", "3A"});
    check<M4, Vector3>({"of space, without w", Division::kByReciprocal, nullptr, &M4::TransformPointAndDivide,
                        &M4::TransformPointsAndDivide, "3B", "3B"});
    check<M4, Vector4>({"of space, homogeneous", Division::kByReciprocal, nullptr, &M4::TransformPointAndDivide,
                        &M4::TransformPointsAndDivide, "3B", "3C"});
}
