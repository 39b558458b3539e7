// The lookup tables of the optional services: their contents, prepare and unprepare calls, and rebuilding of tables
// whose memory the platform has reclaimed.
#include "scalar/lookup_tables.h"

#include "frame/report.h"
#include "zan/platform/bel.h"
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

// What differs between the two services. secondTable is null for a service with one table.
struct TableService {
    uint32_t flag;
    Site prepareSite;
    Site unprepareSite;
    Message context;      // of Zan_Err_UnrequestedService
    Message unavailable;  // tables that cannot be made ready
    size_t tableBytes;
    void** Zan_Globals::*firstTable;
    void** Zan_Globals::*secondTable;
    uint16_t Zan_Globals::*prepareCount;
};
constexpr TableService kCharMath = {
    .flag = Zan_Service_FastCharMath,
    .prepareSite = Site::PrepareFCMD,
    .unprepareSite = Site::UnprepareFCMD,
    .context = Message::FastCharMath,
    .unavailable = Message::CharMathUnavailable,
    .tableBytes = zan::kCharTableBytes,
    .firstTable = &Zan_Globals::charMultiplyTable,
    .secondTable = &Zan_Globals::charDivideTable,
    .prepareCount = &Zan_Globals::charMathPrepareCount,
};
constexpr TableService kTrig = {
    .flag = Zan_Service_FastTrig,
    .prepareSite = Site::FastTrig,
    .unprepareSite = Site::FastTrig,
    .context = Message::FastTrig,
    .unavailable = Message::TrigUnavailable,
    .tableBytes = zan::kSineTableBytes,
    .firstTable = &Zan_Globals::sineTable,
    .secondTable = nullptr,
    .prepareCount = &Zan_Globals::sinePrepareCount,
};

bool isRunning(const TableService& service) {
    if ((Zanp_G.services & service.flag) == 0 || Zanp_G.*service.firstTable == nullptr) return false;
    return service.secondTable == nullptr || Zanp_G.*service.secondTable != nullptr;
}

bool isReclaimed(const TableService& service) {
    if (*(Zanp_G.*service.firstTable) == nullptr) return true;
    return service.secondTable != nullptr && *(Zanp_G.*service.secondTable) == nullptr;
}

// Replaces the handles and fills them. After a failed allocation a handle is null, so the service no longer runs.
bool rebuild(const TableService& service) {
    Bel_FreeHandle(Zanp_G.*service.firstTable);
    if (service.secondTable != nullptr) Bel_FreeHandle(Zanp_G.*service.secondTable);
    Zanp_G.*service.firstTable = Bel_AllocateHandleQuiet(service.tableBytes);
    if (service.secondTable == nullptr) {
        if (Zanp_G.*service.firstTable == nullptr) return false;
        zan::fillSineTable(static_cast<float*>(*(Zanp_G.*service.firstTable)));
        return true;
    }
    Zanp_G.*service.secondTable = Bel_AllocateHandleQuiet(service.tableBytes);
    if (Zanp_G.*service.firstTable == nullptr || Zanp_G.*service.secondTable == nullptr) return false;
    zan::fillCharTables(static_cast<uint8_t*>(*(Zanp_G.*service.firstTable)),
                        static_cast<uint8_t*>(*(Zanp_G.*service.secondTable)));
    return true;
}

template <class Entry>
void storeAddress(Entry** output, void** Zan_Globals::*handle) {
    if (output != nullptr) *output = static_cast<Entry*>(*(Zanp_G.*handle));
}

template <class Entry>
int32_t prepare(const TableService& service, bool reportFailure, bool failIfReclaimed, bool* ok, Entry** first,
                Entry** second) {
    if (first != nullptr) *first = nullptr;
    if (second != nullptr) *second = nullptr;
    bool ready = true;
    int32_t result = 0;
    if (!isRunning(service)) {
        ready = false;
        result = zan::report(service.prepareSite, Zan_Err_UnrequestedService, service.context);
    } else {
        // Open prepare calls hold the addresses, so the tables are checked and rebuilt only on the first.
        if (Zanp_G.*service.prepareCount == 0 && isReclaimed(service)) ready = !failIfReclaimed && rebuild(service);
        ++(Zanp_G.*service.prepareCount);
        if (ready) {
            storeAddress(first, service.firstTable);
            storeAddress(second, service.secondTable);
        } else if (reportFailure) {
            zan::reportText(service.prepareSite, service.unavailable);
            result = Zan_Result_Failed;
        }
    }
    if (ok != nullptr) *ok = ready;
    return result;
}

int32_t unprepare(const TableService& service) {
    if (!isRunning(service)) {
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
