// The boxes around rectangles that go through matrices, with their corners and the flag for a turned one.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

const Zan_Matrix3 kQuarterTurn = matrix({0, 1, 0, -1, 0, 0, 0, 0, 1});  // (x, y) goes to (-y, x)
const Zan_Matrix3 kScale = matrix({2, 0, 0, 0, 3, 0, 0, 0, 1});
const Zan_Matrix3 kNaNs = matrix({kNaN, 0, 0, 0, 1, 0, 0, 0, 1});
const Zan_Matrix3 kZeroTimesInf = matrix({kInf, 0, 0, 0, 1, 0, 0, 0, 1});  // NaN where x is 0, else infinite

template <class Record>
bool same(const Record& a, const Record& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

TEST_CASE("16-bit and double rectangles") {
    // Left, top, right, bottom; unrounded, rounded, and whether turned.
    using Box = Zan_FloatRect;
    const auto check = [](const Zan_Matrix3& m, const Box& in, const Box& box, const Box& rounded, int turned) {
        CAPTURE(m.m00, m.m20, in.left, in.right);
        const auto narrow = [](const Box& b) {
            return Zan_Rect{int16_t(b.top), int16_t(b.left), int16_t(b.bottom), int16_t(b.right)};
        };
        Zan_Rect rect = narrow(in), same16 = rect;
        Box exact = in, alone = in;
        V2 corners[2][4], due[] = {{in.left, in.top}, {in.right, in.top}, {in.right, in.bottom}, {in.left, in.bottom}};
        unsigned char flags[] = {9, 9};
        m.TransformRect(&rect, corners[0], &flags[0]);
        m.TransformPoints(4, due);
        CHECK((Zan_TransformFloatRect(&m, &exact, corners[1], &flags[1]) == 0 && sameDoubles(exact, box)));
        CHECK((Zan_TransformFloatRect(&m, &alone, nullptr, nullptr) == 0 && sameDoubles(alone, box)));
        CHECK((Zan_TransformRect(&m, &same16, nullptr, nullptr) == 0 && same(same16, rect)));
        CHECK((same(rect, narrow(rounded)) && flags[0] == turned && flags[1] == turned));
        for (int i = 0; i < 8; ++i) CHECK(sameDoubles(corners[i / 4][i % 4], due[i % 4]));
    };
    const Zan_Matrix3 mirror = matrix({-1, 0, 0, 0, 1, 0, 0.25, 0.5, 1});
    const Zan_Matrix3 diagonal = matrix({1, 1, 0, -1, 1, 0, 0, 0, 1});  // a corner on each side
    const Zan_Matrix3 far = matrix({1, 0, 0, 0, 1, 0, 32760, -32760, 1});
    const Zan_Matrix3 projective = matrix({2, 0, 7, 0, 3, 7, 0, 0, 7});  // as kScale, but for the flag
    check(projective, {0, 0, 20, 10}, {0, 0, 40, 30}, {0, 0, 40, 30}, 1);
    check(diagonal, {0, 0, 20, 10}, {-10, 0, 20, 30}, {-10, 0, 20, 30}, 1);
    check(mirror, {1, 2, 4, 6}, {-3.75, 2.5, -0.75, 6.5}, {-4, 3, -1, 7}, 0);  // halves go up
    check(far, {5, -9, 7, 0}, {32765, -32769, 32767, -32760}, {32765, -32767, 32766, -32760}, 0);
    check(kNaNs, {1, 2, 3, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0);
    check(kZeroTimesInf, {0, 2, 3, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0);
    check(kZeroTimesInf, {-3, 2, 0, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0);
    check(kZeroTimesInf, {-3, 2, 3, 4}, {-kInf, 2, kInf, 4}, {-32767, 2, 32766, 4}, 0);
}

TEST_CASE("16.16 rectangles fail whole") {
    HostReports host;
    using Corners = Zan_FixedPoint[4];
    const auto check = [&](const Zan_Matrix3& m, const Zan_FixedRect& in, const Zan_FixedRect& box, const Corners& due,
                           int turned) {
        CAPTURE(m.m00, m.m20, in.right);
        const int32_t code = turned > 1 ? 0x1102 : 0;
        const char* report = code != 0 ? "0x110027 sev 8: overflow in fixed point transformation." : "";
        Zan_FixedRect rect = in, other = in;
        Corners corners = {};
        unsigned char flag = 9;
        CHECK(thrownBy([&] { m.TransformRect(&rect, corners, &flag); }) == code);
        CHECK((same(rect, box) && same(corners, due) && flag == turned && host.takeAll() == report));
        CHECK((Zan_TransformFixRect(&m, &other, nullptr, nullptr) == code && same(other, box) &&
               host.takeAll() == report));
    };
    constexpr int32_t kMax = INT32_MAX;
    check(kQuarterTurn, {0, 0, 2, 1}, {-1, 0, 0, 2}, {{0, 0}, {0, 2}, {-1, 2}, {-1, 0}}, 1);
    // The third corner overflows in its v.
    check(kScale, {1, 2, 3, kMax}, {1, 2, 3, kMax}, {{2, 6}, {6, 6}, {6, kMax}, {1, kMax}}, 9);
}

TEST_CASE("whole bounds") {
    const auto check = [](const Zan_Matrix3& m, const Zan_LRect& in, const Zan_LRect& out) {
        CAPTURE(m.m00, m.m20, in.left, in.right, in.bottom);
        CHECK(same(Zan_TransformBounds(m, in), out));
    };
    const Zan_Matrix3 quarter = matrix({0.25, 0, 0, 0, 0.25, 0, 0, 0, 1});
    const Zan_Matrix3 up = matrix({1, 0, 0, 0, 1, 0, 4e9, -4e9, 1}), half = matrix({1, 0, 0, 0, 1, 0, 0.5, -0.5, 1});
    constexpr int32_t kMin = INT32_MIN, kMax = INT32_MAX;
    check(quarter, {0, 0, 0, 10}, {0, 0, 0, 0}), check(kNaNs, {9, 0, 8, 10}, {0, 0, 0, 0});
    check(kNaNs, {0, 10, 10, 10}, {0, 0, 0, 0}), check(kNaNs, {0, 10, 10, 9}, {0, 0, 0, 0});
    check(kQuarterTurn, {0, 0, 20, 10}, {-10, 0, 0, 20}), check(quarter, {-10, -9, -1, 9}, {-3, -3, 0, 3});
    check(half, {kMin, kMin, kMax, kMax}, {kMin, kMin, kMax, kMax});
    check(up, {-5, -5, 5, 5}, {kMax, kMin, kMax, kMin});
    check(kNaNs, {1, 2, 3, 4}, {kMin, 2, kMax, 4}), check(kZeroTimesInf, {0, 2, 3, 4}, {kMin, 2, kMax, 4});
}
