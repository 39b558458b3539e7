// Bel, the host's utility library: last error, reports, message strings, handles, tracked memory. The first part is
// what a host's real library provides; Zan calls all of it, from any thread, except Bel_TranslateAndReportException.
// The second part controls this stand-in. Pointer arguments are not null unless their entry says so.
#ifndef ZAN_PLATFORM_BEL_H
#define ZAN_PLATFORM_BEL_H

#include <cstddef>
#include <cstdint>
#include <exception>

#if defined(_WIN32)
#if defined(ZAN_PLATFORM_BUILDING)
#define ZAN_PLATFORM_API  // the .def file lists the exports
#else
#define ZAN_PLATFORM_API __declspec(dllimport)
#endif
#else
#define ZAN_PLATFORM_API __attribute__((visibility("default")))
#endif

/// @defgroup platform The platform: what a host provides
/// @{

/// @defgroup bel Bel: reports, texts, memory
/// @{

/// A relocatable block: the address of its master pointer. *handle is the data, or null after the memory is reclaimed.
using Bel_Handle = void**;

/// Size of each thread's logging buffer, in bytes.
inline constexpr size_t kBel_LoggingBufferSize = 512;

/// The platform's error codes: arguments and results of Belp_ReportVamoErrString, and results of
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

/// Severities of the platform's own reports.
enum Bel_Severity : int32_t {
    kBel_SeverityError = 8,
    kBel_SeverityVersionMismatch = 16,
};

/// The interface version that this header describes, for Bel_CheckVersions.
inline constexpr int32_t kBel_InterfaceVersion = 61;

extern "C" {

/// Sets the calling thread's last error.
ZAN_PLATFORM_API void Belp_SetThreadLastError(int32_t error);

/// The calling thread's logging buffer: kBel_LoggingBufferSize bytes, valid until the thread ends.
ZAN_PLATFORM_API char* Belp_GetThreadLoggingBuffer();

/// Reports an error with the text in the calling thread's logging buffer.
ZAN_PLATFORM_API void Belp_ReportError(uint32_t errorNumber, int32_t severity);

/// Reports an error with the given text; null stands for an empty text.
ZAN_PLATFORM_API void Belp_ReportErrString(uint32_t errorNumber, int32_t severity, const char* text);

/// Reports a platform error; null stands for the platform's own text for the code.
/// @return platformCode
ZAN_PLATFORM_API int32_t Belp_ReportVamoErrString(uint32_t errorNumber, int32_t severity, int32_t platformCode,
                                                  const char* textOrNull);

/// Looks up the text of a message-table entry in the installed catalogue. Returns the English text of the table when no
/// catalogue is installed, when the catalogue has no text for the key, when the key is longer than 63 characters, and
/// when the conversions of the catalogue's text differ from those of the English text ("%%" does not count). Empty for
/// an index outside the table.
/// @param zref          the message table, a Zan_MessageTable
/// @param index         the index of the entry
/// @param zero1, zero2  0
ZAN_PLATFORM_API const char* Bel_ZLookupLStrCache(const void* zref, int32_t index, int32_t zero1, int32_t zero2);

/// Checks the interface version.
/// @return 0 if this library provides it, else 1 after a report under errorNumber (severity 16)
ZAN_PLATFORM_API int32_t Bel_CheckVersions(int32_t errorNumber, int32_t version);

/// Allocates a block of zeros. On failure reports under errorNumber (severity 8, "not enough memory for NAME.") and
/// returns null.
ZAN_PLATFORM_API Bel_Handle Bel_AllocateHandle(uint32_t errorNumber, const char* name, size_t bytes);

/// Allocates a block of zeros. On failure returns null without a report.
ZAN_PLATFORM_API Bel_Handle Bel_AllocateHandleQuiet(size_t bytes);

/// Frees the block, even if it is reclaimed, and its master pointer. Null does nothing.
ZAN_PLATFORM_API void Bel_FreeHandle(Bel_Handle handle);

}  // extern "C"

/// Reports a caught exception (error number 0, severity 8, its what()) and returns its Bel_Error. Zan does not call it.
ZAN_PLATFORM_API int32_t Bel_TranslateAndReportException(const std::exception& exception);

