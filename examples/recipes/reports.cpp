// Reports: a handler, translated messages, exceptions, and memory that runs out.
#include "zan/platform/bel.h"

#include <zan/zan.h>

#include <array>
#include <cstdio>
#include <new>
#include <string_view>

namespace {

//! [handler]
// Called on the thread that reports, possibly on several at once; the text is valid during the call.
void printReport(void* /*context*/, const Bel_Report* report) {
    std::printf("  report 0x%X, severity %d: %s\n", report->errorNumber, report->severity, report->text);
}
//! [handler]

//! [catalogue]
// German, for the keys of docs/reports.md. A key without a translation stays English. "%s" takes a context, whose text
// has a key of its own.
const char* german(void* /*context*/, const char* module, const char* key) {
    struct Translation {
        std::string_view key;
        const char* text;
    };
    static constexpr std::array kTranslations = {
        Translation{"$$$/Ko/Zan/LStr/0002", "Überlauf %s."},
        Translation{"$$$/Ko/Zan/LStr/0024", "Die Matrix hat keine Inverse."},
        Translation{"$$$/Ko/Zan/LStr/0026", "beim Transformieren von Punkten"},
    };
    if (std::string_view(module) != "Zan") return nullptr;
    for (const Translation& translation : kTranslations)
        if (translation.key == key) return translation.text;
    return nullptr;
}
//! [catalogue]

void overflow() {
    Zan_Matrix3 m(true);
    m.Scale(1000.0, 1000.0);
    Zan_Point p = {100, 100};
    std::printf("  returned 0x%X\n", static_cast<unsigned>(Zan_TransformPoints(&m, 1, &p)));
}

//! [exception]
// A class throws the code that the plain function returns, after the same report.
void invert() {
    Zan_Matrix3 m(true);
    m.SetZero();
    try {
        m.Invert();
    } catch (long code) {
        std::printf("  caught 0x%lX\n", code);
    }
}
//! [exception]

//! [memory]
// The outline of a Zan_TransformPoly3D is in tracked memory. When that runs out the outline stays empty, and the layer
// is good for another attempt.
void runOutOfMemory() {
    Zan_TransformPoly3D layer;
    layer.SetLayerPoint(0, {0.0, 0.0});
    layer.SetLayerPoint(1, {1.0, 0.0});
    layer.SetLayerPoint(2, {1.0, 1.0});
    layer.SetLayerPoint(3, {0.0, 1.0});
    Zan_Matrix4 toEye(true);
    toEye.Translate(0.0, 0.0, 10.0);
    layer.TransformPointsToEye(toEye);
    layer.TransformPointsToScreen(Zan_Matrix4(true));

    Bel_SetAllocationFailure(kBel_TrackedAllocations, 1, false);  // the next allocation fails
    try {
        layer.InitPolyPoints();
    } catch (const std::bad_alloc& exception) {
        std::printf("  caught, platform code %d\n", Bel_TranslateAndReportException(exception));
    }
    std::printf("  %d points", layer.NumPolyPoints());
    layer.InitPolyPoints();
    std::printf(", then %d\n", layer.NumPolyPoints());
}
//! [memory]

}  // namespace

int main() {
    Bel_SetReportHandler(printReport, nullptr);
    std::puts("English:");
    overflow();
    invert();

    std::puts("German:");
    Bel_SetCatalogue(german, nullptr);
    overflow();
    invert();
    Bel_SetCatalogue(nullptr, nullptr);

    std::puts("out of memory:");
    runOutOfMemory();

    //! [birth]
    // Only the lookup tables need Zan_Birth. Without memory for one, Zan_Birth fails and the library is not started.
    std::puts("no memory for the sine table:");
    Bel_SetAllocationFailure(kBel_HandleAllocations, 1, true);
    uint32_t started = 0;
    std::printf("  Zan_Birth returned %d\n", Zan_Birth(Zan_Service_FastTrig, &started));
    Bel_SetAllocationFailure(0, 0, false);
    //! [birth]
}
