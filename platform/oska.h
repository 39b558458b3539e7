// OSKA, the host's logging library, as Zan calls it, and the stand-in's control over where the log goes.
#ifndef ZAN_PLATFORM_OSKA_H
#define ZAN_PLATFORM_OSKA_H

#include "platform/bel.h"

/// The kind of a log entry that says that a library starts or stops.
inline constexpr int32_t kOSKA_StartOrStop = 10;

/// Receives one log entry; the strings are valid during the call. Called on the thread that logs; it may log and
/// install handlers itself, and may not throw.
using OSKA_LogHandler = void (*)(void* context, int32_t kind, const char* category, const char* function,
                                 const char* text);

extern "C" {

/// Logs one entry. Zan logs its start and its stop: kind kOSKA_StartOrStop, category "Zan".
ZAN_PLATFORM_API void OSKA_Log(int32_t kind, const char* category, const char* function, const char* text);

/// Installs the log handler; null restores the default, which drops the entry. Any thread. An entry that another thread
/// has begun may still reach the former handler and context.
ZAN_PLATFORM_API void OSKA_SetLogHandler(OSKA_LogHandler handler, void* context);

}  // extern "C"

#endif  // ZAN_PLATFORM_OSKA_H
