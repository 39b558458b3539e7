// Lifecycle, versions, the globals block and the error reporter: what a host calls before and after everything else.
#ifndef ZAN_FRAME_H
#define ZAN_FRAME_H

#include "zan/types.h"

/// The interface version of these headers; pass it to Zan_CheckVersions.
inline constexpr int32_t Zan_kInterfaceVersion = 18;

/// Both ends of a valid globals block.
inline constexpr uint32_t Zan_kGlobalsMagic = 0x27182818;

/// @defgroup services Services that Zan_Birth starts
/// @{
inline constexpr uint32_t Zan_Service_Basic = 1;         ///< nothing beyond the library itself; never fails
inline constexpr uint32_t Zan_Service_FastTrig = 2;      ///< the quarter-wave sine table of Zan_PrepareFTrig
inline constexpr uint32_t Zan_Service_FastCharMath = 4;  ///< the 8-bit multiply and divide tables of Zan_PrepareFCMD
inline constexpr uint32_t Zan_Service_Gaussian = 8;      ///< not provided: its start is refused with a report
/// @}

/// The whole run-time state of the library. The host copies it byte for byte; a handle is a pointer to a master
/// pointer, which is null once the platform has reclaimed the memory.
struct Zan_Globals {
    uint32_t headMagic;             ///< Zan_kGlobalsMagic while started, else 0
    uint32_t services;              ///< the services that run; after Zan_Death those that ran
    uint8_t reserved1[8];           ///< never read or written, copied with the block
    void** charMultiplyTable;       ///< handle, 65,536 bytes; null when not allocated
    void** charDivideTable;         ///< handle, 65,536 bytes; null when not allocated
    uint8_t reserved2[8];           ///< never read or written, copied with the block
    void** sineTable;               ///< handle, 1,024 bytes; null when not allocated
    uint32_t tailMagic;             ///< Zan_kGlobalsMagic while started, else 0
    uint16_t charMathPrepareCount;  ///< outstanding Zan_PrepareFCMD calls
    uint16_t sinePrepareCount;      ///< outstanding Zan_PrepareFTrig calls
};

/// One entry of the message table. The three cache fields belong to the host's string service.
struct Zan_MessageEntry {
    const char* key;   ///< "$$$/Ko/Zan/LStr/0000=unknown error (%d)." and so on; null in the terminator
    uintptr_t cache1;  ///< all ones in the terminator
    uintptr_t cache2;  ///< all ones in the terminator
    uintptr_t cache3;
};

/// The message table as the host's string service reads it.
struct Zan_MessageTable {
    const char* module;         ///< "Zan"
    uintptr_t entryCount;       ///< the messages and the terminator
    Zan_MessageEntry* entries;  ///< the first entry
    uintptr_t reserved;         ///< zero
};

