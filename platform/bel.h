// Bel, the host's utility library, as Zan calls it: last error, reports, message strings, handles, tracked memory.
// The first part is what a host's real library provides, to be called from any thread; the controls below it are this
// stand-in's own. A pointer that is passed in is not null unless its entry says so.
#ifndef ZAN_PLATFORM_BEL_H
#define ZAN_PLATFORM_BEL_H

#include <cstddef>
#include <cstdint>
#include <exception>

#if defined(_WIN32)
#if defined(ZAN_PLATFORM_BUILDING)
#define ZAN_PLATFORM_API  // the .def file names the exports
#else
#define ZAN_PLATFORM_API __declspec(dllimport)
#endif
#else
#define ZAN_PLATFORM_API __attribute__((visibility("default")))
#endif

/// A relocatable block: points to the master pointer; *handle is the data, or null once the memory has been reclaimed.
using Bel_Handle = void**;

/// Size in bytes of each thread's logging buffer.
inline constexpr size_t kBel_LoggingBufferSize = 512;

/// The platform's own error codes: what Belp_ReportVamoErrString is given and what it returns, and the results of
/// Bel_TranslateAndReportException.
enum Bel_Error : int32_t {
    kBel_Err_OutOfMemory = 1,      ///< std::bad_alloc
    kBel_Err_BadGlobals = 2,       ///< a globals block without its magic numbers
    kBel_Err_BadRange = 3,         ///< a range whose lower bound is above its upper bound
    kBel_Err_NoService = 5,        ///< a service that is not provided
    kBel_Err_TooLong = 6,          ///< std::length_error
    kBel_Err_Exception = 9,        ///< any other exception
    kBel_Err_NotStarted = 11,      ///< the library has not been started
    kBel_Err_AlreadyStarted = 12,  ///< the library has already been started
};

/// Severities of the reports that the platform makes itself.
enum Bel_Severity : int32_t {
    kBel_SeverityError = 8,
    kBel_SeverityVersionMismatch = 16,
};

/// The interface version that this header describes, for Bel_CheckVersions.
inline constexpr int32_t kBel_InterfaceVersion = 61;

extern "C" {

/// Sets the calling thread's last error.
ZAN_PLATFORM_API void Belp_SetThreadLastError(int32_t error);

/// The calling thread's logging buffer, kBel_LoggingBufferSize bytes; valid until the thread ends.
ZAN_PLATFORM_API char* Belp_GetThreadLoggingBuffer();

/// Reports an error whose text is what the calling thread's logging buffer holds.
ZAN_PLATFORM_API void Belp_ReportError(uint32_t errorNumber, int32_t severity);

/// Reports an error with a ready text; null counts as empty.
ZAN_PLATFORM_API void Belp_ReportErrString(uint32_t errorNumber, int32_t severity, const char* text);

/// Reports one of the platform's own errors; a null text stands for the platform's text for the code.
/// @return platformCode
ZAN_PLATFORM_API int32_t Belp_ReportVamoErrString(uint32_t errorNumber, int32_t severity, int32_t platformCode,
                                                  const char* textOrNull);

/// The text of a message-table entry in the current language; the English text of the table when there is no catalogue,
/// when it has no text for the entry, when the conversions of its text are not those of the English text (the same in
/// number, order and spelling, "%%" aside), or when the key is longer than 63 characters. Empty for an index outside
/// the table. The two trailing arguments are zero.
ZAN_PLATFORM_API const char* Bel_ZLookupLStrCache(const void* zref, int32_t index, int32_t zero1, int32_t zero2);

/// @return 0 when this library is of the interface version, else 1 after a report under errorNumber (severity 16)
ZAN_PLATFORM_API int32_t Bel_CheckVersions(int32_t errorNumber, int32_t version);

/// Allocates a block of zeros. Null after a report under errorNumber (severity 8, "not enough memory for NAME.").
ZAN_PLATFORM_API Bel_Handle Bel_AllocateHandle(uint32_t errorNumber, const char* name, size_t bytes);

/// The same, without a report.
ZAN_PLATFORM_API Bel_Handle Bel_AllocateHandleQuiet(size_t bytes);

/// Frees the block, reclaimed or not, and its master pointer, once; null does nothing.
ZAN_PLATFORM_API void Bel_FreeHandle(Bel_Handle handle);

}  // extern "C"

