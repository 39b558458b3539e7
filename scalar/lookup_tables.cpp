// The lookup tables of the optional services: how they are filled, handed out and rebuilt after the platform reclaimed
// their memory.
#include "scalar/lookup_tables.h"

#include "frame/report.h"
#include "platform/bel.h"
#include "zan/scalar.h"

#include <cmath>

void zan::fillSineTable(float* sines) {
    const double halfPi = 2 * std::atan(1.0);
    for (int i = 0; i < 256; ++i) sines[i] = static_cast<float>(std::sin(i / 255.0 * halfPi));
}

void zan::fillCharTables(uint8_t* products, uint8_t* quotients) {
    for (unsigned a = 0; a < 256; ++a) {
        for (unsigned b = 0; b < 256; ++b) {
            *products++ = static_cast<uint8_t>((a * b + 127) / 255);
            *quotients++ = b >= a ? uint8_t{255} : static_cast<uint8_t>((b * 255 + a / 2) / a);
        }
    }
}

namespace {

using zan::Message;
using zan::Site;

// What differs between the two services. A service with one table has null for the second.
struct TableService {
    uint32_t flag;
    Site prepareSite, unprepareSite;
    Message context, unavailable;
    size_t tableBytes;
    void** Zan_Globals::*first;
    void** Zan_Globals::*second;
    uint16_t Zan_Globals::*prepareCount;
};
constexpr TableService kCharMath = {Zan_Service_FastCharMath,
                                    Site::PrepareFCMD,
                                    Site::UnprepareFCMD,
                                    Message::FastCharMath,
                                    Message::CharMathUnavailable,
                                    zan::kCharTableBytes,
                                    &Zan_Globals::charMultiplyTable,
                                    &Zan_Globals::charDivideTable,
                                    &Zan_Globals::charMathPrepareCount};
constexpr TableService kTrig = {
    Zan_Service_FastTrig,          Site::FastTrig,       Site::FastTrig,          Message::FastTrig,
    Message::TrigUnavailable,      zan::kSineTableBytes, &Zan_Globals::sineTable, nullptr,
    &Zan_Globals::sinePrepareCount};

bool running(const TableService& service) {
    if ((Zanp_G.services & service.flag) == 0 || Zanp_G.*service.first == nullptr) return false;
    return service.second == nullptr || Zanp_G.*service.second != nullptr;
}

bool reclaimed(const TableService& service) {
    if (*(Zanp_G.*service.first) == nullptr) return true;
    return service.second != nullptr && *(Zanp_G.*service.second) == nullptr;
}

// New handles in place of reclaimed ones. Where an allocation fails the service is left without handles to fill.
bool rebuild(const TableService& service) {
    Bel_FreeHandle(Zanp_G.*service.first);
    if (service.second != nullptr) Bel_FreeHandle(Zanp_G.*service.second);
    Zanp_G.*service.first = Bel_AllocateHandleQuiet(service.tableBytes);
    if (service.second == nullptr) {
        if (Zanp_G.*service.first == nullptr) return false;
        zan::fillSineTable(static_cast<float*>(*(Zanp_G.*service.first)));
        return true;
    }
    Zanp_G.*service.second = Bel_AllocateHandleQuiet(service.tableBytes);
    if (Zanp_G.*service.first == nullptr || Zanp_G.*service.second == nullptr) return false;
    zan::fillCharTables(static_cast<uint8_t*>(*(Zanp_G.*service.first)),
                        static_cast<uint8_t*>(*(Zanp_G.*service.second)));
    return true;
}

template <class Entry>
void handOut(Entry** output, void** Zan_Globals::*handle) {
    if (output != nullptr) *output = static_cast<Entry*>(*(Zanp_G.*handle));
}

template <class Entry>
int32_t prepare(const TableService& service, bool reportFailure, bool failIfReclaimed, bool* ok, Entry** first,
                Entry** second) {
    if (first != nullptr) *first = nullptr;
    if (second != nullptr) *second = nullptr;
    bool ready = true;
    int32_t result = 0;
    if (!running(service)) {
        ready = false;
        result = zan::report(service.prepareSite, Zan_Err_UnrequestedService, service.context);
    } else {
        // While somebody holds the addresses the tables are neither checked nor rebuilt.
        if (Zanp_G.*service.prepareCount == 0 && reclaimed(service)) ready = !failIfReclaimed && rebuild(service);
        ++(Zanp_G.*service.prepareCount);
        if (ready) {
            handOut(first, service.first);
            handOut(second, service.second);
        } else if (reportFailure) {
            zan::reportText(service.prepareSite, service.unavailable);
            result = Zan_Result_Failed;
        }
    }
    if (ok != nullptr) *ok = ready;
    return result;
}

int32_t unprepare(const TableService& service) {
    if (!running(service)) {
        return zan::report(service.unprepareSite, Zan_Err_UnrequestedService, service.context);
    }
    --(Zanp_G.*service.prepareCount);
    return 0;
}

}  // namespace

int32_t Zan_PrepareFCMD(bool reportFailure, bool failIfReclaimed, bool* ok, uint8_t** multiplyTable,
                        uint8_t** divideTable) {
    return prepare(kCharMath, reportFailure, failIfReclaimed, ok, multiplyTable, divideTable);
}

int32_t Zan_UnprepareFCMD() { return unprepare(kCharMath); }

int32_t Zan_PrepareFTrig(bool reportFailure, bool failIfReclaimed, bool* ok, float** sineTable) {
    return prepare<float>(kTrig, reportFailure, failIfReclaimed, ok, sineTable, nullptr);
}

int32_t Zan_UnprepareFTrig() { return unprepare(kTrig); }
