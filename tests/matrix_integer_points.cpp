// 16-bit and 16.16 points through matrices: rounding, and where an overflow stops the transform.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

#include <array>
#include <string>

namespace {

// Two points through a matrix whose third column is not read. Coordinates are h and v of the first, then of the second.
struct Row {
    const char* what;
    double elements[6];  // m00, m01, m10, m11, m20, m21
    std::array<int32_t, 4> points, images;
    bool fits = true;
};

template <class Point>
void check(const Row& row, const std::string& report) {
    CAPTURE(row.what);
    using T = decltype(Point::h);
    const auto& e = row.elements;
    const Zan_Matrix3 m = matrix({e[0], e[1], kNaN, e[2], e[3], kNaN, e[4], e[5], kNaN});
    Point points[2];
    for (size_t i = 0; i < 2; ++i) {
        points[i].h = static_cast<T>(row.points[2 * i]);
        points[i].v = static_cast<T>(row.points[2 * i + 1]);
    }
    HostReports host;
    CHECK(thrownBy([&] { m.TransformPoints(2, points); }) == (row.fits ? 0 : Zan_Err_Overflow));
    CHECK(host.takeAll() == (row.fits ? "" : report));
    const std::array<int32_t, 4> images = {points[0].h, points[0].v, points[1].h, points[1].v};
    CHECK(images == row.images);
}

}  // namespace

TEST_CASE("16-bit points are transformed, rounded, and stop at an overflow") {
    const Row rows[] = {
        {"halves go up", {0.5, 0, 0, 0.5, 0, 0}, {5, -5, -1, 1}, {3, -2, 0, 1}},
        {"the ends of the range", {1, 0, 0, 1, 32766.6, -32767.9}, {0, 0, 0, 0}, {32767, -32768, 32767, -32768}},
        {"h is too large", {1, 0, 0, 1, 32767, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, false},
        {"v is too large, and h did not change", {1, 0, 0, 1, 0, 32767}, {0, 0, 0, 0}, {0, 0, 0, 0}, false},
        {"h of the second is too small", {1, 0, 0, 1, -32767, 0}, {0, 7, -1, 7}, {-32767, 7, -1, 7}, false},
        {"v is too large: the new h stays, the second is unchanged",
         {2, 0, 0, 40000, 0, 0},
         {1, 1, 3, 1},
         {2, 1, 3, 1},
         false},
        {"v of the second is too small: its new h stays", {1, 0, 0, -32768, 5, 0}, {1, 0, 1, 1}, {6, 0, 6, 1}, false},
        {"NaN gives 0, and v is computed from the old h", {kNaN, 1, 1, 0, 0, 0}, {1, 2, 3, 4}, {0, 1, 0, 3}},
    };
    for (const Row& row : rows) check<Zan_Point>(row, "0x110026 sev 8: overflow in point transformation.");
}

TEST_CASE("16.16 points are transformed as integers and stop at an overflow") {
    constexpr int32_t kMin = INT32_MIN;
    constexpr int32_t kMax = INT32_MAX;
    const Row rows[] = {
        {"the ends of the range", {1, 0, 0, 1, 0, 0}, {kMax - 1, kMin + 1, 1, 2}, {kMax - 1, kMin + 1, 1, 2}},
        {"h of the second is too large", {1, 0, 0, 1, 0, 0}, {1, 2, kMax, 4}, {1, 2, kMax, 4}, false},
        {"v of the second is too small: its new h stays", {2, 0, 0, 1, 0, 0}, {1, 2, 3, kMin}, {2, 2, 6, kMin}, false},
        {"NaN gives the failure value of Zan_RoundDouble", {kNaN, 0, 0, 1, 0, 0}, {1, 2, 3, 4}, {kMin, 2, kMin, 4}},
    };
    for (const Row& row : rows) {
        check<Zan_FixedPoint>(row, "0x110027 sev 8: overflow in fixed point transformation.");
    }
}
