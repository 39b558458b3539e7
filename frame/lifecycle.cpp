// Start and stop of the library and its services, the version check, and the globals block that moves in and out.
#include "frame/report.h"
#include "platform/bel.h"
#include "platform/oska.h"
#include "platform/vun.h"
#include "scalar/lookup_tables.h"

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

Bel_Handle allocateTable(Site site, size_t bytes) {
    return Bel_AllocateHandle(zan::errorNumber(site), zan::messageText(Message::FcmdTable), bytes);
}

void freeTable(Bel_Handle& handle) {
    if (handle == nullptr) return;
    Bel_FreeHandle(handle);
    handle = nullptr;
}

int32_t startBasic() { return 0; }
int32_t stopBasic() { return 0; }

int32_t startFastTrig() {
    Zanp_G.sineTable = allocateTable(Site::StartFastTrig, zan::kSineTableBytes);
    if (Zanp_G.sineTable == nullptr) return Zan_Result_Failed;
    zan::fillSineTable(static_cast<float*>(*Zanp_G.sineTable));
    return 0;
}
int32_t stopFastTrig() {
    freeTable(Zanp_G.sineTable);
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
int32_t stopFastCharMath() {
    freeTable(Zanp_G.charMultiplyTable);
    freeTable(Zanp_G.charDivideTable);
    return 0;
}

int32_t startGaussian() {
    return zan::reportPlatform(Site::StartGaussian, kBel_Err_NoService, Message::GaussianTableInit);
}
int32_t stopGaussian() {
    return zan::reportPlatform(Site::StopGaussian, kBel_Err_NoService, Message::GaussianTableInit);
}

struct Service {
    uint32_t flag;
    int32_t (*start)();
    int32_t (*stop)();
};
constexpr Service kServices[] = {
    {Zan_Service_Basic, startBasic, stopBasic},
    {Zan_Service_FastTrig, startFastTrig, stopFastTrig},
    {Zan_Service_FastCharMath, startFastCharMath, stopFastCharMath},
    {Zan_Service_Gaussian, startGaussian, stopGaussian},
};

bool versionsChecked = false;

// Once in the process: non-zero when a platform library does not satisfy the version that this library needs.
int32_t checkPlatformOnce() {
    if (versionsChecked) return 0;
    versionsChecked = true;
    const auto number = static_cast<int32_t>(zan::errorNumber(Site::PlatformVersions));
    const int32_t bel = Bel_CheckVersions(number, kBel_InterfaceVersion);
    const int32_t vun = VUN_CheckVersions(number, kVUN_InterfaceVersion);
    return bel | vun;
}

}  // namespace

uint32_t Zan_PkgObjectVersion() { return (uint32_t{ZAN_VERSION_MAJOR} << 16) | uint32_t{ZAN_VERSION_MINOR}; }

int32_t Zan_CheckVersions(int32_t errorNumber, int32_t headerVersion) {
    const int32_t platform = checkPlatformOnce();
    if (headerVersion != Zan_kInterfaceVersion) {
        Belp_SetThreadLastError(0);
        std::snprintf(Belp_GetThreadLoggingBuffer(), kBel_LoggingBufferSize,
                      "Plug-in version mismatch detected (did you install over an older version of Sarnet?). "
                      "Try uninstalling and re-installing. (%s package v%d != %s.h v%d)",
                      "Zan", Zan_kInterfaceVersion, "Zan", headerVersion);
        Belp_ReportError(static_cast<uint32_t>(errorNumber), Zan_kSeverityVersionMismatch);
        return Zan_Result_VersionMismatch;
    }
    return platform != 0 ? Zan_Result_VersionMismatch : 0;
}

int32_t Zan_Birth(uint32_t services, uint32_t* startedServices) {
    OSKA_Log(kOSKA_StartOrStop, "Zan", "Birth", "Zan Birth");
    if (started()) return zan::reportPlatform(Site::Birth, kBel_Err_AlreadyStarted);
    Zanp_G.services = 0;
    int32_t firstError = 0;
    for (const Service& service : kServices) {
        if ((services & service.flag) == 0) continue;
        // Later services are started after a failure too; only what started before it is recorded.
        const int32_t result = service.start();
        if (firstError == 0) firstError = result;
        if (firstError == 0) Zanp_G.services |= service.flag;
    }
    if (startedServices != nullptr) *startedServices = Zanp_G.services;
    if (firstError == 0) setMagics(Zan_kGlobalsMagic);
    return firstError;
}

int32_t Zan_Death() {
    OSKA_Log(kOSKA_StartOrStop, "Zan", "Death", "Zan Death");
    if (!started()) return zan::reportPlatform(Site::Death, kBel_Err_NotStarted);
    int32_t result = 0;
    for (const Service& service : kServices) {
        if ((Zanp_G.services & service.flag) != 0) result = service.stop();
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