/// Reports a caught exception (number 0, severity 8, its what()) and gives the result code for it.
ZAN_PLATFORM_API int32_t Bel_TranslateAndReportException(const std::exception& exception);

/// Memory that the host counts.
struct Bel_MemTrackedObject {
    /// @param bytes   size of the block, which is aligned for any type
    /// @param unused  false, as Zan calls it
    /// @throws std::bad_alloc, without a report
    [[nodiscard]] ZAN_PLATFORM_API static void* TrackedNew(std::size_t bytes, bool unused);
    /// Null does nothing.
    ZAN_PLATFORM_API static void TrackedDelete(void* block);
};

// --- The stand-in's own controls. All but Bel_ReclaimHandle may be called from any thread at any time.

/// One report as the host receives it.
struct Bel_Report {
    uint32_t errorNumber;
    int32_t severity;
    bool fromPlatform;     ///< true for the platform's own errors
    int32_t platformCode;  ///< the platform's code, 0 where fromPlatform is false
    const char* text;      ///< never null; valid during the call
};
/// Called on the thread that reports, on several at once where several do. It may report and install handlers itself;
/// it may not throw.
using Bel_ReportHandler = void (*)(void* context, const Bel_Report* report);

/// Translates a message: "$$$/Ko/Zan/LStr/0024" for the module "Zan". Null for a text that it does not have. Called on
/// the thread that reports, on several at once where several do; it may not throw. A text must stay valid as long as
/// the catalogue is installed, and longer where another thread has begun a report by then: until that is made.
using Bel_Catalogue = const char* (*)(void* context, const char* module, const char* key);

/// Which allocations a failure is meant for; the values combine.
inline constexpr uint32_t kBel_HandleAllocations = 1;   ///< Bel_AllocateHandle
inline constexpr uint32_t kBel_QuietAllocations = 2;    ///< Bel_AllocateHandleQuiet
inline constexpr uint32_t kBel_TrackedAllocations = 4;  ///< Bel_MemTrackedObject::TrackedNew

/// What the stand-in holds at the moment, and what has happened since the process began.
struct Bel_MemoryCounts {
    uint64_t handles;         ///< handles allocated and not freed, reclaimed ones included
    uint64_t handleBytes;     ///< bytes in them, reclaimed ones left out
    uint64_t trackedBlocks;   ///< tracked blocks allocated and not deleted
    uint64_t trackedBytes;    ///< bytes in them
    uint64_t trackedNews;     ///< tracked blocks allocated in all
    uint64_t trackedDeletes;  ///< tracked blocks deleted in all
};

extern "C" {

/// Installs the report handler; null restores the default, one line on standard error. A report that another thread
/// has begun may still reach the former handler and context.
ZAN_PLATFORM_API void Bel_SetReportHandler(Bel_ReportHandler handler, void* context);

/// Installs the message catalogue; null restores English. A look-up that another thread has begun may still reach the
/// former catalogue and context.
ZAN_PLATFORM_API void Bel_SetCatalogue(Bel_Catalogue catalogue, void* context);

/// The calling thread's last error.
[[nodiscard]] ZAN_PLATFORM_API int32_t Bel_GetThreadLastError();

/// Sets the interface version that Bel_CheckVersions stands for; 61 at first.
ZAN_PLATFORM_API void Bel_SetInterfaceVersion(int32_t version);

/// Reclaims a handle's memory: its master pointer becomes null. Null, or a handle already reclaimed, does nothing. Not
/// while another thread reads the block or its master pointer, as a Zan_Prepare call does.
ZAN_PLATFORM_API void Bel_ReclaimHandle(Bel_Handle handle);

/// Makes allocations of the given kinds fail: the n-th from now (1 is the next), and with andAllAfter every later one.
/// n = 0 lets all succeed again. Replaces the former setting.
ZAN_PLATFORM_API void Bel_SetAllocationFailure(uint32_t kinds, uint64_t n, bool andAllAfter);

/// The counts at one moment.
ZAN_PLATFORM_API void Bel_GetMemoryCounts(Bel_MemoryCounts* counts);

}  // extern "C"

#endif  // ZAN_PLATFORM_BEL_H
