// Time as ratios: frames of 1001/30000 seconds, spans, products that do not fit, and frame rates that must not pass
// through a floating-point number.
#include "zan/platform/bel.h"

#include <zan/zan.h>

#include <cmath>
#include <cstdio>

namespace {

double seconds(const Zan_Ratio& r) { return static_cast<double>(r.num) / r.den; }

//! [start of frame]
constexpr Zan_Ratio kFrame = {1001, 30000};  // 29.97 frames a second, exactly

// The time at which a frame starts, exactly, or false when it does not fit a ratio.
bool startOfFrame(int32_t frame, const Zan_Ratio& duration, Zan_Ratio* start) {
    const Zan_Ratio count = {frame, 1};
    uint8_t status = 0;  // neither halving nor approximation is allowed, and a failure is quiet
    return Zan_MulRatio(&count, &duration, start, &status) == 0 && status == Zan_RatioExact;
}
//! [start of frame]

//! [approximate]
// The same, approximated where it does not fit.
Zan_Ratio nearStartOfFrame(int32_t frame, const Zan_Ratio& duration) {
    const Zan_Ratio count = {frame, 1};
    Zan_Ratio start;
    uint8_t status = Zan_RatioAllowApproximation;
    if (Zan_MulRatio(&count, &duration, &start, &status) != 0) return {0, 0};
    return start;  // status, dropped here, would tell whether it is exact
}
//! [approximate]

void showFrame(int32_t frame) {
    Zan_Ratio start;
    if (startOfFrame(frame, kFrame, &start)) {
        std::printf("frame %d starts at %d/%u = %.6f s\n", frame, start.num, start.den, seconds(start));
        return;
    }
    start = nearStartOfFrame(frame, kFrame);
    const double truth = frame * 1001.0 / 30000.0;
    std::printf("frame %d does not fit; near it is %d/%u = %.6f s, wrong by %.6f s, a relative error of %.1e\n", frame,
                start.num, start.den, seconds(start), std::fabs(seconds(start) - truth),
                std::fabs(seconds(start) / truth - 1.0));
}

// The frame before the first one whose start does not fit a ratio.
int32_t lastExactFrame(const Zan_Ratio& duration) {
    Zan_Ratio start;
    int32_t frame = 0;
    while (startOfFrame(frame + 1, duration, &start)) ++frame;
    return frame;
}

}  // namespace

int main() {
    showFrame(1);
    showFrame(107892);
    showFrame(10000000);
    showFrame(10000001);

    //! [spans]
    // A clip of 10 s that starts at frame 100, cut to the span of the film.
    const Zan_Ratio filmStart = {0, 1};
    const Zan_Ratio filmLength = {12, 1};
    const Zan_Ratio clipLength = {10, 1};
    Zan_Ratio clipStart;
    Zan_Ratio start;
    Zan_Ratio length;
    if (!startOfFrame(100, kFrame, &clipStart)) return 1;
    if (Zan_ClipSpanToSpan(&clipStart, &clipLength, &filmStart, &filmLength, &start, &length) != 0) return 1;
    std::printf("the clip plays from %d/%u for %d/%u s\n", start.num, start.den, length.num, length.den);
    //! [spans]

    //! [from double]
    // A rate from a file is a floating-point number. It becomes the ratio nearest to its single-precision value.
    for (const double rate : {29.97, 29.970029, 30000.0 / 1001.0}) {
        Zan_Ratio ratio;
        bool overflow = false;
        Zan_FpLong2Ratio(rate, &ratio, &overflow);
        Zan_Ratio duration;
        bool exact = false;
        Zan_RecipRatio(&ratio, &duration, &exact);
        const double hour = 3600.0 * seconds(duration) / seconds(kFrame);
        std::printf("%.6f gives frames of %d/%u s: %.3f ms off in an hour, exact up to frame %d\n", rate, duration.num,
                    duration.den, 1000.0 * std::fabs(hour - 3600.0), lastExactFrame(duration));
    }
    std::printf("1001/30000 s is exact up to frame %d\n", lastExactFrame(kFrame));
    //! [from double]
}
