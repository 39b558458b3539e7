// Lifecycle, version checks, the globals block and the error reporter.
#ifndef ZAN_FRAME_H
#define ZAN_FRAME_H

#include "zan/types.h"

/// @defgroup frame Starting, stopping, reports
/// @{

/// @defgroup lifecycle Starting and stopping
/// @{

/// The interface version of these headers; pass it to Zan_CheckVersions.
inline constexpr int32_t Zan_kInterfaceVersion = 18;

/// Value of headMagic and tailMagic in the globals block while the library is started.
inline constexpr uint32_t Zan_kGlobalsMagic = 0x27182818;
/// @}

/// @defgroup services Services that Zan_Birth starts
/// @{
inline constexpr uint32_t Zan_Service_Basic = 1;         ///< no table; its start never fails
inline constexpr uint32_t Zan_Service_FastTrig = 2;      ///< the quarter-wave sine table of Zan_PrepareFTrig
inline constexpr uint32_t Zan_Service_FastCharMath = 4;  ///< the 8-bit multiply and divide tables of Zan_PrepareFCMD
inline constexpr uint32_t Zan_Service_Gaussian = 8;      ///< not provided: its start is refused with a report
/// @}

/// @addtogroup lifecycle
/// @{

/// The state of the library: whether it is started, its services, its tables. A host may copy it byte by byte. A handle
/// points to a master pointer, which points to the memory and becomes null when the platform reclaims it.
struct Zan_Globals {
    uint32_t headMagic;             ///< Zan_kGlobalsMagic while started, else 0
    uint32_t services;              ///< the services that were started, also after Zan_Death
    uint8_t reserved1[8];           ///< never read or written, copied with the block
    void** charMultiplyTable;       ///< handle, 65,536 bytes; null when not allocated
    void** charDivideTable;         ///< handle, 65,536 bytes; null when not allocated
    uint8_t reserved2[8];           ///< never read or written, copied with the block
    void** sineTable;               ///< handle, 1,024 bytes; null when not allocated
    uint32_t tailMagic;             ///< Zan_kGlobalsMagic while started, else 0
    uint16_t charMathPrepareCount;  ///< outstanding Zan_PrepareFCMD calls
    uint16_t sinePrepareCount;      ///< outstanding Zan_PrepareFTrig calls
};

/// @}

/// @defgroup reporting Reports
/// @{

/// One entry of the message table. The cache fields are for the host's string service.
struct Zan_MessageEntry {
    const char* key;   ///< such as "$$$/Ko/Zan/LStr/0000=unknown error (%d)."; null in the terminator
    uintptr_t cache1;  ///< all ones in the terminator
    uintptr_t cache2;  ///< all ones in the terminator
    uintptr_t cache3;
};

/// The message table, in the layout that the host's string service reads.
struct Zan_MessageTable {
    const char* module;         ///< "Zan"
    uintptr_t entryCount;       ///< number of entries, the terminator included
    Zan_MessageEntry* entries;  ///< the first entry
    uintptr_t reserved;         ///< zero
};
/// @}

