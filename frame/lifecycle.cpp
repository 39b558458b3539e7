// Start and stop of the library and its services, version checks, and export and import of the globals block.
#include "frame/report.h"
#include "scalar/lookup_tables.h"
#include "zan/platform/bel.h"
#include "zan/platform/oska.h"
#include "zan/platform/vun.h"

#include <cstdio>
#include <cstring>

Zan_Globals Zanp_G = {};

static_assert(Zan_kInterfaceVersion == ZAN_VERSION_MAJOR);

namespace {

using zan::Message;
using zan::Site;

bool started() { return Zanp_G.headMagic == Zan_kGlobalsMagic && Zanp_G.tailMagic == Zan_kGlobalsMagic; }

void setMagics(uint32_t magic) {
    Zanp_G.tailMagic = magic;
    Zanp_G.headMagic = magic;
}

// All tables have the name "FCM/D table" in the platform's report, the sine table too.
Bel_Handle allocateTable(Site site, size_t bytes) {
    return Bel_AllocateHandle(zan::errorNumber(site), zan::messageText(Message::FcmdTable), bytes);
}

void freeTable(Bel_Handle& handle) {
    if (handle == nullptr) return;
    Bel_FreeHandle(handle);
    handle = nullptr;
}

int32_t startFastTrig() {
    Zanp_G.sineTable = allocateTable(Site::StartFastTrig, zan::kSineTableBytes);
    if (Zanp_G.sineTable == nullptr) return Zan_Result_Failed;
    zan::fillSineTable(static_cast<float*>(*Zanp_G.sineTable));
    return 0;
}

int32_t startFastCharMath() {
    Zanp_G.charMultiplyTable = allocateTable(Site::StartFastCharMath, zan::kCharTableBytes);
    if (Zanp_G.charMultiplyTable == nullptr) return Zan_Result_Failed;
    Zanp_G.charDivideTable = allocateTable(Site::StartFastCharMath, zan::kCharTableBytes);
    if (Zanp_G.charDivideTable == nullptr) {
        freeTable(Zanp_G.charMultiplyTable);
        return Zan_Result_Failed;
    }
    zan::fillCharTables(static_cast<uint8_t*>(*Zanp_G.charMultiplyTable),
                        static_cast<uint8_t*>(*Zanp_G.charDivideTable));
    return 0;
}

int32_t startService(uint32_t service) {
    switch (service) {
        case Zan_Service_FastTrig:
            return startFastTrig();
        case Zan_Service_FastCharMath:
            return startFastCharMath();
        case Zan_Service_Gaussian:
            return zan::reportPlatform(Site::StartGaussian, kBel_Err_NoService, Message::GaussianTableInit);
        default:
            return 0;  // the basic service has nothing to start
    }
}

// In the order in which they start.
constexpr uint32_t kServices[] = {Zan_Service_Basic, Zan_Service_FastTrig, Zan_Service_FastCharMath,
                                  Zan_Service_Gaussian};

bool platformChecked = false;

// Checks the platform libraries on the first call in the process. Calls both checks, so that each library reports its
// own mismatch.
bool platformVersionsMatch() {
    if (platformChecked) return true;
    platformChecked = true;  // first, because a report handler may call Zan_CheckVersions
    const auto number = static_cast<int32_t>(zan::errorNumber(Site::PlatformVersions));
    const bool bel = Bel_CheckVersions(number, kBel_InterfaceVersion) == 0;
    const bool vun = VUN_CheckVersions(number, kVUN_InterfaceVersion) == 0;
    return bel && vun;
}

}  // namespace

uint32_t Zan_PkgObjectVersion() { return (uint32_t{ZAN_VERSION_MAJOR} << 16) | uint32_t{ZAN_VERSION_MINOR}; }

int32_t Zan_CheckVersions(int32_t errorNumber, int32_t headerVersion) {
    // The platform is checked first: it is checked only on the first call, so the return for a wrong header version
    // must not skip it.
    const bool platformMatches = platformVersionsMatch();
    if (headerVersion != Zan_kInterfaceVersion) {
        Belp_SetThreadLastError(0);
        std::snprintf(Belp_GetThreadLoggingBuffer(), kBel_LoggingBufferSize,
                      "Plug-in version mismatch detected (did you install over an older version of Sarnet?). "
                      "Try uninstalling and re-installing. (%s package v%d != %s.h v%d)",
                      "Zan", Zan_kInterfaceVersion, "Zan", headerVersion);
        Belp_ReportError(static_cast<uint32_t>(errorNumber), Zan_kSeverityVersionMismatch);
        return Zan_Result_VersionMismatch;
    }
    return platformMatches ? 0 : Zan_Result_VersionMismatch;
}

int32_t Zan_Birth(uint32_t services, uint32_t* startedServices) {
    OSKA_Log(kOSKA_StartOrStop, "Zan", "Birth", "Zan Birth");
    if (started()) return zan::reportPlatform(Site::Birth, kBel_Err_AlreadyStarted);
    Zanp_G.services = 0;
    int32_t firstError = 0;
    for (const uint32_t service : kServices) {
        if ((services & service) == 0) continue;
        // Services after a failing one are started too, but only those before it are recorded.
        const int32_t result = startService(service);
        if (firstError == 0) firstError = result;
        if (firstError == 0) Zanp_G.services |= service;
    }
    if (startedServices != nullptr) *startedServices = Zanp_G.services;
    if (firstError == 0) setMagics(Zan_kGlobalsMagic);
    return firstError;
}

int32_t Zan_Death() {
    OSKA_Log(kOSKA_StartOrStop, "Zan", "Death", "Zan Death");
    if (!started()) return zan::reportPlatform(Site::Death, kBel_Err_NotStarted);
    if ((Zanp_G.services & Zan_Service_FastTrig) != 0) freeTable(Zanp_G.sineTable);
    if ((Zanp_G.services & Zan_Service_FastCharMath) != 0) {
        freeTable(Zanp_G.charMultiplyTable);
        freeTable(Zanp_G.charDivideTable);
    }
    int32_t result = 0;
    if ((Zanp_G.services & Zan_Service_Gaussian) != 0) {
        result = zan::reportPlatform(Site::StopGaussian, kBel_Err_NoService, Message::GaussianTableInit);
    }
    setMagics(0);
    return result;
}

int32_t Zan_GetGlobals(Zan_Globals* destination) {
    if (!started()) return zan::reportPlatform(Site::GetGlobals, kBel_Err_NotStarted);
    std::memmove(destination, &Zanp_G, sizeof Zanp_G);
    setMagics(0);
    return 0;
}

int32_t Zan_SetGlobals(const Zan_Globals* source) {
    if (started()) return zan::reportPlatform(Site::SetGlobals, kBel_Err_AlreadyStarted);
    std::memmove(&Zanp_G, source, sizeof Zanp_G);
    if (started()) return 0;
    return zan::reportPlatform(Site::SetGlobals, kBel_Err_BadGlobals);
}
