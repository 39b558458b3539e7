// OSKA, the host's logging library: the function that Zan calls, and the stand-in's log handler.
#ifndef ZAN_PLATFORM_OSKA_H
#define ZAN_PLATFORM_OSKA_H

#include "zan/platform/bel.h"

/// @defgroup oska OSKA: the log
/// @ingroup platform
/// @{

/// Kind of the log entries for the start and stop of a library.
inline constexpr int32_t kOSKA_StartOrStop = 10;

/// Receives one log entry; the strings are valid during the call. Called on the logging thread, possibly on several
/// threads at once. It may itself log and install handlers; it may not throw.
using OSKA_LogHandler = void (*)(void* context, int32_t kind, const char* category, const char* function,
                                 const char* text);

extern "C" {

/// Logs one entry. Zan logs its start and its stop: kind kOSKA_StartOrStop, category "Zan".
ZAN_PLATFORM_API void OSKA_Log(int32_t kind, const char* category, const char* function, const char* text);

/// Installs the log handler, from any thread; null restores the default, which drops all entries. An entry that another
/// thread has already begun may still reach the previous handler and context.
ZAN_PLATFORM_API void OSKA_SetLogHandler(OSKA_LogHandler handler, void* context);

}  // extern "C"

/// @}

#endif  // ZAN_PLATFORM_OSKA_H
