// The boxes around rectangles that go through matrices, with their corners and the flag for a turned one.
#include "host_reports.h"
#include "matrices.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const Zan_Matrix3 kQuarterTurn = matrix3({0, 1, 0, -1, 0, 0, 0, 0, 1});  // (x, y) goes to (-y, x)
const Zan_Matrix3 kScale = matrix3({2, 0, 0, 0, 3, 0, 0, 0, 1});
const Zan_Matrix3 kMirror = matrix3({-1, 0, 0, 0, 1, 0, 0.25, 0.5, 1});
const Zan_Matrix3 kFar = matrix3({1, 0, 0, 0, 1, 0, 32760, -32760, 1});
const Zan_Matrix3 kProjective = matrix3({2, 0, 7, 0, 3, 7, 0, 0, 7});  // as kScale, but for the flag
const Zan_Matrix3 kNaNs = matrix3({kNaN, 0, 0, 0, 1, 0, 0, 0, 1});
const Zan_Matrix3 kZeroTimesInf = matrix3({kInf, 0, 0, 0, 1, 0, 0, 0, 1});  // NaN where x is 0, else infinite

struct RectRow {
    const char* what;
    const Zan_Matrix3* m;
    int16_t in[4];  // left, top, right, bottom
    double box[4];  // unrounded
    int16_t rounded[4];
    int32_t turned;
};
const RectRow kRects[] = {
    {"scaled", &kScale, {0, 0, 20, 10}, {0, 0, 40, 30}, {0, 0, 40, 30}, 0},
    {"turned", &kQuarterTurn, {0, 0, 20, 10}, {-10, 0, 0, 20}, {-10, 0, 0, 20}, 1},
    {"mirrored, halves go up", &kMirror, {1, 2, 4, 6}, {-3.75, 2.5, -0.75, 6.5}, {-4, 3, -1, 7}, 0},
    {"clamped", &kFar, {0, 0, 6, 6}, {32760, -32760, 32766, -32754}, {32760, -32760, 32766, -32754}, 0},
    {"clamped more", &kFar, {5, -9, 7, 0}, {32765, -32769, 32767, -32760}, {32765, -32767, 32766, -32760}, 0},
    {"never divided", &kProjective, {0, 0, 20, 10}, {0, 0, 40, 30}, {0, 0, 40, 30}, 1},
    {"NaN", &kNaNs, {1, 2, 3, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0},
    {"NaN on the left", &kZeroTimesInf, {0, 2, 3, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0},
    {"NaN on the right", &kZeroTimesInf, {-3, 2, 0, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0},
    {"infinite", &kZeroTimesInf, {-3, 2, 3, 4}, {-kInf, 2, kInf, 4}, {-32767, 2, 32766, 4}, 0},
};

// A corner as the box's table would have it: around in the order of the four corners.
double affineAt(const Zan_Matrix3& m, const int16_t (&in)[4], int corner, int coordinate) {
    const double x = in[corner == 1 || corner == 2 ? 2 : 0], y = in[corner >= 2 ? 3 : 1];
    return coordinate == 0 ? x * m.m00 + y * m.m10 + m.m20 : x * m.m01 + y * m.m11 + m.m21;
}

}  // namespace

TEST_CASE("16-bit and double rectangles") {
    for (const RectRow& r : kRects) {
        for (const bool member : {false, true}) {
            CAPTURE(r.what, member);
            Zan_Vector2T<double> corners[4], floatCorners[4];
            unsigned char turned = 9, floatTurned = 9;
            Zan_Rect rect = {r.in[1], r.in[0], r.in[3], r.in[2]}, bare = rect;
            Zan_FloatRect floats = {double(r.in[0]), double(r.in[1]), double(r.in[2]), double(r.in[3])};
            if (member) {
                r.m->TransformRect(&rect, corners, &turned);
                r.m->TransformRect(&bare, nullptr, nullptr);
            } else {
                CHECK(Zan_TransformRect(r.m, &rect, corners, &turned) == 0);
                CHECK(Zan_TransformRect(r.m, &bare, nullptr, nullptr) == 0);
            }
            CHECK(Zan_TransformFloatRect(r.m, &floats, member ? nullptr : floatCorners, &floatTurned) == 0);
            for (const Zan_Rect& box : {rect, bare}) {
                CHECK((box.left == r.rounded[0] && box.top == r.rounded[1]));
                CHECK((box.right == r.rounded[2] && box.bottom == r.rounded[3]));
            }
            CHECK(sameDoubles(floats, Zan_FloatRect{r.box[0], r.box[1], r.box[2], r.box[3]}));
            CHECK((turned == r.turned && floatTurned == r.turned));
            for (int i = 0; i < 4; ++i) {
                CHECK(sameBits(corners[i].x, affineAt(*r.m, r.in, i, 0)));
                CHECK(sameBits(corners[i].y, affineAt(*r.m, r.in, i, 1)));
                CHECK((member || sameDoubles(floatCorners[i], corners[i])));
            }
        }
    }
}

TEST_CASE("16.16 rectangles fail whole") {
    HostReports host;
    constexpr const char* kReport = "0x110027 sev 8: overflow in fixed point transformation.";
    const Zan_Matrix3 translate = matrix3({1, 0, 0, 0, 1, 0, 1, -1, 1});
    struct {
        const char* what;
        const Zan_Matrix3* m;
        Zan_FixedRect in, box;
        Zan_FixedPoint corners[4];
        int32_t turned;
        const char* report;
    } const rows[] = {
        {"scaled", &kScale, {0, 0, 20, 10}, {0, 0, 40, 30}, {{0, 0}, {40, 0}, {40, 30}, {0, 30}}, 0, ""},
        {"turned", &kQuarterTurn, {0, 0, 2, 1}, {-1, 0, 0, 2}, {{0, 0}, {0, 2}, {-1, 2}, {-1, 0}}, 1, ""},
        {"whole units",
         &translate,
         {0, 0, 2, 1},
         {65536, -65536, 65538, -65535},
         {{65536, -65536}, {65538, -65536}, {65538, -65535}, {65536, -65535}},
         0,
         ""},
        {"the third corner overflows in its v",
         &kScale,
         {1, 2, 3, INT32_MAX},
         {1, 2, 3, INT32_MAX},
         {{2, 6}, {6, 6}, {6, INT32_MAX}, {1, INT32_MAX}},
         9,
         kReport},
    };
    for (const auto& r : rows) {
        for (const bool member : {false, true}) {
            CAPTURE(r.what, member);
            Zan_FixedRect rect = r.in;
            Zan_FixedPoint corners[4] = {};
            unsigned char turned = 9;
            int32_t code = 0;
            try {
                if (member)
                    r.m->TransformRect(&rect, corners, &turned);
                else
                    code = Zan_TransformFixRect(r.m, &rect, corners, &turned);
            } catch (long thrown) {
                code = static_cast<int32_t>(thrown);
            }
            CHECK(code == (*r.report == '\0' ? 0 : 0x1102));
            CHECK(host.takeAll() == r.report);
            CHECK(std::memcmp(&rect, &r.box, sizeof rect) == 0);
            CHECK(std::memcmp(corners, r.corners, sizeof corners) == 0);
            CHECK(turned == r.turned);
            rect = r.in;
            CHECK(Zan_TransformFixRect(r.m, &rect, nullptr, nullptr) == code);
            CHECK((std::memcmp(&rect, &r.box, sizeof rect) == 0 && host.takeAll() == r.report));
        }
    }
}

TEST_CASE("whole bounds") {
    const Zan_Matrix3 quarter = matrix3({0.25, 0, 0, 0, 0.25, 0, 0, 0, 1});
    const Zan_Matrix3 up = matrix3({1, 0, 0, 0, 1, 0, 4e9, -4e9, 1});
    const Zan_Matrix3 half = matrix3({1, 0, 0, 0, 1, 0, 0.5, -0.5, 1});
    struct {
        const char* what;
        const Zan_Matrix3* m;
        Zan_LRect in, out;
    } const rows[] = {
        {"no width", &quarter, {0, 0, 0, 10}, {0, 0, 0, 0}},
        {"no height, inverted", &kNaNs, {0, 10, 10, 9}, {0, 0, 0, 0}},
        {"outwards", &quarter, {0, 0, 10, 10}, {0, 0, 3, 3}},
        {"outwards below zero", &quarter, {-10, -9, -1, -8}, {-3, -3, 0, -2}},
        {"turned", &kQuarterTurn, {0, 0, 20, 10}, {-10, 0, 0, 20}},
        {"the whole range",
         &half,
         {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX},
         {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}},
        {"beyond the range", &up, {-5, -5, 5, 5}, {INT32_MAX, INT32_MIN, INT32_MAX, INT32_MIN}},
        {"NaN", &kNaNs, {1, 2, 3, 4}, {INT32_MIN, 2, INT32_MAX, 4}},
        {"NaN at one corner", &kZeroTimesInf, {0, 2, 3, 4}, {INT32_MIN, 2, INT32_MAX, 4}},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        const Zan_LRect box = Zan_TransformBounds(*r.m, r.in);
        CHECK(std::memcmp(&box, &r.out, sizeof box) == 0);
    }
}
