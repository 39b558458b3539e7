// Floating-point flags: with finite arguments, and unless a result overflows, no operation raises the invalid or the
// divide-by-zero flag, with any kernel, except the few whose own steps divide by zero.
#include "tests/support/instruction_sets.h"
#include "tools/selfcheck/batch.h"
#include "zan/platform/bel.h"

#include <algorithm>
#include <cfenv>
#include <string>

using namespace selfcheck;

namespace {

using Vector2 = Zan_Vector2T<double>;

constexpr uint64_t kCases = 4000;
constexpr int kErrors = FE_INVALID | FE_DIVBYZERO;

// These divide by an argument, or by a w, that may be zero. A kernel raises no flag for
// them that the plain kernel does not raise, except that it may add the invalid flag where the plain one raises any.
constexpr const char* kMayDivideByZero[] = {
    "Zan_fmod",
    "Zan_Matrix4::Project",
    "Zan_Matrix3::TransformPointAndDivideFast",
    "Zan_Matrix3::TransformPointsAndDivideFast",
    "Zan_Matrix4::TransformPointAndDivideFast",
    "Zan_Matrix4::TransformPointsAndDivideFast",
};

int failures = 0;

void fail(const std::string& what, int kernel, int flags) {
    std::printf("%s, kernel %d: raises%s%s\n", what.c_str(), kernel, (flags & FE_INVALID) != 0 ? " invalid" : "",
                (flags & FE_DIVBYZERO) != 0 ? " divide-by-zero" : "");
    ++failures;
}

// The flags of one case, or 0 if it is not counted.
int flagsOf(const Entry& entry, uint64_t n) {
    Draw draw(n);
    Sum sum(false);
    std::feclearexcept(FE_ALL_EXCEPT);
    entry.run(draw, sum);
    const int flags = std::fetestexcept(FE_ALL_EXCEPT);
    return draw.finite() && (flags & FE_OVERFLOW) == 0 ? flags & kErrors : 0;
}

void checkOperation(const Entry& entry) {
    const bool mayDivideByZero = std::count(std::begin(kMayDivideByZero), std::end(kMayDivideByZero), entry.name) != 0;
    bool divides = false;
    for (uint64_t n = 0; n < kCases; ++n) {
        int plainFlags = 0;
        eachInstructionSet([&](int kernel) {
            const int flags = flagsOf(entry, n);
            if (kernel == 0) plainFlags = flags;
            divides = divides || flags != 0;
            const int allowed = mayDivideByZero && plainFlags != 0 ? plainFlags | FE_INVALID : 0;
            if ((flags & ~allowed) != 0) fail(entry.name + ", case " + std::to_string(n), kernel, flags);
        });
    }
    if (mayDivideByZero && !divides) {
        std::printf("%s: listed in kMayDivideByZero, but raises no flag in any case\n", entry.name.c_str());
        ++failures;
    }
}

// Points on a line are rare among the cases above, and none has hundreds of points.
const struct HullRow {
    const char* what;
    int points;
    Vector2 step;
} kHulls[] = {
    {"the hull of four level points", 4, {1, 0}},
    {"the hull of four points above each other", 4, {0, 1}},
    {"the hull of four equal points", 4, {0, 0}},
    {"the hull of many level points", 500, {1, 0}},
    {"the hull of many points above each other", 500, {0, 1}},
    {"the hull of points a subnormal number apart", 4, {0x1p-1074, 0x1p-1074}},
    {"the hull of many points a subnormal number apart", 500, {0x1p-1074, 0x1p-1074}},
};

}  // namespace

int main() {
    Bel_SetReportHandler([](void*, const Bel_Report*) {}, nullptr);
    for (const Entry& entry : entries()) checkOperation(entry);
    for (const HullRow& row : kHulls) {
        std::vector<Vector2> points, hull;
        for (int i = 0; i < row.points; ++i) points.emplace_back(i * row.step.x, i * row.step.y);
        std::feclearexcept(FE_ALL_EXCEPT);
        Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
        const int flags = std::fetestexcept(kErrors);
        if (flags != 0) fail(row.what, 0, flags);
    }
    return failures == 0 ? 0 : 1;
}