extern "C" {

/// @addtogroup lifecycle
/// @{

/// The globals block. All zero until Zan_Birth.
/// @threads one at a time: the lifecycle operations and the prepare counts are not synchronized
extern ZAN_API Zan_Globals Zanp_G;

/// The version of the library.
/// @return  interface version in the high 16 bits, package version in the low 16 bits
/// @threads any
[[nodiscard]] ZAN_API uint32_t Zan_PkgObjectVersion();

/// Checks that host and library have the same interface version. The first call in the process also checks the versions
/// of the platform libraries.
/// @param errorNumber    the host's own error number for the report of a wrong headerVersion
/// @param headerVersion  Zan_kInterfaceVersion of the headers that the host was compiled with
/// @return   0; Zan_Result_VersionMismatch (7) when headerVersion is not 18 or, on the first call only, when a platform
///           library does not have the version that Zan needs
/// @reports  errorNumber, severity 16, "Plug-in version mismatch detected ..." for a wrong headerVersion, after setting
///           the thread's last error to 0; a platform library reports its own mismatch under 0x110001
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_CheckVersions(int32_t errorNumber, int32_t headerVersion);

/// Starts the library and the requested services. The prepare counts keep their values.
///
/// A start overwrites the handles in Zanp_G without freeing them, since after Zan_GetGlobals they belong to the copy.
/// So after a failed start, whose tables stay allocated, pass the three handles to Bel_FreeHandle and set them to null
/// before the next start, except those that a copy of the block holds.
/// @param services  any of Zan_Service_Basic, _FastTrig, _FastCharMath, _Gaussian; other bits are ignored
/// @param started   receives the running services, after a failure those before the failing one; may be null. Not
///                  written when the library is already started
/// @return   0 when this call has started the library. Otherwise an error: the platform's result when the library is
///           already started, with nothing changed; else the result of the first service that fails:
///           Zan_Result_Failed (4) when its tables cannot be allocated, the platform's result for the Gaussian service.
///           The tables of the other services stay allocated then
/// @reports  0x110014 platform code 12 when already started;
///           0x11001D platform code 5, "Gaussian table initialization.";
///           the platform reports failed allocations under 0x110019 (sine table) and 0x11001B (8-bit tables)
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_Birth(uint32_t services, uint32_t* started);

/// Stops every running service and the library. Table addresses from prepare calls become invalid. The services field
/// and the prepare counts keep their values.
/// @return   0; the platform's result when the library is not started. Also the platform's result, although the library
///           is stopped, when the services field has the Gaussian service (possible only after Zan_SetGlobals)
/// @reports  0x110015 platform code 11 when not started;
///           0x11001E platform code 5, "Gaussian table initialization.", for the Gaussian service
/// @threads  one at a time
ZAN_API int32_t Zan_Death();

/// Moves the state out: copies the globals block, then sets both magic fields of Zanp_G to 0, so that the library is
/// not started. The tables belong to the owner of the copy.
/// @param destination  receives the block; not written on failure
/// @return   0; the platform's result when the library is not started
/// @reports  0x110016 platform code 11 when not started
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_GetGlobals(Zan_Globals* destination);

/// Moves a state in: the library is started with the services and tables of the block.
/// @param source  a block from Zan_GetGlobals
/// @return   0; the platform's result when the library is already started (nothing changes), or when a magic field of
///           the block is wrong (Zanp_G holds the block, and the library is not started)
/// @reports  0x110017 platform code 12 when already started, platform code 2 for an invalid block
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_SetGlobals(const Zan_Globals* source);

/// @}

/// @addtogroup reporting
/// @{

/// Address of the Zan_MessageTable, as the library passes it to the host's string service.
extern ZAN_API const void* const Zan_G_zref;

/// Reports a failure to the host's error service. The library's operations call it; it is exported for sibling modules.
/// @param site     the place that reports; the error number is 0x110000 | site
/// @param code     Zan_Err_Overflow to Zan_Err_NoPlaneIntersection (0x1102 to 0x110A) select their message, other codes
///                 "unknown error (%d)."; 0 does nothing at all
/// @param context  index of the text that replaces the "%s" in the messages of Zan_Err_Overflow, _Underflow,
///                 _DivideByZero, _UnrequestedService and _ZeroDenominator; ignored for other codes
/// @return   code
/// @reports  0x110000 | site, the message, severity 4 for Zan_Err_Underflow and 8 for all other codes, after setting
///           the thread's last error to 0
/// @threads  any
ZAN_API int32_t Zanp_ReportErr(uint16_t site, int32_t code, int16_t context);
/// @}

}  // extern "C"

/// @cond
#if UINTPTR_MAX > UINT32_MAX  // sizes with 64-bit pointers; WebAssembly has 32-bit ones
namespace zan_layout {
static_assert(kPlainData<Zan_Globals> && sizeof(Zan_Globals) == 56 && offsetof(Zan_Globals, services) == 4 &&
              offsetof(Zan_Globals, reserved1) == 8 && offsetof(Zan_Globals, charMultiplyTable) == 16 &&
              offsetof(Zan_Globals, charDivideTable) == 24 && offsetof(Zan_Globals, reserved2) == 32 &&
              offsetof(Zan_Globals, sineTable) == 40 && offsetof(Zan_Globals, tailMagic) == 48 &&
              offsetof(Zan_Globals, charMathPrepareCount) == 52 && offsetof(Zan_Globals, sinePrepareCount) == 54);
static_assert(kPlainData<Zan_MessageEntry> && sizeof(Zan_MessageEntry) == 32);
static_assert(kPlainData<Zan_MessageTable> && sizeof(Zan_MessageTable) == 32);
}  // namespace zan_layout
#endif
/// @endcond

/// @}

#endif  // ZAN_FRAME_H