/// Memory that the host tracks.
struct Bel_MemTrackedObject {
    /// Allocates a block.
    /// @param bytes   size of the block, which is aligned for any type
    /// @param unused  Zan passes false
    /// @throws std::bad_alloc, without a report
    [[nodiscard]] ZAN_PLATFORM_API static void* TrackedNew(std::size_t bytes, bool unused);
    /// Frees a block; null does nothing.
    ZAN_PLATFORM_API static void TrackedDelete(void* block);
};

/// @}

/// @defgroup standin Controls of the stand-in
/// @{

// --- Controls of the stand-in. All except Bel_ReclaimHandle may be called from any thread at any time.

/// One report as the host receives it.
struct Bel_Report {
    uint32_t errorNumber;
    int32_t severity;
    bool fromPlatform;     ///< true for the platform's own errors
    int32_t platformCode;  ///< the platform's code, 0 where fromPlatform is false
    const char* text;      ///< never null; valid during the call
};
/// Called on the reporting thread, possibly on several threads at once. It may itself report and install handlers; it
/// may not throw.
using Bel_ReportHandler = void (*)(void* context, const Bel_Report* report);

/// Returns the translation for a key such as "$$$/Ko/Zan/LStr/0024" of the module "Zan", or null if it has none. Called
/// on the reporting thread, possibly on several threads at once; it may not throw. The texts must stay valid while the
/// catalogue is installed, and after that until the reports that other threads have already begun are delivered.
using Bel_Catalogue = const char* (*)(void* context, const char* module, const char* key);

/// Kinds of allocations, for Bel_SetAllocationFailure; the values combine.
inline constexpr uint32_t kBel_HandleAllocations = 1;   ///< Bel_AllocateHandle
inline constexpr uint32_t kBel_QuietAllocations = 2;    ///< Bel_AllocateHandleQuiet
inline constexpr uint32_t kBel_TrackedAllocations = 4;  ///< Bel_MemTrackedObject::TrackedNew

/// Memory held at the moment, and totals since the process started.
struct Bel_MemoryCounts {
    uint64_t handles;         ///< handles not freed, including reclaimed ones
    uint64_t handleBytes;     ///< bytes of the handles that are not reclaimed
    uint64_t trackedBlocks;   ///< tracked blocks not deleted
    uint64_t trackedBytes;    ///< bytes of these blocks
    uint64_t trackedNews;     ///< total of tracked blocks allocated
    uint64_t trackedDeletes;  ///< total of tracked blocks deleted
};

extern "C" {

/// Installs the report handler; null restores the default, which prints one line to standard error. A report that
/// another thread has already begun may still reach the previous handler and context.
ZAN_PLATFORM_API void Bel_SetReportHandler(Bel_ReportHandler handler, void* context);

/// Installs the message catalogue; null restores English. A lookup that another thread has already begun may still
/// reach the previous catalogue and context.
ZAN_PLATFORM_API void Bel_SetCatalogue(Bel_Catalogue catalogue, void* context);

/// The calling thread's last error.
[[nodiscard]] ZAN_PLATFORM_API int32_t Bel_GetThreadLastError();

/// Sets the interface version that Bel_CheckVersions accepts; initially kBel_InterfaceVersion.
ZAN_PLATFORM_API void Bel_SetInterfaceVersion(int32_t version);

/// Frees the memory of a handle and sets its master pointer to null. Does nothing for null and for a handle that is
/// already reclaimed. Must not run while another thread reads the block or its master pointer, as the Zan_Prepare
/// functions do.
ZAN_PLATFORM_API void Bel_ReclaimHandle(Bel_Handle handle);

/// Makes the n-th allocation of the given kinds from now fail (1 is the next one), and all later ones too if
/// andAllAfter is true. n = 0 makes all succeed. Replaces the previous setting.
ZAN_PLATFORM_API void Bel_SetAllocationFailure(uint32_t kinds, uint64_t n, bool andAllAfter);

/// Reads all counts at the same moment.
ZAN_PLATFORM_API void Bel_GetMemoryCounts(Bel_MemoryCounts* counts);

}  // extern "C"

/// @}

/// @}

#endif  // ZAN_PLATFORM_BEL_H