extern "C" {

/// The globals block. All zero until Zan_Birth.
/// @threads the lifecycle operations and the prepare counts are not synchronized: one thread at a time
extern ZAN_API Zan_Globals Zanp_G;

/// Holds the address of the Zan_MessageTable; its value is what the library passes to the string service.
extern ZAN_API const void* const Zan_G_zref;

/// The package version: interface version in the high 16 bits, package version in the low 16 bits.
/// @return  both versions in one number
/// @threads any
[[nodiscard]] ZAN_API uint32_t Zan_PkgObjectVersion();

/// Checks that host and library were built for the same interface, and on the first call in the process that the
/// platform libraries are the ones that the library needs.
/// @param errorNumber    the host's own number, under which a mismatch is reported
/// @param headerVersion  Zan_kInterfaceVersion as the host was compiled with
/// @return   0; Zan_Result_VersionMismatch (7) when headerVersion is not 18 or, on the first call only, when the
///           platform refuses
/// @reports  errorNumber, severity 16, "Plug-in version mismatch detected ..." for a wrong headerVersion, with the
///           thread's last error set to 0; a platform that refuses reports for itself, under 0x110001
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_CheckVersions(int32_t errorNumber, int32_t headerVersion);

/// Starts the library and the services asked for. The prepare counts stay as they are.
/// @param services  any of Zan_Service_Basic, _FastTrig, _FastCharMath, _Gaussian; other bits are ignored
/// @param started   receives the services that run, after a failure those before the failing one; may be null. Not
///                  written when the library was already started
/// @return   0 and the library is started; the platform's result when it already was, and nothing changes; else the
///           first failing service's result, and it is not started: Zan_Result_Failed (4) for memory, the platform's
///           result for the Gaussian service. Tables made before and after the failure stay allocated
/// @reports  0x110014 platform code 12 when already started;
///           0x11001D platform code 5, "Gaussian table initialization.";
///           the platform reports failed allocations under 0x110019 and 0x11001B
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_Birth(uint32_t services, uint32_t* started);

/// Stops every running service and the library: table addresses that were handed out are no longer valid. The services
/// word and the prepare counts keep their values.
/// @return   the result of the last service stopped, 0 as a rule; the platform's result when the library is not started
/// @reports  0x110015 platform code 11 when not started;
///           0x11001E platform code 5, "Gaussian table initialization.", when a block from elsewhere has that service
/// @threads  one at a time
ZAN_API int32_t Zan_Death();

/// Moves the state out: copies the globals block and leaves the library not started; of its own block only the magics
/// change. The tables now belong to whoever holds the copy.
/// @param destination  receives the 56 bytes; not written on failure
/// @return   0; the platform's result when the library is not started
/// @reports  0x110016 platform code 11 when not started
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_GetGlobals(Zan_Globals* destination);

/// Moves a state in: the library is started with the services and tables of the block.
/// @param source  the 56 bytes that Zan_GetGlobals gave
/// @return   0; the platform's result when the library is already started (nothing changes) or when the block's magics
///           are not valid (its bytes stay in Zanp_G and the library is not started)
/// @reports  0x110017 platform code 12 when already started, platform code 2 for an invalid block
/// @threads  one at a time
[[nodiscard]] ZAN_API int32_t Zan_SetGlobals(const Zan_Globals* source);

/// Reports a failure to the host's error service. What the library's own operations call; exported for its sibling
/// modules.
/// @param site     the reporting place; the error number is 0x110000 | site
/// @param code     0 does nothing at all; 0x1102 to 0x110A choose their message, anything else "unknown error (%d)."
/// @param context  index of the message that fills the "%s" of messages 1, 2, 3, 7 and 10; ignored for the others
/// @return   code, unchanged
/// @reports  the message under 0x110000 | site, severity 4 for Zan_Err_Underflow and 8 for every other code; the
///           thread's last error is set to 0 before
/// @threads  any
ZAN_API int32_t Zanp_ReportErr(uint16_t site, int32_t code, int16_t context);

}  // extern "C"

/// @cond
namespace zan_layout {
static_assert(kPlainData<Zan_Globals> && sizeof(Zan_Globals) == 56 && offsetof(Zan_Globals, services) == 4 &&
              offsetof(Zan_Globals, reserved1) == 8 && offsetof(Zan_Globals, charMultiplyTable) == 16 &&
              offsetof(Zan_Globals, charDivideTable) == 24 && offsetof(Zan_Globals, reserved2) == 32 &&
              offsetof(Zan_Globals, sineTable) == 40 && offsetof(Zan_Globals, tailMagic) == 48 &&
              offsetof(Zan_Globals, charMathPrepareCount) == 52 && offsetof(Zan_Globals, sinePrepareCount) == 54);
static_assert(kPlainData<Zan_MessageEntry> && sizeof(Zan_MessageEntry) == 32);
static_assert(kPlainData<Zan_MessageTable> && sizeof(Zan_MessageTable) == 32);
}  // namespace zan_layout
/// @endcond

#endif  // ZAN_FRAME_H
